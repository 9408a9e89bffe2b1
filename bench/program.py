# SPDX-License-Identifier: GPL-3.0-or-later
"""The whole program under Xvfb with the virtual scanner: start-up and memory over a long batch."""
import os
import statistics
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "scripts", "demo"))
from session import Session  # noqa: E402


def resident_mb(pid):
    with open(f"/proc/{pid}/status", encoding="ascii") as status:
        return next(int(line.split()[1]) / 1024 for line in status if line.startswith("VmRSS:"))


def start_up(build, starts):
    """Seconds from the start of the process to its visible window."""
    seconds = []
    for _ in range(starts):
        with Session(build) as session:
            session.prepare()
            begin = time.monotonic()
            session.start_program()
            seconds.append(time.monotonic() - begin)
    print(f"\nstart-up to the visible window: median {1000 * statistics.median(seconds):.0f} ms, "
          f"worst {1000 * max(seconds):.0f} ms ({starts} starts)")


def long_batch(build, pages):
    """The whole program over one batch: resident memory at a tenth and at the end, seconds per page."""
    with tempfile.TemporaryDirectory() as feeder, Session(build, feeder) as session:
        source = os.path.join(build, "samples", "001-front.png")
        for number in range(pages):
            os.symlink(source, os.path.join(feeder, f"{number + 1:04}-front.png"))
        session.prepare()
        session.start_program()
        pid = session.program_pids()[0]
        session.press_scan()

        def tenth():
            session.log.update()
            return len(session.log.texts("saved")) >= pages // 10
        session.wait_until(tenth, 3600, "no page was saved")
        early = resident_mb(pid)
        took = session.wait_for_end(3600)
        saved = len(session.new_files())
        print(f"\nbatch of {pages} pages: {saved} saved, {took / pages:.2f} s a page, resident {early:.0f} MB after "
              f"{pages // 10} pages, {resident_mb(pid):.0f} MB at the end")
