# SPDX-License-Identifier: GPL-3.0-or-later
"""The usual chain - gamma 1.1, light/contrast 5,5, auto-crop, deskew, JPEG 85 - against the tools that people chain."""
import statistics

import measure
import tools


def chain(kit, pages, repeat, title):
    ours = measure.cheapest(kit.ours(tools.CHAIN, pages), repeat=repeat)
    each = 1000 * ours.cpu / len(pages)
    rows = [["ours", each, None, ours.peak]]
    rivals = [("ImageMagick", lambda page: kit.magick(tools.MAGICK_CHAIN, page, "jpg"))]
    if measure.there("unpaper"):
        rivals.append(("unpaper (all its filters, PNM)", lambda page: kit.unpaper([], page)))
    rivals.append(("Leptonica", lambda page: kit.leptonica("chain", [page])))
    for name, command in rivals:
        costs = [measure.cheapest(command(page), repeat=repeat) for page in pages]
        cpu = 1000 * sum(cost.cpu for cost in costs) / len(pages)
        rows.append([name, cpu, cpu / each, max(cost.peak for cost in costs)])
    measure.table(f"{title}: the chain, {len(pages)} pages, one core", ["tool", "CPU ms a page", "times ours", "peak MB"], rows)


def orient(kit, pages, repeat):
    """Page by page: the model is loaded for every page as it is in the program; the start of the process is taken off."""
    start = measure.cheapest(kit.start_up(), repeat=5).cpu
    steps = [*tools.CHAIN[:6], "--orient", *tools.CHAIN[6:]]
    costs = [measure.cheapest(kit.ours(steps, [page]), repeat=repeat) for page in pages]
    ms = [1000 * (cost.cpu - start) for cost in costs]
    rows = [["chain with --orient", statistics.median(ms), max(ms), max(cost.peak for cost in costs)]]
    if measure.there("tesseract"):
        rivals, refused = [], 0
        for page in pages:
            try:
                rivals.append(measure.run(kit.tesseract_orientation(page)))
            except RuntimeError:  # too little text for it, or no osd model
                refused += 1
        if rivals:
            ms = [1000 * cost.cpu for cost in rivals]
            rows.append([f"tesseract --psm 0 alone ({refused} refused)", statistics.median(ms), max(ms),
                         max(cost.peak for cost in rivals)])
    measure.table(f"orientation, {len(pages)} pages, one core, CPU ms", ["tool", "median", "worst page", "peak MB"], rows)


def throughput(kit, pages, repeat):
    rows = []
    many = pages * max(1, 24 // len(pages))
    for name, steps in (("chain", tools.CHAIN), ("chain with --orient", [*tools.CHAIN, "--orient"])):
        one = measure.cheapest(kit.ours(steps, many), "0", repeat)
        two = measure.cheapest(kit.ours(steps, many, "--jobs", "2"), "0,1", repeat)
        rows.append([name, 60 * len(many) / one.wall, 60 * len(many) / two.wall, 120 * len(many) / two.cpu, two.peak])
    measure.table(f"pages a minute, {len(many)} pages", ["work", "one core", "--jobs 2", "two idle cores (by CPU)", "peak MB"], rows)


def memory(kit, pages):
    rows = [[f"{count} pages", measure.run(kit.ours(tools.CHAIN, (pages * count)[:count])).peak] for count in (1, 20, 200)]
    measure.table("peak memory of the chain at 300 dpi", ["run", "MB"], rows)
