# SPDX-License-Identifier: GPL-3.0-or-later
"""Follows the log that the program writes: lines "KIND: TEXT" among other output."""
import re

FINISHED = "1234"
CONTROL_WORDS = {FINISHED, "2222", "3333", "4444"}
_LINE = re.compile(r"(progress|saved|notice|fault|status): ?(.*)")


class ProgramLog:
    def __init__(self, path):
        self._path = path
        self._offset = 0
        self._rest = b""
        self.entries = []  # (kind, text)

    def update(self):
        """Reads what has been added; an unfinished last line waits for its end."""
        with open(self._path, "rb") as log:
            log.seek(self._offset)
            added = log.read()
        self._offset += len(added)
        *lines, self._rest = (self._rest + added).split(b"\n")
        for line in lines:
            match = _LINE.match(line.decode("utf-8", "replace").strip())
            if match:
                self.entries.append((match.group(1), match.group(2).strip()))

    def texts(self, kind):
        return [text for entry_kind, text in self.entries if entry_kind == kind]

    @property
    def batches_ended(self):
        return self.texts("progress").count(FINISHED)

    @property
    def status(self):
        """What the window's status line showed last."""
        shown = self.texts("status") or [text for text in self.texts("progress") if text not in CONTROL_WORDS]
        return shown[-1] if shown else ""
