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
for variable in ("LC_MESSAGES", "LANG", "LANGUAGE"):
    os.environ.pop(variable, None)
os.environ["LC_ALL"] = "C.UTF-8"  # the texts that tests look for are Chinese, the default
SAMPLES = os.path.join(BUILD, "samples")
# A short chain for tests that are not about pixels: no crop, no turn, blanks kept, front sides only.
PLAIN = [("Scan_Scan", key, value) for key, value in
         (("autoCut", "false"), ("autoRight", "false"), ("delBlank", "false"), ("scanType", "1"), ("imgMend", "false"))]


def picture(path, bars):
    """An A4 page at 100 dpi with a heading and that many bars on it, by which count_bars() knows it again."""
    shapes = " ".join(f"rectangle 100,{250 + 60 * bar} 700,{262 + 60 * bar}" for bar in range(bars))
    subprocess.run(["convert", "-size", "827x1169", "xc:white", "-fill", "black", "-font", "Noto-Sans-CJK-SC", "-pointsize", "60",
                    "-draw", "text 100,150 '测试页'", "-draw", shapes, "-units", "PixelsPerInch", "-density", "100", path],
                   check=True)


def count_bars(path):
    """The bars in the middle column of a page picture, below its heading."""
    data = subprocess.run(["convert", path, "-colorspace", "Gray", "-resize", "827x1169!", "-crop", "1x969+400+200", "+repage",
                           "-threshold", "50%", "-depth", "8", "gray:-"], check=True, stdout=subprocess.PIPE).stdout
    return sum(above > 127 > below for above, below in zip(data, data[1:]))


class ProgramTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="program-test-", dir=os.path.join(BUILD))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.out = os.path.join(self.folder, "saved")

    def feeder(self, pages):
        """A folder with that many page pictures, page n with n bars."""
        folder = os.path.join(self.folder, "feeder")
        os.makedirs(folder)
        for number in range(1, pages + 1):
            picture(os.path.join(folder, f"{number:03}-front.png"), number)
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


def similarity(first, second):
    """How alike two pictures are: the correlation of their reduced grey levels, 1 for the same."""
    result = subprocess.run(["compare", "-metric", "NCC", first, second, "null:"], check=False, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE, text=True)
    return float(result.stderr.split()[0])
