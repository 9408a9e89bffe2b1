#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""ofdrender.py FILE.ofd [--strict] [--dpi N] [--out PREFIX]: draws the pages of an OFD document as PREFIX-001.png, ...

An own small reader for tests: it takes the document apart as strict readers do, keeps boxes in millimetres, and
draws pictures and text where they say. What such readers would refuse or lose is listed in `problems`; without
--out these are printed, and the text of each page. --strict also wants well-formed XML and IDs that are unique.
"""
import argparse
import io
import posixpath
import re
import sys
import xml.etree.ElementTree as ElementTree
import zipfile
from dataclasses import dataclass, field

from PIL import Image, ImageDraw, ImageFont

OFD = "{http://www.ofdspec.org/2016}"
FONT = "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc"
MM_PER_INCH = 25.4


@dataclass
class Picture:
    boundary: list  # left, top, width, height in millimetres
    matrix: list    # a b c d e f: the unit square in millimetres inside the boundary
    data: bytes
    name: str


@dataclass
class Text:
    boundary: list
    size: float     # millimetres
    colour: tuple
    characters: list = field(default_factory=list)  # (left, baseline, character), millimetres on the page

    @property
    def text(self):
        return "".join(character for _, _, character in self.characters)


@dataclass
class Page:
    size: tuple     # width, height in millimetres
    objects: list = field(default_factory=list)

    @property
    def pictures(self):
        return [item for item in self.objects if isinstance(item, Picture)]

    @property
    def texts(self):
        return [item for item in self.objects if isinstance(item, Text)]


def numbers(text):
    return [float(word) for word in text.split()]


def advances(text):
    """The values of DeltaX; "g N V" stands for N times V."""
    words, values = text.split(), []
    while words:
        if words[0] == "g":
            values += [float(words[2])] * int(words[1])
            del words[:3]
        else:
            values.append(float(words.pop(0)))
    return values


class OfdDocument:
    """`strict`: XML must be well-formed and IDs unique; otherwise a bare "&" is taken as it stands."""

    def __init__(self, path, strict=True):
        self.strict = strict
        self.problems = []
        self.zip = zipfile.ZipFile(path)
        self.names = self.zip.namelist()
        self._check_names()
        info = self.root("OFD.xml").find(f"{OFD}DocBody/{OFD}DocInfo")
        self.info = {child.tag[len(OFD):]: child.text for child in info}
        place = self.root("OFD.xml").findtext(f"{OFD}DocBody/{OFD}DocRoot")
        document = self.root(place)
        self.max_id = int(document.findtext(f"{OFD}CommonData/{OFD}MaxUnitID"))
        self.ids = []
        self.area = self._area(document.find(f"{OFD}CommonData/{OFD}PageArea"))
        self.media, self.fonts = {}, set()
        for res in document.findall(f"{OFD}CommonData/{OFD}DocumentRes"):
            self._read_resources(self.resolve(place, res.text))
        self.pages = [self._page(self.resolve(place, page.get("BaseLoc")), page)
                      for page in document.iter(f"{OFD}Page")]
        if strict and (len(set(self.ids)) != len(self.ids) or max(self.ids) > self.max_id):
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
        text = self.zip.read(name).decode("utf-8")
        if not self.strict:
            text = re.sub(r"&(?!(?:amp|lt|gt|quot|apos|#\d+|#x[0-9a-fA-F]+);)", "&amp;", text)
        return ElementTree.fromstring(text)

    @staticmethod
    def _area(element):
        left, top, width, height = numbers(element.findtext(f"{OFD}PhysicalBox"))
        assert left == top == 0 and width > 0 and height > 0
        return width, height

    def _read_resources(self, name):
        res = self.root(name)
        base = posixpath.join(posixpath.dirname(name), res.get("BaseLoc"), "x")
        self.fonts |= {font.get("ID") for font in res.iter(f"{OFD}Font")}
        for medium in res.iter(f"{OFD}MultiMedia"):
            self.ids.append(int(medium.get("ID")))
            self.media[medium.get("ID")] = self.resolve(base, medium.findtext(f"{OFD}MediaFile"))

    def _page(self, name, entry):
        content = self.root(name)
        area = content.find(f"{OFD}Area")
        page = Page(self.area if area is None else self._area(area))
        self.ids.append(int(entry.get("ID")))
        for layer in content.iter(f"{OFD}Layer"):
            self.ids.append(int(layer.get("ID")))
            for element in layer:
                self.ids.append(int(element.get("ID")))
                if element.tag == f"{OFD}ImageObject":
                    page.objects.append(self._picture(name, element))
                elif element.tag == f"{OFD}TextObject":
                    page.objects.append(self._text(name, element))
        return page

    def _picture(self, part, element):
        name = self.media.get(element.get("ResourceID"))
        if name is None:
            self.problems.append(f"{part}: unknown resource {element.get('ResourceID')}")
        return Picture(numbers(element.get("Boundary")), numbers(element.get("CTM", "1 0 0 1 0 0")),
                       self.zip.read(name) if name in self.names else b"", name)

    def _text(self, part, element):
        boundary = numbers(element.get("Boundary"))
        colour = element.find(f"{OFD}FillColor")
        text = Text(boundary, float(element.get("Size")),
                    tuple(int(v) for v in numbers(colour.get("Value"))) if colour is not None else (0, 0, 0))
        if element.get("Font") not in self.fonts:
            self.problems.append(f"{part}: unknown font {element.get('Font')}")
        for code in element.findall(f"{OFD}TextCode"):
            characters = code.text or ""
            steps = advances(code.get("DeltaX", ""))
            if len(steps) != max(0, len(characters) - 1):
                self.problems.append(f"{part}: {len(characters)} characters have {len(steps)} advances")
            x = boundary[0] + float(code.get("X"))
            for i, character in enumerate(characters):
                text.characters.append((x, boundary[1] + float(code.get("Y")), character))
                x += steps[i] if i < len(steps) else 0
        return text

    def render(self, index, dpi):
        """A page as an RGB picture on white."""
        page, scale = self.pages[index], dpi / MM_PER_INCH
        paper = Image.new("RGB", tuple(max(1, round(side * scale)) for side in page.size), "white")
        for item in page.objects:
            if isinstance(item, Picture):
                self._draw_picture(paper, item, scale)
            else:
                self._draw_text(paper, item, scale)
        return paper

    @staticmethod
    def _draw_picture(paper, item, scale):
        picture = Image.open(io.BytesIO(item.data)).convert("RGB")
        a, b, c, d, e, f = item.matrix
        assert b == c == 0 and a > 0 and d > 0, "turned pictures are not drawn"
        left, top, width, height = item.boundary
        size = tuple(max(1, round(side * scale)) for side in (a, d))
        drawn = picture.resize(size, Image.Resampling.BOX)
        clip = (0, 0, round((width - e) * scale), round((height - f) * scale))
        drawn = drawn.crop((0, 0, min(size[0], clip[2]), min(size[1], clip[3])))
        paper.paste(drawn, (round((left + e) * scale), round((top + f) * scale)))

    @staticmethod
    def _draw_text(paper, item, scale):
        font = ImageFont.truetype(FONT, max(1, round(item.size * scale)))
        draw = ImageDraw.Draw(paper)
        for left, baseline, character in item.characters:
            draw.text((left * scale, baseline * scale), character, font=font, fill=item.colour, anchor="ls")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("file")
    parser.add_argument("--dpi", type=float, default=100)
    parser.add_argument("--out")
    parser.add_argument("--strict", action="store_true")
    options = parser.parse_args()
    document = OfdDocument(options.file, options.strict)
    for number, page in enumerate(document.pages):
        if options.out:
            document.render(number, options.dpi).save(f"{options.out}-{number + 1:03}.png")
        else:
            print(f"page {number + 1}: {page.size[0]:g} x {page.size[1]:g} mm, {len(page.pictures)} pictures")
            print("".join(f"{text.text}\n" for text in page.texts), end="")
    for problem in document.problems:
        print(f"problem: {problem}", file=sys.stderr)
    return 1 if document.problems else 0


if __name__ == "__main__":
    sys.exit(main())
