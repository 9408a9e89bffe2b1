# SPDX-License-Identifier: GPL-3.0-or-later
"""One program at a time, and what a killed one leaves behind."""
import glob
import os
import signal
import time
import unittest

from programtest import ProgramTest


class Instances(ProgramTest):
    def test_second_start_ends_at_once_and_silently(self):
        session = self.session(self.feeder(1))
        session.start_program()
        window = session.window()
        size = os.path.getsize(session.log_path)
        second = session.start_again()
        self.assertEqual(second.wait(10), 0)
        self.assertEqual(session.window(), window)
        with open(session.log_path, encoding="utf-8") as log:
            log.seek(size)
            self.assertEqual(log.read(), "", "the second start said something")

    def test_one_of_twenty_starts_survives(self):
        session = self.session(self.feeder(1))
        open(session.log_path, "w").close()
        starts = [session.start_again() for _ in range(20)]
        deadline = time.monotonic() + 60
        while sum(start.poll() is None for start in starts) > 1 and time.monotonic() < deadline:
            time.sleep(0.1)
        time.sleep(1)
        ended = [start.returncode for start in starts if start.poll() is not None]
        self.assertEqual(ended, [0] * 19)

    def test_lock_of_a_killed_program_is_stale(self):
        session = self.session(self.feeder(1))
        session.start_program()
        for pid in session.program_pids():
            os.kill(pid, signal.SIGKILL)
        session.scanner.wait(10)
        session.start_program()
        session.press_scan()
        session.wait_for_end(60)
        self.assertEqual(len(session.new_files()), 1)

    def test_pages_of_a_killed_batch_are_kept(self):
        session = self.session(self.feeder(4), speed="real")
        session.start_program()
        session.press_scan()
        temp = os.path.join(session.root, "tempfiles")
        deadline = time.monotonic() + 60
        while not glob.glob(os.path.join(temp, "zarnqwd200-0002.pnm*")) and time.monotonic() < deadline:
            time.sleep(0.02)
        for pid in session.program_pids():
            os.kill(pid, signal.SIGKILL)
        session.scanner.wait(10)
        left = sorted(os.path.basename(path) for path in glob.glob(os.path.join(temp, "zarnqwd200-*")))
        self.assertGreaterEqual(len(left), 1)
        for name in left:
            self.assertRegex(name, r"^zarnqwd200-\d{4}\.pnm(\.part)?$")
        session.start_program()
        session.press_scan()
        session.wait_for_end(120)
        self.assertEqual(len(session.new_files()), 4)
        kept = sorted(os.path.basename(path) for path in glob.glob(os.path.join(temp, "kept", "*", "*")))
        self.assertEqual(kept, left)


if __name__ == "__main__":
    unittest.main()
