# SPDX-License-Identifier: GPL-3.0-or-later
"""A panel that shows a folder: scans go there by its own settings, and its list works on the files."""
import os
import unittest
from unittest import mock

from programtest import ProgramTest, count_bars
from session import TimedOut

SETTINGS = {"autoCut": "false", "autoRight": "false", "frontRotateState": "true", "scanType": "1", "fileType": "2",
            "usrDefine": "true", "name": "scan", "start": "7"}


class FolderPanels(ProgramTest):
    def test_scans_are_listed_opened_renamed_and_thrown_away(self):
        chosen = os.path.join(self.out, "U盘")
        data = os.path.join(self.folder, "data")
        opened = os.path.join(self.folder, "opened")
        programs = os.path.join(self.folder, "programs")
        os.makedirs(programs)
        with open(os.path.join(programs, "xdg-open"), "w", encoding="utf-8") as script:
            script.write(f"#!/bin/sh\nprintf '%s\\n' \"$1\" > '{opened}'\n")
        os.chmod(script.name, 0o755)
        with mock.patch.dict(os.environ, HOME=self.folder, XDG_DATA_HOME=data, PATH=programs + ":" + os.environ["PATH"]):
            session = self.session(self.feeder(2), [("General", "ScanModel", "5")] +
                                   [("Scan_File", key, value) for key, value in SETTINGS.items()],
                                   path_keys=[("Scan_File_FilePath", "savepath", chosen)])
            session.start_program()

        def names():
            return sorted(os.listdir(chosen)) if os.path.isdir(chosen) else []

        def in_list(name, keys, done):
            """Looks for a name in the list by typing it and presses keys there, again when some came too late."""
            for attempt in range(3):
                session.display.press(session.window(), "alt+n")
                session.display.type(name)
                for key in keys:
                    session.display.type(key)
                try:
                    return session.wait_until(done, 5, f"{keys} on {name} had no effect")
                except TimedOut:
                    if attempt == 2:
                        raise
                    session.display.type(["Escape"])

        session.press_scan()
        session.wait_for_end(60)
        self.assertEqual(names(), ["scan7.png", "scan8.png"])
        self.assertEqual([count_bars(path) for path in session.new_files()], [1, 2])
        in_list("scan8", [["Return"]], lambda: os.path.exists(opened) and os.path.getsize(opened))
        with open(opened, encoding="utf-8") as file:
            self.assertIn("scan8.png", file.read())
        in_list("scan8", [["F2"], "kept", ["Return"]], lambda: names() == ["kept.png", "scan7.png"])
        in_list("scan7", [["Delete"]], lambda: names() == ["kept.png"])
        self.assertEqual(os.listdir(os.path.join(data, "Trash", "files")), ["scan7.png"])
        session.vscan("load", session.feeder)
        session.press_scan()
        session.wait_for_end(60)
        self.assertEqual(names(), ["kept.png", "scan10.png", "scan9.png"])
        in_list("scan10", [["Delete"]], lambda: names() == ["kept.png", "scan9.png"])  # the new ones are listed, too


if __name__ == "__main__":
    unittest.main()
