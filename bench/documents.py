# SPDX-License-Identifier: GPL-3.0-or-later
"""Documents beside the tools that make them: page pictures beside img2pdf, recognised text beside tesseract's PDF."""
import multiprocessing
import os
import subprocess
import sys

import measure

HERE = os.path.dirname(os.path.abspath(__file__))


def draw_pages(folder):
    """Pages with paper noise and ink, so that they are as large as scans are."""
    from PIL import Image, ImageDraw
    for number in range(4):
        page = Image.effect_noise((2480, 3508), 12).convert("RGB")
        draw = ImageDraw.Draw(page)
        for line in range(200, 3300, 90):
            draw.text((200, line), f"{number} " + "page of the bench " * 20, fill=(20, 20, 60))
        page.save(os.path.join(folder, f"page-{number}.jpg"), quality=85, dpi=(300, 300))


def pictures(program, folder, count):
    drawing = multiprocessing.Process(target=draw_pages, args=(folder,))  # a child's peak starts at its parent's size
    drawing.start()
    drawing.join()
    pages = [os.path.join(folder, f"page-{i % 4}.jpg") for i in range(count)]
    commands = {"PDF": [program, "pdf", folder, *pages], "OFD": [program, "ofd", folder, *pages],
                "loading the libraries": [program, "pdf", folder]}
    if measure.there("img2pdf"):
        commands["img2pdf"] = ["img2pdf", *pages, "-o", os.path.join(folder, "img2pdf.pdf")]
    rows = []
    for name, command in commands.items():
        cost = measure.cheapest(command, repeat=3)
        rows.append([name, 1000 * cost.cpu / count, 1000 * cost.wall / count, cost.peak])
    measure.table(f"{count} JPEG pages of {os.path.getsize(pages[0]) / 1e6:.1f} MB, A4 at 300 dpi, one core",
                  ["into", "CPU ms a page", "wall ms a page", "peak MB"], rows)


def prepare_root(build, folder):
    """The documents' writer finds its temporary folders and the packer below an install root."""
    root = os.path.join(folder, "root")
    for name in ("tempfiles", "tempTxtFiles"):
        os.makedirs(os.path.join(root, name))
    os.symlink(os.path.join(build, "companions", "zip-ofd", "zip-ofd"), os.path.join(root, "zip-ofd"))
    os.environ.update(QWD200_ROOT=root + "/", QT_QPA_PLATFORM="offscreen")


def searchable(build, folder, pages, repeat):
    """All pages in one document, on two cores; the rival gets the same list, so that it loads its model once as well."""
    if not measure.there("tesseract"):
        return
    program = os.path.join(build, "bench", "bench_searchable")
    listed = os.path.join(folder, "pages.txt")
    with open(listed, "w", encoding="utf-8") as file:
        file.write("\n".join(pages) + "\n")
    commands = {"tesseract ... pdf": ["tesseract", listed, os.path.join(folder, "rival"), "-l", "chi_sim", "--psm", "3", "pdf"],
                "searchable PDF": [program, "pdf", folder, *pages],
                "searchable OFD": [program, "ofd", folder, *pages]}
    costs = {name: measure.cheapest(command, "0,1", repeat) for name, command in commands.items()}
    for name in ("searchable PDF", "searchable OFD"):
        said = subprocess.run(commands[name], check=False, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True).stdout.strip()
        print(f"{name}: {said}")
    rival = costs["tesseract ... pdf"]
    rows = [[name, *(f"{value:.2f}" for value in (cost.wall / len(pages), cost.cpu / len(pages), cost.wall / rival.wall,
                                                  cost.cpu / rival.cpu)), cost.peak] for name, cost in costs.items()]
    measure.table(f"recognised text of {len(pages)} pages, two cores (children's own memory: part recognition)",
                  ["into", "wall s a page", "CPU s a page", "wall ratio", "CPU ratio", "peak MB"], rows)


def compare(build, folder, pages, repeat):
    prepare_root(build, folder)
    pictures(os.path.join(build, "bench", "bench_documents"), folder, 100)
    searchable(build, folder, pages[:4], repeat)


def recognition(build, pages, repeat):
    subprocess.run(["taskset", "-c", "0,1", os.path.join(build, "bench", "bench_recognition"), "--repeat", str(repeat),
                    *pages[:4]], check=False)


def plain_text(build, folder, limit):
    """Pages with truth/NAME.json beside them are judged as well."""
    subprocess.run([sys.executable, os.path.join(HERE, "bench_ocr.py"), "--max-pages", str(limit), "--ocrdoc",
                    os.path.join(build, "companions", "ocrdoc", "ocrdoc"), folder], check=False)
