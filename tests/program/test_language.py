# SPDX-License-Identifier: GPL-3.0-or-later
"""A session whose locale is English: the program speaks English from the first window to the saved file."""
import os
import re
import unittest
from unittest import mock

from programtest import ProgramTest, count_bars

CHINESE = re.compile("[\u3001-\u303f\u3400-\u9fff\uff00-\uffef]")


class English(ProgramTest):
    def test_a_batch(self):
        with mock.patch.dict(os.environ, LC_ALL="", LANG="en_US.UTF-8"):
            session = self.session(self.feeder(2), [("Scan_Scan", "resolution", "6"), ("Scan_Scan", "selfResolution", "120")])
        session.start_program()
        self.assertEqual(session.display.title(session.window()), "QWD200 Scan")
        session.press_scan()
        session.wait_for_end(60)
        self.assertEqual([count_bars(path) for path in session.new_files()], [1, 2])
        for kind in ("progress", "status", "notice"):
            for text in session.log.texts(kind):
                self.assertIsNone(CHINESE.search(text), text)
        self.assertIn("Processing image 2", session.log.texts("progress"))
        self.assertEqual(session.log.status, f"2 file(s) saved to {self.out}")
        with open(os.path.join(session.root, "QWD200.conf"), encoding="utf-8") as stored:
            self.assertIn("resolutionText=自定义\n", stored.read())  # what is stored has no language


if __name__ == "__main__":
    unittest.main()
