# SPDX-License-Identifier: GPL-3.0-or-later
"""What a batch can be besides a plain stack: merged, split, previewed, cancelled, waiting for a busy scanner."""
import glob
import os
import subprocess
import unittest

from programtest import ProgramTest, count_bars, picture


def size_of(path):
    result = subprocess.run(["identify", "-format", "%w %h", path], check=True, stdout=subprocess.PIPE, text=True)
    return tuple(map(int, result.stdout.split()))


class Batches(ProgramTest):
    def duplex_feeder(self, sheets):
        folder = self.feeder(sheets)
        for sheet in range(1, sheets + 1):
            picture(os.path.join(folder, f"{sheet:03}-back.png"), sheet + 4)
        return folder

    def started(self, feeder, *keys, **more):
        session = self.session(feeder, [("Scan_Scan", key, value) for key, value in keys], **more)
        session.start_program()
        return session

    def page_files(self, session):
        return glob.glob(os.path.join(session.root, "tempfiles", "zarnqwd200-*"))

    def test_merged_sheets(self):
        session = self.started(self.duplex_feeder(2), ("scanType", "3"), ("doubleRBtn", "true"), ("combine", "true"))
        session.press_scan()
        session.wait_for_end(60)
        saved = session.new_files()
        self.assertEqual(len(saved), 2)
        for path in saved:
            width, height = size_of(path)
            self.assertAlmostEqual(height / width, 2 * 1.414, delta=0.05)

    def test_split_pages(self):
        session = self.started(self.feeder(1), ("split", "true"), ("hRBtn", "true"), ("vRBtn", "false"))
        session.press_scan()
        session.wait_for_end(60)
        sizes = [size_of(path) for path in session.new_files()]
        self.assertEqual(len(sizes), 2)
        self.assertAlmostEqual(sizes[0][1] / sizes[0][0], 2 * 1.414, delta=0.05)

    def test_flatbed_is_one_page(self):
        session = self.started(self.feeder(2), ("scanType", "0"))
        session.press_scan()
        session.wait_for_end(60)
        self.assertEqual(len(session.new_files()), 1)

    def test_preview_shows_and_saves_nothing(self):
        session = self.started(self.feeder(2), ("usrDefine", "true"), ("name", "p"), ("start", "7"))
        session.press_scan_with("alt+v")
        session.wait_for_end(60)
        self.assertEqual(session.new_files(), [])
        self.assertIn("预览", session.display.title(session.window_above()))
        self.assertEqual(self.page_files(session), [])
        session.display.press(session.window_above(), "Escape")
        session.press_scan()  # the feeder is empty now; the counter has not moved
        session.wait_for_end(60)
        session.vscan("load", session.feeder)
        session.press_scan()
        session.wait_for_end(60)
        self.assertEqual([os.path.basename(path) for path in session.new_files()], ["p7.jpg", "p8.jpg"])

    def test_busy_scanner_is_waited_for(self):
        session = self.started(self.feeder(1))
        session.vscan("busy", "1")
        session.press_scan()
        took = session.wait_for_end(60)
        self.assertEqual(len(session.new_files()), 1)
        self.assertGreater(took, 5)

    def test_pages_of_a_cancelled_batch_go_with_the_next(self):
        session = self.started(self.feeder(9), speed="real")  # enough sheets for a key press that comes late
        session.press_scan()
        session.wait_for_progress("正在扫描第3张图像", 30)
        session.display.press(session.window_above(), "Escape")  # the status window stands over the main one
        session.wait_for_end(30)
        self.assertEqual(session.new_files(), [])
        self.assertTrue(session.log.texts("progress").count("取消扫描"))
        left = [path for path in self.page_files(session) if path.endswith(".pnm")]
        self.assertIn(len(left), range(2, 9))
        session.vscan("load", session.feeder)
        session.press_scan()
        session.wait_for_end(90)
        bars = [count_bars(path) for path in session.new_files()]
        self.assertEqual(bars, list(range(1, len(left) + 1)) + list(range(1, 10)))
        self.assertEqual(self.page_files(session), [])

    def test_closing_during_a_batch_asks_first(self):
        session = self.started(self.feeder(9), ("autoCut", "true"), ("autoRight", "true"))
        main = session.window()

        def close_while_pages_are_processed():
            seen = len(session.log.texts("progress"))
            session.wait_until(lambda: any("正在处理" in text for text in self.later(session, seen)), 30, "no page processed")
            session.display.close(main)
            session.wait_until(lambda: session.window_above() not in ("", main), 10, "no question appeared")

        session.press_scan()
        close_while_pages_are_processed()
        session.display.press(session.window_above(), "Escape")  # no: the batch goes on
        session.wait_for_end(60)
        self.assertEqual(len(session.new_files()), 9)
        session.vscan("load", session.feeder)
        session.press_scan()
        close_while_pages_are_processed()
        session.display.press(session.window_above(), "alt+y")
        self.assertEqual(session.scanner.wait(20), 0)
        self.assertEqual(len(session.new_files()) + len(self.page_files(session)), 9)  # nothing is lost

    def later(self, session, seen):
        session.log.update()
        return session.log.texts("progress")[seen:]


if __name__ == "__main__":
    unittest.main()
