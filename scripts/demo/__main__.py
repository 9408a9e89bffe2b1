# SPDX-License-Identifier: GPL-3.0-or-later
"""The main job without a display: scan a stack, show what was saved. Called by run.sh --demo."""
import os
import signal
import sys

sys.dont_write_bytecode = True

from display import DisplayError  # noqa: E402
from options import FUNCTIONS, parse  # noqa: E402
from session import Session, SessionError, TimedOut  # noqa: E402

EXIT_SAVED, EXIT_BAD_ARGUMENTS, EXIT_FAULT, EXIT_TIMEOUT = 0, 2, 3, 4


def report(session, seconds):
    """Prints the result lines and returns the files that were saved."""
    files = session.new_files()
    for path in files:
        print(f"saved: {path}")
    print(f"screenshot: {session.screenshot()}")
    print(f"status: {session.log.status}")
    print(f"seconds: {seconds:.1f}", flush=True)
    return files


def run(session, options):
    session.prepare()
    session.start_program()
    for verb in options.vscan:
        session.vscan(*verb.split())
    if options.click:
        session.press_scan()
    else:
        session.press_key(options.key)
    try:
        seconds = session.wait_for_end(options.timeout)
    except TimedOut:
        report(session, options.timeout)
        raise
    files = report(session, seconds)
    for text in session.log.texts("fault"):
        print(f"fault: {text}", file=sys.stderr)
    return EXIT_FAULT if session.log.texts("fault") or not files else EXIT_SAVED


def both_pages(assignments):
    """Settings of the PDF function hold for both pages, one of which the key starts; what is given last wins."""
    doubled = []
    for group, key, value in assignments:
        page, _, rest = group.partition("_")
        if rest.startswith("PDF") and page in ("Scan", "File"):
            doubled.append(("File_" if page == "Scan" else "Scan_", rest, key, value))
    return [(page + rest, key, value) for page, rest, key, value in doubled] + assignments


def main():
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(128 + signal.SIGTERM))
    options = parse(sys.argv[1:])
    if options.feeder and not os.path.isdir(options.feeder):
        print(f"no such folder: {options.feeder}", file=sys.stderr)
        return EXIT_BAD_ARGUMENTS
    keys = [("General", "ScanModel", FUNCTIONS[options.function])] + both_pages(options.set)
    if options.key == 2:
        keys.insert(0, ("General", "modeBtn", "1"))  # this key starts the file page's function
    try:
        with Session(options.build, options.feeder, options.out, keys, options.path_set) as session:
            try:
                return run(session, options)
            except (SessionError, DisplayError) as error:
                print(error, file=sys.stderr)
                return EXIT_FAULT
            except TimedOut as error:
                print(f"time-out: {error}; see {session.log_path}", file=sys.stderr)
                return EXIT_TIMEOUT
    except KeyboardInterrupt:
        return 128 + signal.SIGINT


if __name__ == "__main__":
    sys.exit(main())
