#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""run_bench.py [PART...]: what our pages cost beside the tools that people chain, as ratios of one run. It fails nothing.

Parts: chain (300 and 600 dpi), steps, orient, throughput, memory, documents (PDF and OFD, of pictures and of text),
recognition (page by page), ocr (plain text), and program (start-up, long batch; needs Xvfb). Without a part: all but
program. Needs a complete build and the target sample-sheets.
"""
import argparse
import os
import sys
import tempfile

sys.dont_write_bytecode = True
TREE = os.path.abspath(os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))

import chains  # noqa: E402
import documents  # noqa: E402
import measure  # noqa: E402
import pages as page_files  # noqa: E402
import steps  # noqa: E402
from tools import Tools  # noqa: E402

PARTS = ("chain", "steps", "orient", "throughput", "memory", "documents", "recognition", "ocr", "program")


def measured(options, folder):
    if not measure.there("convert"):
        sys.exit("ImageMagick is not installed: it makes the pages, and is what most people use")
    kit, fine = Tools(options.build, folder, 300), Tools(options.build, folder, 600)
    for tool in kit.missing():
        print(f"{tool} is not installed: its column stays empty")
    pages = page_files.sheets(options.build, folder)
    if options.pages:
        pages = page_files.from_folder(options.pages, options.limit)
    few = pages[::max(1, len(pages) // 3)][:3]
    parts = {
        "chain": lambda: (chains.chain(kit, pages, options.repeat, "300 dpi"),
                          chains.chain(fine, page_files.at_600_dpi(few, folder), options.repeat, "600 dpi")),
        "steps": lambda: steps.compare(kit, few, options.repeat),
        "orient": lambda: chains.orient(kit, pages, options.repeat),
        "throughput": lambda: chains.throughput(kit, pages, options.repeat),
        "memory": lambda: chains.memory(kit, pages),
        "documents": lambda: documents.compare(options.build, folder, few, options.repeat),
        "recognition": lambda: documents.recognition(options.build, few, options.repeat),
        "ocr": lambda: documents.plain_text(options.build, options.pages or os.path.join(options.build, "samples"), len(few)),
    }
    for part in options.parts:
        if part in parts:
            parts[part]()
            sys.stdout.flush()


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("parts", nargs="*", metavar="PART")
    parser.add_argument("--build", default=os.path.join(TREE, "build"))
    parser.add_argument("--pages", help="a folder with PNM scans at 300 dpi instead of the drawn sheets")
    parser.add_argument("--limit", type=int, default=16, help="so many pages of that folder")
    parser.add_argument("--repeat", type=int, default=2, help="the cheapest of so many runs counts")
    parser.add_argument("--batch", type=int, default=100, help="pages of the program's long batch")
    options = parser.parse_args()
    options.parts = options.parts or [part for part in PARTS if part != "program"]
    if not set(options.parts) <= set(PARTS):
        parser.error(f"parts are {', '.join(PARTS)}")
    with tempfile.TemporaryDirectory() as folder:
        measured(options, folder)
    if "program" in options.parts:
        import program
        program.start_up(options.build, 5)
        program.long_batch(options.build, options.batch)


if __name__ == "__main__":
    main()
