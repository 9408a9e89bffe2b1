# SPDX-License-Identifier: GPL-3.0-or-later
"""The rule checker finds what it is there to find, in a small tree with one fault of each kind."""
import os
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts"))
import check_rooms  # noqa: E402

LICENCE = "// SPDX-License-Identifier: GPL-3.0-or-later\n"


class CheckRooms(unittest.TestCase):
    def faults(self, files, check=check_rooms.check):
        with tempfile.TemporaryDirectory() as root:
            for name, text in files.items():
                os.makedirs(os.path.join(root, os.path.dirname(name)), exist_ok=True)
                with open(os.path.join(root, name), "w", encoding="utf-8") as source:
                    source.write(text)
            return check(root)

    def test_good_tree(self):
        self.assertEqual(self.faults({
            "config/paths.h": LICENCE + "#include <QString>\n",
            "device/sane.cpp": LICENCE + '#include "config/paths.h"\n#include <sane/sane.h>\n',
            "device/readbtn.cpp": LICENCE + '#include "device/stateinfopanel.h"\n#include <QDialog>\n',
            "app/main.cpp": LICENCE + '#include "device/sane.h"\n#include <QWidget>\n'}), [])

    def test_each_fault_is_found(self):
        cases = {
            "config must not call app": {"config/a.cpp": LICENCE + '#include "app/b.h"\n', "app/b.h": LICENCE},
            "imaging has no widgets": {"imaging/a.h": LICENCE + "#include <QtWidgets/QLabel>\n"},
            "logic must not know a panel": {"pdf/a.cpp": LICENCE + '#include "pdf/pdfpanel.h"\n'},
            "device has no widgets": {"device/usb.h": LICENCE + "#include <QLabel>\n"},
            "device_core must not know device_ui": {"device/usb.cpp": LICENCE + '#include "device/readbtn.h"\n'},
            "included in 2 files": {"device/a.cpp": LICENCE + "#include <sane/sane.h>\n",
                                    "device/b.cpp": LICENCE + "# include <sane/sane.h>\n"},
            "names the install root": {"app/a.cpp": LICENCE + 'f("/opt/zarn/x");\n'},
            "no licence line": {"app/a.cpp": "int a;\n"},
            "does not know": {"attic/a.cpp": LICENCE},
            "more than 600": {"app/a.cpp": LICENCE + "\n" * 601},
        }
        for words, files in cases.items():
            with self.subTest(words):
                faults = self.faults(files)
                self.assertEqual(len(faults), 1, faults)
                self.assertIn(words, faults[0])

    def test_companions_call_down_only(self):
        def check(root):
            return check_rooms.check_companions(root, set(check_rooms.ALLOWED))
        faults = self.faults({
            "imageconvert/a.cpp": LICENCE + '#include "b.h"\n#include "imaging/orientation.h"\n#include <QFile>\n',
            "imageconvert/b.h": LICENCE + '#include "config/paths.h"\n#include <QLabel>\n',
            "reader/c.cpp": LICENCE + '#include "config/paths.h"\n#include "../imageconvert/b.h"\n#include <QLabel>\n',
            "reader/d.cpp": '#include "app/widget.h"\n'}, check)
        for words in ("b.h: imageconvert must not call config", "b.h: imageconvert has no widgets",
                      "c.cpp: a companion includes its own", "d.cpp: reader must not call app", "d.cpp: no licence"):
            self.assertEqual(len([fault for fault in faults if words in fault]), 1, (words, faults))
        self.assertEqual(len(faults), 5, faults)


if __name__ == "__main__":
    unittest.main()
