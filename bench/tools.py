# SPDX-License-Identifier: GPL-3.0-or-later
"""The commands that are compared: ours, and the nearest that a user would otherwise run, step by step."""
import os

from measure import there

# Ours, ImageMagick's, Leptonica's step (of leptonica_steps). None: the tool has nothing like it.
STEPS = {
    "read and write": ([], [], "none"),
    "gamma 1.1": (["--gamma", "1.1"], ["-gamma", "1.1"], "gamma"),
    "light/contrast 5,5": (["--light-contrast", "5,5"], ["-brightness-contrast", "5x5"], "contrast"),
    "auto-crop": (["--auto-crop"], ["-fuzz", "20%", "-trim", "+repage"], "crop"),
    "deskew": (["--deskew"], ["-deskew", "40%", "+repage"], "deskew"),
    "blank 8": (["--blank", "8"], ["-format", "%[fx:mean]", "-write", "info:"], None),
    "blur 1": (["--blur", "1"], ["-blur", "0x1"], "blur"),
    "sharpen 1": (["--sharpen", "1"], ["-unsharp", "0x1"], "sharpen"),
    "rotate 90": (["--rotate", "90"], ["-rotate", "90"], "rotate90"),
    "rotate 3": (["--rotate", "3"], ["-rotate", "3"], "rotate3"),
    "auto-dense": (["--auto-dense"], ["-normalize"], None),
    "del-background 5": (["--del-background", "5"],
                         ["(", "+clone", "-blur", "0x20", ")", "-compose", "divide_src", "-composite"], "background"),
    "enhance 5": (["--enhance", "5"], ["-unsharp", "0x2+1+0"], None),
    "red-file": (["--red-file"], None, None),
    "resolution 200": (["--resolution", "200,300"], ["-resize", "66.67%"], "resample"),
    "paper 14.8 x 21 cm": (["--paper", "14.8,21,1"], ["-crop", "1748x2480+0+0", "+repage"], None),
    "in-border 5 mm": (["--in-border", "255,255,255,5,5"], ["-shave", "59x59", "-bordercolor", "white", "-border", "59"], None),
    "out-border 5 mm": (["--out-border", "255,255,255,5,5"], ["-bordercolor", "white", "-border", "59"], None),
    "gray": (["--gray"], ["-colorspace", "gray"], "grey"),
    "wb 130": (["--wb", "130"], ["-colorspace", "gray", "-negate", "-lat", "25x25+10%", "-negate"], "sauvola"),
    "wb 130, denoise 3": (["--wb", "130", "--denoise", "3"],
                          ["-colorspace", "gray", "-negate", "-lat", "25x25+10%", "-morphology", "Open", "Disk:1.5",
                           "-negate"], "despeckle"),
    "split 2": (["--split", "2,1"], ["-crop", "2x1@", "+repage"], None),
}
CHAIN = ["--gamma", "1.1", "--light-contrast", "5,5", "--auto-crop", "--deskew", "--quality", "85"]
MAGICK_CHAIN = ["-gamma", "1.1", "-brightness-contrast", "5x5", "-fuzz", "20%", "-trim", "+repage", "-deskew", "40%",
                "+repage", "-quality", "85"]
UNPAPER_DESKEW_ONLY = ["--no-blackfilter", "--no-noisefilter", "--no-blurfilter", "--no-grayfilter", "--no-mask-scan",
                       "--no-mask-center", "--no-border-scan", "--no-border-align", "--no-wipe"]


class Tools:
    def __init__(self, build, folder, dpi):
        self._ours = os.path.join(build, "companions", "imageconvert", "imageconvert")
        self._leptonica = os.path.join(build, "bench", "leptonica_steps")
        self._folder, self._dpi = folder, dpi

    def missing(self):
        return [tool for tool in ("unpaper", "tesseract") if not there(tool)]

    def ours(self, arguments, pages, *more):
        return [self._ours, *arguments, "--dpi", str(self._dpi), "--out", self._folder, *more, *pages]

    def start_up(self):
        return [self._ours, "--help"]

    def magick(self, arguments, page, kind="bmp"):
        return ["convert", "-density", str(self._dpi), page, *arguments, os.path.join(self._folder, "magick." + kind)]

    def leptonica(self, step, pages):
        return [self._leptonica, step, self._folder, *pages]

    def unpaper(self, arguments, page):
        return ["unpaper", "--overwrite", "--dpi", str(self._dpi), *arguments, page, os.path.join(self._folder, "unpaper.ppm")]

    def tesseract_orientation(self, page):
        return ["tesseract", page, os.path.join(self._folder, "osd"), "--dpi", str(self._dpi), "--psm", "0", "-l", "osd"]
