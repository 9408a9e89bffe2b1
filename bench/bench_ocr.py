#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""bench_ocr.py [--ocrdoc PROGRAM] [--blur PX] [--noise SIGMA] [--max-pages N] FOLDER...

Reads every page picture of the folders with ocrdoc and with the engine's own command (automatic segmentation, one
thread), page by page and alternating, and prints time and errors of both and their ratios. Where a folder has
truth/NAME.json with "lines" ([{"text": ...}, ...]), errors are edit distance over characters without white space
("lines" pages) or 1 - F1 of the characters (pages read in no single order). ocrdoc writes each "o" as a full stop,
so both texts and the truth are compared after that change."""
import argparse
import collections
import glob
import json
import os
import subprocess
import sys
import tempfile
import time
import unicodedata

import cv2
import numpy as np

FOLD = str.maketrans('，；：？！（）〔〕【】［］“”‘’—－–~、o', ',;:?!()()()()""\'\'---~,。')
KINDS = ('.ppm', '.pgm', '.pbm', '.png', '.jpg', '.tif', '.bmp')


def normal(text):
    return unicodedata.normalize('NFKC', ''.join(text.split())).translate(FOLD)


def distance(a, b):
    """Edit distance, a row of the table at a time."""
    if not a or not b:
        return max(len(a), len(b))
    codes = np.array([ord(c) for c in b])
    steps = np.arange(len(b) + 1)
    row = steps.copy()
    for i, c in enumerate(a, 1):
        new = np.empty_like(row)
        new[0] = i
        new[1:] = np.minimum(row[1:] + 1, row[:-1] + (codes != ord(c)))
        row = np.minimum.accumulate(new - steps) + steps
    return int(row[-1])


def bag_f1(want, got):
    common = sum((collections.Counter(want) & collections.Counter(got)).values())
    return 2 * common / max(1, len(want) + len(got))


def run(command):
    """Wall and CPU seconds of a command with all processes that it waited for."""
    start, before = time.time(), os.times()
    subprocess.run(command, check=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                   env=dict(os.environ, OMP_THREAD_LIMIT='1'))
    after = os.times()
    cpu = after.children_user + after.children_system - before.children_user - before.children_system
    return np.array([time.time() - start, cpu])


def degraded(page, folder, blur, noise):
    """The page itself, or a blurred and noisy copy."""
    if not blur and not noise:
        return page
    picture = cv2.imread(page, cv2.IMREAD_GRAYSCALE)
    if blur:
        picture = cv2.GaussianBlur(picture, (0, 0), blur)
    if noise:
        grain = np.random.default_rng(1).normal(0, noise, picture.shape)
        picture = np.clip(picture + grain, 0, 255).astype(np.uint8)
    copy = os.path.join(folder, 'page.pgm')
    cv2.imwrite(copy, picture)
    return copy


def read_text(path):
    if not os.path.exists(path):
        return ''
    with open(path, encoding='utf-8', errors='replace') as file:
        return normal(file.read())


def truth_of(page):
    name = os.path.splitext(os.path.basename(page))[0]
    path = os.path.join(os.path.dirname(page), 'truth', name + '.json')
    if not os.path.exists(path):
        return None, ''
    with open(path, encoding='utf-8') as file:
        truth = json.load(file)
    return normal(''.join(line['text'] for line in truth['lines'])), truth.get('what', 'lines')


def measure(page, args, folder):
    picture = degraded(page, folder, args.blur, args.noise)
    ours, engine = os.path.join(folder, 'ours.txt'), os.path.join(folder, 'engine')
    for old in (ours, engine + '.txt'):
        if os.path.exists(old):
            os.remove(old)
    times = [run([args.ocrdoc, '--txt', '--out', ours, picture]),
             run(['tesseract', picture, engine, '-l', 'chi_sim', '--psm', '3'])]
    return times, [read_text(ours), read_text(engine + '.txt')]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('folders', nargs='+')
    parser.add_argument('--ocrdoc', default='ocrdoc')
    parser.add_argument('--blur', type=float, default=0)
    parser.add_argument('--noise', type=float, default=0)
    parser.add_argument('--max-pages', type=int, default=10 ** 6)
    args = parser.parse_args()
    pages = [page for folder in args.folders for page in sorted(glob.glob(os.path.join(folder, '*')))
             if page.endswith(KINDS)][:args.max_pages]
    total, errors, chars, losses = np.zeros((2, 2)), np.zeros(2), 0, []
    print(f'{"page":28} {"what":12} {"wall":>11} {"CPU":>11}   errors (ours, engine)')
    with tempfile.TemporaryDirectory() as folder:
        for page in pages:
            times, texts = measure(page, args, folder)
            total += times
            want, what = truth_of(page)
            scores = ''
            if want and what.startswith('lines'):
                found = [distance(want, text) for text in texts]
                errors, chars = errors + found, chars + len(want)
                scores = '{:.4f} {:.4f}'.format(*(f / len(want) for f in found))
            elif want:
                found = [bag_f1(want, text) for text in texts]
                losses.append(found)
                scores = 'bag F1 {:.4f} {:.4f}'.format(*found)
            name = os.path.join(*page.split(os.sep)[-2:])
            print(f'{name:28} {what:12} ' + '{:5.2f} {:5.2f} {:5.2f} {:5.2f}   '.format(
                times[0][0], times[1][0], times[0][1], times[1][1]) + scores, flush=True)
    if not pages:
        sys.exit('no pages')
    print('wall ratio {:.3f}, CPU ratio {:.3f}'.format(*(total[0] / total[1])), end='')
    if chars:
        print(', errors of single columns {:.4f} against {:.4f}'.format(*(errors / chars)), end='')
    if losses:
        print(', bag F1 of the others {:.4f} against {:.4f}'.format(*np.mean(losses, axis=0)), end='')
    print()


if __name__ == '__main__':
    main()
