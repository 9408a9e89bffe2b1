# SPDX-License-Identifier: GPL-3.0-or-later
"""Each operation side by side with ImageMagick, Leptonica and unpaper."""
import measure
import tools


def step_rows(kit, pages, repeat):
    plain = {}
    for name, (ours, magick, leptonica) in tools.STEPS.items():
        batch = measure.cheapest(kit.ours([*ours, "--type", "bmp"], pages), repeat=repeat).cpu
        cost = {"ours": 1000 * batch / len(pages)}
        if magick is not None:
            cost["magick"] = measure.per_page(lambda page: kit.magick(magick, page), pages, repeat)
        if leptonica:
            batch = measure.cheapest(kit.leptonica(leptonica, pages), repeat=repeat).cpu
            cost["leptonica"] = 1000 * batch / len(pages)
        if name == "read and write":
            plain = cost
        if name == "deskew" and measure.there("unpaper"):
            cost["unpaper"] = measure.per_page(lambda page: kit.unpaper(tools.UNPAPER_DESKEW_ONLY, page), pages, 1)
        yield name, cost, {tool: max(cost[tool] - plain.get(tool, 0), 0.1) for tool in cost}


def compare(kit, pages, repeat):
    rows = []
    for name, cost, net in step_rows(kit, pages, repeat):
        first = name == "read and write"
        shown = cost if first else net
        rows.append([name, *(shown.get(tool) for tool in ("ours", "magick", "leptonica", "unpaper")),
                     *(round(shown[tool] / shown["ours"], 1) if tool in shown else None for tool in ("magick", "leptonica"))])
    measure.table(f"CPU ms a page and step, {len(pages)} pages, one core; reading and writing (BMP) taken off, except for unpaper",
                  ["step", "ours", "ImageMagick", "Leptonica", "unpaper", "IM / ours", "Lept / ours"], rows)
