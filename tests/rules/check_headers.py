#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""check_headers.py BUILD_DIR SOURCE_DIR: every header below src/ compiles by itself, with the options of its room."""
import concurrent.futures
import glob
import json
import os
import shlex
import subprocess
import sys


def room_options(build, source):
    """Room -> (compiler, options) taken from one of its source files."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as commands:
        entries = json.load(commands)
    options = {}
    for entry in entries:
        name = os.path.relpath(entry["file"], os.path.join(source, "src"))
        if name.startswith("..") or not name.endswith(".cpp"):
            continue
        words = shlex.split(entry["command"])
        while "ccache" in os.path.basename(words[0]):
            words.pop(0)
        kept = [word for word in words[1:] if word.startswith(("-I", "-D", "-f", "-std", "-W"))]
        for flag, value in zip(words, words[1:]):
            if flag == "-isystem":
                kept += [flag, value]
        options[name.split(os.sep)[0]] = (words[0], kept)
    return options


def compile_alone(header, compiler, options):
    result = subprocess.run([compiler, *options, "-fsyntax-only", "-include", header, "-x", "c++", "/dev/null"],
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    return result.returncode == 0, result.stdout


def main():
    build, source = sys.argv[1:]
    options = room_options(build, source)
    headers = sorted(glob.glob(os.path.join(source, "src", "*", "*.h")))
    assert headers, "no headers found"
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = {header: pool.submit(compile_alone, header, *options[header.split(os.sep)[-2]]) for header in headers}
    for header, job in jobs.items():
        good, output = job.result()
        if not good:
            failed += 1
            print(f"{header} does not compile alone:\n{output}")
    print(f"{len(headers)} headers, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
