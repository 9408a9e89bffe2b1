# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs commands pinned to cores and tells what they cost.

CPU seconds are compared, not wall time: pinned to one core they are the same on a quiet machine, and on a busy one the
figures stay comparable. Each command runs `repeat` times and the cheapest run counts.
"""
import os
import shutil
import subprocess
import time


class Cost:
    """Of one command: CPU seconds, wall seconds, peak resident memory in MB."""

    def __init__(self, cpu, wall, peak):
        self.cpu, self.wall, self.peak = cpu, wall, peak


def run(command, cores="0"):
    environment = dict(os.environ, MAGICK_THREAD_LIMIT="1", OMP_THREAD_LIMIT="1")
    begin = time.monotonic()
    with subprocess.Popen(["taskset", "-c", cores, *command], env=environment, stdin=subprocess.DEVNULL,
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE) as process:
        messages = process.stderr.read()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    wall = time.monotonic() - begin
    if process.returncode != 0:
        raise RuntimeError(f"{' '.join(command[:12])} ...: status {process.returncode}\n{messages.decode(errors='replace')}")
    return Cost(usage.ru_utime + usage.ru_stime, wall, usage.ru_maxrss / 1024)


def cheapest(command, cores="0", repeat=2):
    costs = [run(command, cores) for _ in range(repeat)]
    return Cost(min(c.cpu for c in costs), min(c.wall for c in costs), max(c.peak for c in costs))


def per_page(make_command, pages, repeat=2):
    """CPU milliseconds a page of a tool that is started for each page."""
    return 1000 * sum(cheapest(make_command(page), repeat=repeat).cpu for page in pages) / len(pages)


def there(tool):
    return shutil.which(tool) is not None


def table(title, head, rows):
    """Prints columns; numbers to the right, None as "-"."""
    def text(cell):
        return "-" if cell is None else f"{cell:.1f}" if isinstance(cell, float) else str(cell)
    lines = [[text(cell) for cell in row] for row in [head, *rows]]
    widths = [max(len(line[i]) for line in lines) for i in range(len(head))]
    print(f"\n{title}")
    for line in lines:
        print("  " + "  ".join(cell.ljust(widths[0]) if i == 0 else cell.rjust(widths[i]) for i, cell in enumerate(line)))
