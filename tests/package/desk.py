# SPDX-License-Identifier: GPL-3.0-or-later
"""desk.py STEP...: a user starts the installed program from its desktop entry, with a virtual scanner on a display of
its own. Steps: scan (a stack by the scanner's key), manual (F1), notice (of missing rights). Part of `run`."""
import getpass
import os
import subprocess
import sys
import tempfile

sys.path.insert(0, "/mnt/tree/scripts/demo")
from session import Session, SessionError, TimedOut  # noqa: E402

ENTRY = "/usr/share/applications/cn.zarn.qwd200.desktop"
BUILD, SAVED, MANUAL, OUT = "/mnt/build", "/home/ScanDoc", "/opt/zarn/Scanner/QWD200/help_qwd200.pdf", "/mnt/out"


class InstalledProgram(Session):
    """The demo's session, but with the program as it is installed, on the real install root."""

    def __init__(self):
        place = tempfile.mkdtemp(prefix="desk-")  # the build folder is not the user's to write into
        for name in ("vscan", "samples"):
            os.symlink(os.path.join(BUILD, name), os.path.join(place, name))
        super().__init__(place, out=SAVED)

    @property
    def program(self):
        """Opens the desktop entry; stays, since the scanner lives as long as this."""
        path = os.path.join(self.folder, "start")
        with open(path, "w", encoding="utf-8") as script:
            script.write(f"#!/bin/sh\ngio launch {ENTRY} && exec sleep infinity\n")
        os.chmod(path, 0o755)
        return path


def picture(session, name):
    path = os.path.join(OUT, f"{getpass.getuser()}-{name}.png")
    session.display.screenshot(path)
    return path


def colours(path, area):
    return int(subprocess.run(["convert", path, "-crop", area, "-format", "%k", "info:"], check=True, stdout=subprocess.PIPE).stdout)


def scan(session):
    session.press_key(1)
    session.wait_for_end(300)
    picture(session, "scan")
    files = session.new_files()
    faults = session.log.texts("fault")
    if len(files) < 6 or faults:
        raise SessionError(f"{len(files)} files, faults: {faults}")
    return f"{len(files)} pages are saved in {SAVED}"


def manual(session):
    if not os.path.exists(MANUAL):
        raise SessionError(f"{MANUAL} is not installed")
    session.display.press(session.window(), "F1")

    def viewer_shows_it():
        return any("help_qwd200.pdf" in session.display.title(window) for window in session.display.windows("pdfReader"))
    session.wait_until(viewer_shows_it, 30, "no viewer with the manual")
    # The viewer has the focus; where its page is, there are more than a few colours when it is drawn.
    session.wait_until(lambda: colours(picture(session, "manual"), "700x500+350+150") > 50, 30, "the manual's page stays empty")
    return "F1 opens the manual"


def notice(session):
    wanted = f"sudo usermod -aG scanner {getpass.getuser()}"

    def told():
        session.log.update()
        return any(wanted in text for text in session.log.texts("notice"))
    session.wait_until(told, 10, f"no notice with {wanted!r}")
    picture(session, "notice")
    return "who is not in the group is told how to join"


def main():
    user = getpass.getuser()
    with InstalledProgram() as session:
        step = "start"
        try:
            session.prepare()
            session.start_program()
            print(f"ok      {user}: the program starts from its desktop entry")
            for step in sys.argv[1:]:
                print(f"ok      {user}: {globals()[step](session)}")
        except (SessionError, TimedOut) as error:
            print(f"FAILED  {user}: {step}: {error}")
            if session.display:
                picture(session, "failed")
            if os.path.exists(session.log_path):
                with open(session.log_path, encoding="utf-8", errors="replace") as log:
                    print("".join(log.readlines()[-30:]))
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
