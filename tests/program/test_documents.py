# SPDX-License-Identifier: GPL-3.0-or-later
"""Stacks that become documents: grouped, merged, numbered, previewed, cancelled, saved where nothing can be saved."""
import glob
import os
import re
import stat
import subprocess
import unittest
import zipfile

from programtest import ProgramTest, count_bars, picture
from test_faults import UNPRIVILEGED

# A short chain, as PLAIN for the window's own function: no crop, no turn, front sides only.
PLAIN_PDF = {"autoCut": "false", "autoRight": "false", "frontRotateState": "true", "scanType": "1", "delBlank": "false"}


class Documents(ProgramTest):
    def started(self, feeder, keys=(), others=(), **more):
        """The scan page with the PDF function selected."""
        settings = [("General", "ScanModel", "2"), *others]
        settings += [("Scan_PDF", key, value) for key, value in {**PLAIN_PDF, **dict(keys)}.items()]
        session = self.session(feeder, settings, **more)
        session.start_program()
        return session

    def scan(self, session, seconds=60):
        session.press_scan()
        session.wait_for_end(seconds)
        return session.new_files()

    def pages(self, path):
        """The pages of a PDF as pictures."""
        prefix = os.path.join(self.folder, os.path.basename(path))
        subprocess.run(["pdftoppm", "-r", "72", "-gray", path, prefix], check=True)
        return sorted(glob.glob(glob.escape(prefix) + "-*.pgm"))

    def bars(self, path):
        return [count_bars(page) for page in self.pages(path)]

    def back(self, folder, sheet, bars, *turn):
        path = os.path.join(folder, f"{sheet:03}-back.png")
        picture(path, bars)
        if turn:
            subprocess.run(["mogrify", *turn, path], check=True)

    def temp_files(self, session, pattern):
        return glob.glob(os.path.join(session.root, "tempfiles", pattern))

    def test_seven_pages_by_three_are_numbered_over_two_sessions(self):
        session = self.started(self.feeder(7), {"split": "true", "usrDefine": "true", "name": "卷", "start": "9"},
                               [("wholeSet", "splitCount", "3")])
        first = self.scan(session)
        self.assertEqual([os.path.basename(path) for path in first], ["卷9.pdf", "卷10.pdf", "卷11.pdf"])
        self.assertEqual([self.bars(path) for path in first], [[1, 2, 3], [4, 5, 6], [7]])
        session.vscan("load", session.feeder)
        second = self.scan(session)
        self.assertEqual([os.path.basename(path) for path in second], ["卷12.pdf", "卷13.pdf", "卷14.pdf"])
        self.assertEqual(self.temp_files(session, "*-0*"), [])

    def test_duplex_sheets_merged_with_a_blank_one_between(self):
        feeder = self.feeder(3)
        for sheet in (1, 3):
            self.back(feeder, sheet, sheet + 4)
        for side in ("front", "back"):
            subprocess.run(["convert", "-size", "827x1169", "xc:white", "-units", "PixelsPerInch", "-density", "100",
                            os.path.join(feeder, f"002-{side}.png")], check=True)
        session = self.started(feeder, {"scanType": "3", "combine": "true", "delBlank": "true"})
        saved = self.scan(session)
        self.assertEqual(len(saved), 1)
        sizes = re.findall(r"size:\s+([\d.]+) x ([\d.]+)", subprocess.run(
            ["pdfinfo", "-f", "1", "-l", "9", saved[0]], check=True, stdout=subprocess.PIPE, text=True).stdout)
        self.assertEqual(len(sizes), 2)
        for width, height in sizes:
            self.assertAlmostEqual(float(height) / float(width), 2 * 1.414, delta=0.05)
        self.assertIn("已删除 1 张空白页", session.log.status)

    def test_backs_scanned_head_down_are_turned(self):
        feeder = self.feeder(2)
        for sheet in (1, 2):
            self.back(feeder, sheet, sheet + 4, "-rotate", "180")
        session = self.started(feeder, {"scanType": "3"}, [("wholeSet", "longShortRotate", "1")])
        saved = self.scan(session)
        self.assertEqual(self.bars(saved[0]), [1, 5, 2, 6])
        for page in self.pages(saved[0]):
            darkest = subprocess.run(["convert", page, "-crop", "100%x16%+0+0", "-format", "%[fx:minima]", "info:"], check=True,
                                     stdout=subprocess.PIPE).stdout
            self.assertLess(float(darkest), 0.3, "the heading is not at the top")

    def test_preview_shows_and_saves_nothing(self):
        session = self.started(self.feeder(2), {"usrDefine": "true", "name": "p", "start": "7", "split": "true"})
        session.press_scan_with("alt+v")
        session.wait_for_end(60)
        self.assertEqual(session.new_files(), [])
        self.assertIn("预览", session.display.title(session.window_above()))
        session.wait_until(lambda: not self.temp_files(session, "*-0*"), 10, "pages are left")
        session.display.press(session.window_above(), "Escape")
        session.vscan("load", session.feeder)
        self.assertEqual([os.path.basename(path) for path in self.scan(session)], ["p7.pdf"])

    def test_pages_of_a_cancelled_batch_go_into_the_next_document(self):
        session = self.started(self.feeder(9), speed="real")
        session.press_scan()
        session.wait_for_progress("正在扫描第3张图像", 30)
        session.display.press(session.window_above(), "Escape")  # the status window stands over the main one
        session.wait_for_end(30)
        self.assertEqual(session.new_files(), [])
        self.assertIn("取消扫描", session.log.texts("progress"))
        left = len(self.temp_files(session, "zarnqwd200-*.pnm"))
        self.assertIn(left, range(2, 9))
        session.vscan("pace", "fast")
        session.vscan("load", session.feeder)
        saved = self.scan(session, 90)
        self.assertEqual(self.bars(saved[0]), list(range(1, left + 1)) + list(range(1, 10)))

    def test_folder_that_cannot_be_written_keeps_the_pages(self):
        os.makedirs(self.out)
        os.chmod(self.out, stat.S_IRUSR | stat.S_IXUSR)
        self.addCleanup(os.chmod, self.out, stat.S_IRWXU)
        status, lines, _ = self.demo("--function", "pdf", "--feeder", self.feeder(2), "--set", "File_PDF/scanType=1",
                                     prefix=UNPRIVILEGED)
        self.assertEqual(status, 3)
        self.assertEqual(lines["saved"], [])
        kept = os.path.join(os.path.dirname(lines["screenshot"][0]), "root", "tempfiles", "failed-image")
        self.assertEqual(sorted(os.listdir(kept)), ["page-0001.jpg", "page-0002.jpg"])
        self.assertIn("failed-image", lines["status"][0])
        self.assertIn("没有写入权限", lines["status"][0])

    def test_key_of_the_scanner_makes_the_document_of_the_file_page(self):
        status, lines, errors = self.demo("--function", "pdf", "--feeder", self.feeder(2), "--set", "File_PDF/scanType=1",
                                          "--set", "File_PDF/fileColor=0")
        self.assertEqual(status, 0, errors)
        self.assertEqual([os.path.basename(path) for path in lines["saved"]], ["image.ofd"])
        with zipfile.ZipFile(lines["saved"][0]) as package:
            self.assertEqual(len([name for name in package.namelist() if name.endswith("Content.xml")]), 2)


if __name__ == "__main__":
    unittest.main()
