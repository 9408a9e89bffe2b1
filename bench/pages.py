# SPDX-License-Identifier: GPL-3.0-or-later
"""The pages that are measured: the project's drawn sheets, and those of a folder, as PNM files."""
import os
import subprocess

PNM = (".ppm", ".pgm", ".pnm", ".pbm")


def as_pnm(source, target, *scaling):
    if not os.path.exists(target):
        subprocess.run(["convert", source, "-alpha", "off", *scaling, "-depth", "8", target], check=True)
    return target


def sheets(build, folder):
    """The sample sheets as 300 dpi PNM files in `folder`; made by the target sample-sheets."""
    source = os.path.join(build, "samples")
    names = sorted(name for name in os.listdir(source) if name.endswith(".png"))
    return [as_pnm(os.path.join(source, name), os.path.join(folder, name[:-4] + ".ppm")) for name in names]


def from_folder(path, limit):
    """At most `limit` PNM files of a folder, spread over it."""
    files = sorted(os.path.join(path, name) for name in os.listdir(path) if name.endswith(PNM))
    return files[::max(1, len(files) // limit)][:limit]


def at_600_dpi(pages, folder):
    return [as_pnm(page, os.path.join(folder, "600-" + os.path.basename(page)), "-filter", "Triangle", "-resize", "200%")
            for page in pages]
