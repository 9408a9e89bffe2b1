# SPDX-License-Identifier: GPL-3.0-or-later
"""The demo's command line."""
import argparse

from settings import split_assignment

FUNCTIONS = {"scan": "0", "ocr": "1", "pdf": "2"}  # places in the scan page's function list


def _assignment(text):
    try:
        return split_assignment(text)
    except ValueError as error:
        raise argparse.ArgumentTypeError(str(error)) from error


def _seconds(text):
    seconds = float(text)
    if not 0 < seconds < 1e6:
        raise argparse.ArgumentTypeError("a number of seconds above 0 is wanted")
    return seconds


def parse(arguments):
    parser = argparse.ArgumentParser(
        prog="./run.sh", formatter_class=argparse.RawDescriptionHelpFormatter, allow_abbrev=False,
        description="Scans a stack of sheets with the virtual scanner on a display of its own and prints\n"
                    "what was saved. Exit status: 0 something was saved, 3 fault or nothing saved, 4 time-out.")
    parser.add_argument("--demo", action="store_true", help="run the demo")
    parser.add_argument("--feeder", metavar="DIR", help="pictures to scan (default: the sample sheets)")
    parser.add_argument("--function", choices=FUNCTIONS, default="scan", help="the scan page's function")
    parser.add_argument("--set", metavar="GROUP/KEY=VALUE", action="append", default=[], type=_assignment,
                        help="put a key into QWD200.conf before the start")
    parser.add_argument("--path-set", metavar="GROUP/KEY=VALUE", action="append", default=[], type=_assignment,
                        help="put a key into QWD200_path.conf before the start")
    start = parser.add_mutually_exclusive_group()
    start.add_argument("--key", metavar="N", type=int, choices=range(1, 10),
                       help="press this key of the scanner (2 for the PDF function, else 1); key 2 is the file page's")
    start.add_argument("--click", action="store_true", help="start with the window's scan button instead")
    parser.add_argument("--out", metavar="DIR", help="save folder (default: below the build folder)")
    parser.add_argument("--timeout", metavar="S", type=_seconds, default=300.0, help="seconds for the batch (300)")
    tests = parser.add_argument_group("for tests")
    tests.add_argument("--build", metavar="DIR", default="build", help="the build folder to take the programs from")
    tests.add_argument("--vscan", metavar="VERB", action="append", default=[],
                       help='tell the virtual scanner something before the start, for example "jam-at 2"')
    options = parser.parse_args(arguments)
    if options.key is None:
        options.key = 2 if options.function == "pdf" else 1
    return options
