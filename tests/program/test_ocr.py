# SPDX-License-Identifier: GPL-3.0-or-later
"""Pages that become text: plain and for Word, merged, turned, blank, cancelled."""
import glob
import os
import re
import subprocess
import unittest
import xml.etree.ElementTree

from programtest import ProgramTest

FIRST, SECOND, THIRD = "扫描仪把纸张变成图像", "文字识别需要清楚的笔画", "最后一页留在文件里面"
# No crop, no turn, front sides only.
PLAIN_OCR = {"autoCut": "false", "autoRight": "false", "frontRotateState": "true", "scanType": "1", "delBlank": "true"}
WORD = "{http://schemas.microsoft.com/office/word/2003/wordml}"
SHAPES = "{urn:schemas-microsoft-com:vml}"


def text_page(path, text, *turn, font="Noto-Sans-CJK-SC"):
    """An A4 page at 200 dpi: the text at (31.75 mm, 38.1 mm), and with a number behind it 50.8 mm below; without text blank."""
    draw = ["-draw", f"text 250,350 '{text}'", "-draw", f"text 250,750 '{text}二'"] if text else []
    subprocess.run(["convert", "-size", "1654x2339", "xc:white", "-fill", "black", "-font", font, "-pointsize", "50",
                    *draw, *turn, "-units", "PixelsPerInch", "-density", "200", path], check=True)


def normal(text):
    """Text as it can be compared: the writer takes an "o" for a full stop, and the engine has its own blanks."""
    return re.sub(r"\s", "", text)


class TextDocuments(ProgramTest):
    def sheets(self, *texts, back=None):
        folder = self.feeder(0)
        for number, text in enumerate(texts, 1):
            text_page(os.path.join(folder, f"{number:03}-front.png"), text)
        if back is not None:
            text_page(os.path.join(folder, "001-back.png"), back[0], *back[1:])
        return folder

    def started(self, feeder, keys=(), others=(), **more):
        """The scan page with the OCR function selected."""
        settings = [("General", "ScanModel", "1"), *others]
        settings += [("Scan_OCR", key, value) for key, value in {**PLAIN_OCR, **dict(keys)}.items()]
        session = self.session(feeder, settings, **more)
        session.start_program()
        return session

    def scan(self, session, seconds=90):
        session.press_scan()
        session.wait_for_end(seconds)
        return session.new_files()

    def read(self, path):
        with open(path, encoding="utf-8") as document:
            return normal(document.read())

    def temp_files(self, session, pattern="*-0*"):
        return glob.glob(os.path.join(session.root, "tempfiles", pattern))

    def test_last_page_stays_in_a_text_file_that_replaces_nothing(self):
        session = self.started(self.sheets(FIRST, SECOND, "", THIRD), {"usrDefine": "true", "name": "文稿", "start": "9"})
        first = self.scan(session)
        self.assertEqual([os.path.basename(path) for path in first], ["文稿.txt"])
        self.assertEqual(self.read(first[0]), normal(THIRD + THIRD + "二"))
        self.assertIn("纯文本仅保留最后一页", session.log.texts("notice"))
        self.assertIn("已删除 1 张空白页", session.log.status)
        self.assertEqual([text for text in session.log.texts("progress") if "正在识别" in text],
                         [f"正在识别第{page}张图像" for page in (1, 2, 3)])
        self.assertEqual(self.temp_files(session), [])
        self.assertIn("文稿.txt", session.display.title(session.window_above()))
        with open(os.path.join(session.root, "QWD200.conf"), encoding="utf-8") as settings:
            self.assertIn("start=10", settings.read().partition("[Scan_OCR]")[2].partition("\n[")[0].split())
        session.display.press(session.window_above(), "Escape")
        session.vscan("load", session.feeder)
        self.assertEqual([os.path.basename(path) for path in self.scan(session)], ["文稿-1.txt"])

    def test_sheet_merged_into_one_page(self):
        session = self.started(self.sheets(FIRST, back=(SECOND,)), {"scanType": "3", "combine": "true"})
        saved = self.scan(session)
        self.assertEqual(self.read(saved[0]), normal(FIRST + FIRST + "二" + SECOND + SECOND + "二"))
        self.assertEqual(session.log.texts("notice"), [])

    def test_key_of_the_scanner_makes_a_word_document_of_both_sides(self):
        settings = {**PLAIN_OCR, "docType": "1", "scanType": "3", "backRotateState": "true"}
        arguments = [word for key, value in settings.items() for word in ("--set", f"Scan_OCR/{key}={value}")]
        status, lines, errors = self.demo("--function", "ocr", "--feeder", self.sheets(FIRST, back=(SECOND, "-rotate", "180")),
                                          "--set", "wholeSet/longShortRotate=1", *arguments)
        self.assertEqual(status, 0, errors)
        self.assertEqual([os.path.basename(path) for path in lines["saved"]], ["image.doc"])
        body = xml.etree.ElementTree.parse(lines["saved"][0]).getroot().find(WORD + "body")
        texts = [normal(text.text) for text in body.iter(WORD + "t")]
        self.assertEqual(texts, [FIRST, FIRST + "二", SECOND, SECOND + "二"])
        self.assertEqual([element.get(WORD + "type") for element in body.iter(WORD + "br")], ["page"])
        for place, shape in enumerate(body.iter(SHAPES + "shape")):
            left, top = (int(value) for value in re.findall(r"margin-(?:left|top):(\d+)", shape.get("style")))
            self.assertAlmostEqual(left, 31.75 / 25.4 * 300 * 0.25, delta=6)  # quarter pixels at 300 dpi
            self.assertAlmostEqual(top, (38.1 + 50.8 * (place % 2)) / 25.4 * 300 * 0.25, delta=8)

    def test_saved_scan_reads_the_logo_before_its_application_starts(self):
        session = self.session(self.sheets(FIRST), [("Scan_Scan", "appStart", "true")])
        # The probe takes the engine's own lines; on this page it finds none in the other face.
        text_page(os.path.join(session.root, "zarn.png"), SECOND, font="Noto-Serif-CJK-SC")
        session.start_program()
        self.scan(session)
        self.assertEqual(self.read(os.path.join(session.root, "test.txt")), normal(SECOND + SECOND + "二"))

    def test_cancel_keeps_the_scans_for_the_next_document(self):
        session = self.started(self.sheets(FIRST, SECOND, THIRD), {"docType": "1"})
        session.press_scan()
        session.wait_for_progress("正在处理第2张图像", 60)
        session.display.press(session.window(), "alt+c")
        session.wait_for_end(30)
        self.assertEqual(session.new_files(), [])
        self.assertIn("取消扫描，3 页未处理", session.log.status)
        self.assertEqual(len(self.temp_files(session, "zarnqwd200-*.pnm")), 3)
        self.assertEqual(self.temp_files(session, "page-*"), [])
        session.vscan("load", session.feeder)
        saved = self.scan(session)
        with open(saved[0], encoding="utf-8") as document:
            self.assertEqual(document.read().count("<w:br "), 5)


if __name__ == "__main__":
    unittest.main()
