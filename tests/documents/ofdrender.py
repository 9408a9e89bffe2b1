#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""ofdrender.py FILE.ofd DPI PREFIX: draws the pages of an OFD document of pictures as PREFIX-001.png, ...

An own small reader for tests: it takes the document apart as strict readers do, keeps boxes in millimetres, and
draws pictures where they say. What such readers would refuse or lose is told on the error stream.
"""
import io
import posixpath
import sys
import xml.etree.ElementTree as ElementTree
import zipfile

from PIL import Image

OFD = "{http://www.ofdspec.org/2016}"
MM_PER_INCH = 25.4


def numbers(text):
    return [float(word) for word in text.split()]


class OfdDocument:
    def __init__(self, path, scale):
        self.scale = scale  # pixels per millimetre
        self.problems = []
        self.zip = zipfile.ZipFile(path)
        self.names = self.zip.namelist()
        self._check_names()
        place = self.root("OFD.xml").findtext(f"{OFD}DocBody/{OFD}DocRoot")
        document = self.root(place)
        self.max_id = int(document.findtext(f"{OFD}CommonData/{OFD}MaxUnitID"))
        self.ids = []
        self.area = self._area(document.find(f"{OFD}CommonData/{OFD}PageArea"))
        self.media = {}
        for res in document.findall(f"{OFD}CommonData/{OFD}DocumentRes"):
            self._read_resources(self.resolve(place, res.text))
        self.pages = [self._page(self.resolve(place, page.get("BaseLoc")), page)
                      for page in document.iter(f"{OFD}Page")]
        if len(set(self.ids)) != len(self.ids) or max(self.ids) > self.max_id:
            self.problems.append("IDs repeat or exceed MaxUnitID")

    def _check_names(self):
        for name in self.names:
            if name.startswith("/") or "//" in name or "\\" in name or ".." in name.split("/"):
                self.problems.append(f"entry name {name}")
        if len(set(self.names)) != len(self.names):
            self.problems.append("entry names repeat")
        bad = self.zip.testzip()
        if bad:
            self.problems.append(f"wrong check sum of {bad}")

    def resolve(self, part, place):
        if place.startswith("/") or "//" in place:
            self.problems.append(f"{part}: path {place} is not relative")
        path = posixpath.normpath(posixpath.join(posixpath.dirname(part), place))
        if path not in self.names:
            self.problems.append(f"{part}: {path} is missing")
        return path

    def root(self, name):
        return ElementTree.fromstring(self.zip.read(name))

    @staticmethod
    def _area(element):
        left, top, width, height = numbers(element.findtext(f"{OFD}PhysicalBox"))
        assert left == top == 0 and width > 0 and height > 0
        return width, height

    def _read_resources(self, name):
        res = self.root(name)
        base = posixpath.join(posixpath.dirname(name), res.get("BaseLoc"), "x")
        for medium in res.iter(f"{OFD}MultiMedia"):
            self.ids.append(int(medium.get("ID")))
            self.media[medium.get("ID")] = self.resolve(base, medium.findtext(f"{OFD}MediaFile"))

    def _page(self, name, entry):
        content = self.root(name)
        area = content.find(f"{OFD}Area")
        size = self.area if area is None else self._area(area)
        page = Image.new("RGB", tuple(max(1, round(side * self.scale)) for side in size), "white")
        self.ids.append(int(entry.get("ID")))
        for layer in content.iter(f"{OFD}Layer"):
            self.ids.append(int(layer.get("ID")))
            for element in layer:
                self.ids.append(int(element.get("ID")))
                if element.tag == f"{OFD}ImageObject":
                    self._draw(page, name, element)
        return page

    def _draw(self, page, part, element):
        name = self.media.get(element.get("ResourceID"))
        if name is None:
            self.problems.append(f"{part}: unknown resource {element.get('ResourceID')}")
            return
        left, top, width, height = numbers(element.get("Boundary"))
        a, b, c, d, e, f = numbers(element.get("CTM", "1 0 0 1 0 0"))  # the unit square inside the boundary
        assert b == c == 0 and a > 0 and d > 0, "turned pictures are not drawn"
        size = tuple(max(1, round(side * self.scale)) for side in (a, d))
        picture = Image.open(io.BytesIO(self.zip.read(name))).convert("RGB").resize(size, Image.Resampling.BOX)
        picture = picture.crop((0, 0, min(size[0], round((width - e) * self.scale)),
                                min(size[1], round((height - f) * self.scale))))
        page.paste(picture, (round((left + e) * self.scale), round((top + f) * self.scale)))


def main():
    path, dpi, prefix = sys.argv[1:]
    document = OfdDocument(path, float(dpi) / MM_PER_INCH)
    for number, page in enumerate(document.pages, 1):
        page.save(f"{prefix}-{number:03}.png")
    for problem in document.problems:
        print(f"problem: {problem}", file=sys.stderr)
    return 1 if document.problems else 0


if __name__ == "__main__":
    sys.exit(main())
