#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""bench_documents.py [--build DIR] [--pages N]: JPEG pages, A4 at 300 dpi, into a PDF and an OFD, beside img2pdf.

Milliseconds a page (the best of three, processor time) and the peak of resident memory, all in one run; "nothing" is
what loading the libraries costs.
"""
import argparse
import multiprocessing
import os
import subprocess
import sys
import tempfile

TREE = os.path.abspath(os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))


def cost(command):
    """(processor seconds, peak MB) of a command; its start-up is part of both."""
    process = subprocess.Popen(command)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"{command[0]} failed")
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def draw_pages(folder):
    """Pages with paper noise and ink, so that they are as large as scans are."""
    from PIL import Image, ImageDraw
    for number in range(4):
        page = Image.effect_noise((2480, 3508), 12).convert("RGB")
        draw = ImageDraw.Draw(page)
        for line in range(200, 3300, 90):
            draw.text((200, line), f"{number} " + "page of the bench " * 20, fill=(20, 20, 60))
        page.save(os.path.join(folder, f"page-{number}.jpg"), quality=85, dpi=(300, 300))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", default=os.path.join(TREE, "build"))
    parser.add_argument("--pages", type=int, default=100)
    options = parser.parse_args()
    program = os.path.join(options.build, "bench", "bench_documents")
    with tempfile.TemporaryDirectory() as folder:
        drawing = multiprocessing.Process(target=draw_pages, args=(folder,))  # a child's peak starts at its parent's size
        drawing.start()
        drawing.join()
        pages = [os.path.join(folder, f"page-{i % 4}.jpg") for i in range(options.pages)]
        rows = {"nothing": [program, "pdf", folder], "PDF": [program, "pdf", folder, *pages],
                "OFD": [program, "ofd", folder, *pages],
                "img2pdf": ["img2pdf", *pages, "-o", os.path.join(folder, "img2pdf.pdf")]}
        print(f"{options.pages} JPEG pages of {os.path.getsize(pages[0]) / 1e6:.1f} MB\n{'':10} {'ms a page':>10} {'peak MB':>8}")
        for name, command in rows.items():
            runs = [cost(command) for _ in range(3)]
            print(f"{name:10} {1000 * min(run[0] for run in runs) / options.pages:10.1f} {max(run[1] for run in runs):8.0f}")


if __name__ == "__main__":
    main()
