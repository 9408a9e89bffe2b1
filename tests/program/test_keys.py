# SPDX-License-Identifier: GPL-3.0-or-later
"""The scanner leads: its keys start jobs, its faults are shown until they are confirmed, and the next press works."""
import os
import time
import unittest

from programtest import ProgramTest, count_bars


class Keys(ProgramTest):
    def started(self, sheets, *keys, **more):
        session = self.session(self.feeder(sheets), [("Scan_Scan", key, value) for key, value in keys], **more)
        session.start_program()
        return session

    def state(self, session):
        with open(os.path.join(session.root, "StateInfo"), "rb") as state:
            return state.read()

    def bars(self, session):
        return [count_bars(path) for path in session.new_files()]

    def assert_fault_shown(self, session, code):
        """The state tells the fault last, and its window waits for a confirmation."""
        self.assertEqual(self.state(session), code)
        session.wait_until(lambda: session.display.title(session.window_above()) == "扫描状态", 10, "no status window")
        session.display.press(session.window_above(), "Return")

    def assert_next_press_scans_all(self, session, sheets):
        session.vscan("load", session.feeder)
        session.press_key(1)
        session.wait_for_end(90)
        self.assertEqual(self.bars(session)[-sheets:], list(range(1, sheets + 1)))
        self.assertEqual(self.state(session), b"0000\n")

    def test_jam_shows_its_text_and_the_next_press_scans_the_full_stack(self):
        session = self.started(5)
        session.vscan("jam-at", "3")
        session.press_key(1)
        session.wait_for_end(60)
        self.assertEqual(self.bars(session), [1, 2])
        self.assertIn("2 页", session.log.texts("fault")[0])
        self.assert_fault_shown(session, b"1009\n")
        session.vscan("clear")
        self.assert_next_press_scans_all(session, 5)

    def test_cover_opened_in_mid_batch(self):
        session = self.started(4, speed="real")
        session.press_key(1)
        session.wait_for_progress("正在扫描第2张图像", 30)
        session.vscan("cover", "open")
        session.wait_for_end(60)
        self.assert_fault_shown(session, b"1009\n")
        session.vscan("cover", "closed")
        session.vscan("pace", "fast")
        self.assert_next_press_scans_all(session, 4)

    def test_unplugged_in_mid_batch_and_back(self):
        session = self.started(4, speed="real")
        session.press_key(1)
        session.wait_for_progress("正在扫描第2张图像", 30)
        session.vscan("unplug")
        session.wait_for_end(60)
        self.assertEqual(self.bars(session), [1])
        self.assert_fault_shown(session, b"1006\n")
        session.vscan("replug")
        session.vscan("pace", "fast")
        self.assert_next_press_scans_all(session, 4)

    def test_busy_for_three_tries(self):
        session = self.started(2)
        session.vscan("busy", "3")
        session.press_key(1)
        session.wait_until(lambda: self.state(session) == b"1010\n", 20, "busy is not told")
        took = session.wait_for_end(60)
        self.assertEqual(self.bars(session), [1, 2])
        self.assertGreater(took, 15)

    def test_clear_key_cancels(self):
        session = self.started(4, speed="real")
        session.press_key(1)
        session.wait_for_progress("正在扫描第2张图像", 30)
        session.vscan("press", "3")
        session.wait_for_end(60)
        self.assertEqual(session.new_files(), [])
        self.assertIn("取消扫描", session.log.texts("progress"))
        self.assertEqual(self.state(session), b"1011\n")

    def test_presses_during_a_job_are_forgotten(self):
        session = self.started(2, speed="real")
        session.press_key(1)
        session.vscan("press", "1")
        session.wait_for_end(60)
        ended = session.log.batches_ended
        with self.assertRaises(Exception):
            session.wait_until(lambda: session.log.update() or session.log.batches_ended > ended, 6, "no second batch")

    def test_pages_from_the_glass_join_one_batch(self):
        session = self.started(1, ("scanType", "0"), ("contiScan", "true"))
        session.press_key(1)
        for key in ("Return", "Escape"):  # go on, then finish
            session.wait_until(lambda: session.display.title(session.window_above()) == "扫描状态" and
                               self.question(session), 20, "no question")
            session.display.press(session.window_above(), key)
        session.wait_for_end(60)
        self.assertEqual(len(session.new_files()), 2)

    def question(self, session):
        """The batch stands still: no progress for a while (a page takes well under a second)."""
        before = len(session.log.texts("progress"))
        time.sleep(1.5)
        session.log.update()
        return len(session.log.texts("progress")) == before


if __name__ == "__main__":
    unittest.main()
