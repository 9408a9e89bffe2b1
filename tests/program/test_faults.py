# SPDX-License-Identifier: GPL-3.0-or-later
"""Faults of the scanner and of the save folder: a notice, and nothing lost."""
import glob
import os
import stat
import unittest

from programtest import ProgramTest, count_bars, plain_options

# Root without the right to ignore permissions is as unprivileged as anyone where folders are concerned.
UNPRIVILEGED = (["setpriv", "--bounding-set=-dac_override,-dac_read_search", "--inh-caps=-all"] if os.getuid() == 0 else [])


class Faults(ProgramTest):
    def test_jam_in_the_middle_keeps_the_pages_before_it(self):
        status, lines, errors = self.demo("--feeder", self.feeder(3), "--vscan", "jam-at 3", *plain_options())
        self.assertEqual(status, 3)
        self.assertEqual([count_bars(path) for path in lines["saved"]], [1, 2])
        self.assertIn("fault:", errors)

    def test_read_only_save_folder_keeps_the_page_files(self):
        os.makedirs(self.out)
        os.chmod(self.out, stat.S_IRUSR | stat.S_IXUSR)
        self.addCleanup(os.chmod, self.out, stat.S_IRWXU)
        status, lines, _ = self.demo("--feeder", self.feeder(2), *plain_options(), prefix=UNPRIVILEGED)
        self.assertEqual(status, 3)
        self.assertEqual(lines["saved"], [])
        root = os.path.join(os.path.dirname(lines["screenshot"][0]), "root")
        self.assertEqual(len(glob.glob(os.path.join(root, "tempfiles", "**", "zarnqwd200-*.pnm"), recursive=True)), 2)
        with open(os.path.join(os.path.dirname(root), "program.log"), encoding="utf-8", errors="replace") as log:
            self.assertTrue([line for line in log if line.startswith(("notice:", "fault:"))])

    def test_scanner_unplugged_before_the_batch(self):
        session = self.session(self.feeder(1))
        session.start_program()
        session.vscan("unplug")
        session.press_scan()
        session.wait_for_end(60)
        self.assertEqual(session.new_files(), [])
        self.assertTrue(session.log.texts("fault") + session.log.texts("notice"))
        session.vscan("replug")
        session.press_key(1)  # the window has been hidden; the scanner's key works again
        session.wait_for_end(60)
        self.assertEqual(len(session.new_files()), 1)

    def test_second_batch_overwrites_nothing(self):
        feeder = self.feeder(2)
        session = self.session(feeder)
        session.start_program()
        session.press_scan()
        session.wait_for_end(60)
        first = {path: os.stat(path).st_mtime_ns for path in session.new_files()}
        self.assertEqual(len(first), 2)
        session.vscan("load", feeder)
        session.press_scan()
        session.wait_for_end(60)
        second = session.new_files()
        self.assertEqual(len(second), 2)
        self.assertFalse(set(first) & set(second))
        for path, time in first.items():
            self.assertEqual(os.stat(path).st_mtime_ns, time)

    def test_fixed_name_that_exists_gets_a_suffix(self):
        naming = [("Scan_Scan", key, value) for key, value in
                  (("usrDefine", "true"), ("usr", "true"), ("dateAndtime", "false"), ("system", "false"), ("name", "合同"))]
        session = self.session(self.feeder(1), naming)
        os.makedirs(self.out)
        session.start_program()
        session.press_scan()
        session.wait_for_end(60)
        name = session.new_files()[0]
        session.vscan("load", session.feeder)
        session.press_scan()
        session.wait_for_end(60)
        self.assertNotIn(name, session.new_files())
        self.assertEqual(len(os.listdir(self.out)), 2)


if __name__ == "__main__":
    unittest.main()
