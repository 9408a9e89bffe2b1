# SPDX-License-Identifier: GPL-3.0-or-later
"""What the whole-program tests share: the demo's modules, small page pictures, a place for files.

The build folder comes from the environment variable QWD200_BUILD, which ctest sets."""
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
TREE = os.path.abspath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
sys.path.insert(0, os.path.join(TREE, "scripts", "demo"))
from session import Session  # noqa: E402

BUILD = os.environ["QWD200_BUILD"]
SAMPLES = os.path.join(BUILD, "samples")
# A short chain for tests that are not about pixels: no crop, no turn, blanks kept, front sides only.
PLAIN = [("Scan_Scan", key, value) for key, value in
         (("autoCut", "false"), ("autoRight", "false"), ("delBlank", "false"), ("scanType", "1"), ("imgMend", "false"))]


def picture(path, words="页", size="827x1169"):
    """An A4 page at 100 dpi with a word and some lines on it."""
    bars = " ".join(f"rectangle 100,{y} 700,{y + 12}" for y in range(250, 1000, 60))
    subprocess.run(["convert", "-size", size, "xc:white", "-fill", "black", "-font", "Noto-Sans-CJK-SC", "-pointsize", "60",
                    "-draw", f"text 100,150 '{words}'", "-draw", bars, "-units", "PixelsPerInch", "-density", "100", path],
                   check=True)


class ProgramTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="program-test-", dir=os.path.join(BUILD))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.out = os.path.join(self.folder, "saved")

    def feeder(self, pages):
        """A folder with that many page pictures, each with its number on it."""
        folder = os.path.join(self.folder, "feeder")
        os.makedirs(folder)
        for number in range(1, pages + 1):
            picture(os.path.join(folder, f"{number:03}-front.png"), f"第 {number} 页")
        return folder

    def session(self, feeder, keys=(), **more):
        """A prepared session (closed at the test's end) with its save folder in the test's folder."""
        session = Session(BUILD, feeder, self.out, PLAIN + list(keys), **more)
        self.addCleanup(shutil.rmtree, session.folder, ignore_errors=True)
        self.addCleanup(session.__exit__)
        session.prepare()
        return session

    def demo(self, *arguments, prefix=(), timeout=240):
        """./run.sh --demo on the build under test; returns (exit status, {kind: [text]}, standard error)."""
        command = [*prefix, os.path.join(TREE, "run.sh"), "--demo", "--out", self.out, *arguments]
        result = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                timeout=timeout, check=False)
        lines = {"saved": [], "screenshot": [], "status": [], "seconds": []}
        for line in result.stdout.splitlines():
            kind, _, text = line.partition(": ")
            self.assertIn(kind, lines, f"unexpected line {line!r}")
            lines[kind].append(text)
        return result.returncode, lines, result.stderr


def plain_options():
    """PLAIN as arguments of the demo."""
    return [word for group, key, value in PLAIN for word in ("--set", f"{group}/{key}={value}")]


def grey_levels(path, width=60):
    """The picture as rows of grey levels (0 black, 255 white), `width` pixels wide."""
    data = subprocess.run(["convert", path, "-colorspace", "Gray", "-resize", f"{width}x", "-depth", "8", "pgm:-"], check=True,
                          stdout=subprocess.PIPE).stdout
    _, size, _, pixels = data.split(b"\n", 3)
    columns, rows = map(int, size.split())
    return [list(pixels[row * columns:(row + 1) * columns]) for row in range(rows)]


def similarity(first, second):
    """How alike two pictures are: the correlation of their reduced grey levels, 1 for the same."""
    result = subprocess.run(["compare", "-metric", "NCC", first, second, "null:"], check=False, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE, text=True)
    return float(result.stderr.split()[0])
