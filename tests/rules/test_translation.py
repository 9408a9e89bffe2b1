# SPDX-License-Identifier: GPL-3.0-or-later
"""The English translation is complete and in step with the sources, and no shown text goes past it."""
import os
import re
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

TREE = os.path.abspath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
FOLDERS = ["src", "companions/pdfreader"]
TRANSLATION = "src/language/qwd200_en.ts"
CHINESE = re.compile("[\u3001-\u303f\u3400-\u9fff\uff00-\uffef]")
# Chinese that is no text of the window's: stored data, names that the device, the fonts and the recogniser
# know, what is drawn from recognised characters, log lines.
DATA = {
    "src/app/widget_templates.cpp": {"载入模板1"},
    "src/config/autostart.cpp": None,
    "src/config/settingtables.cpp": {"扫描并用指定的应用软件打开图像。", "正面旋转0°", "反面旋转0°"},
    "src/device/scanoptions.cpp": None,
    "src/forms/scanpagelogic.cpp": {"自定义"},
    "src/ocr/textline.cpp": {"。"},
    "src/ocr/wordelements.cpp": {"宋体"},
    "src/pdf/ofdpackage.cpp": None,
    "src/pdf/pdfpanel_documents.cpp": {"now is 可搜索OFD"},
    "src/pdf/textlines.cpp": {"gjpqy,;()[]{}@$|Q，；（）【】《》"},
}
TOKEN = re.compile(r'//[^\n]*|/\*.*?\*/|R"(\w*)\((?P<raw>.*?)\)\1"|"(?P<text>(?:\\.|[^"\\\n])*)"|\'(?:\\.|[^\'\\])+\'|(?P<space>\s+)|.',
                   re.DOTALL)


def messages(path):
    """(context, source, comment) -> (translation, its type)"""
    found = {}
    for context in ElementTree.parse(path).getroot().iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            key = (context.findtext("name"), message.findtext("source"), message.findtext("comment") or "")
            found[key] = (translation.text or "", translation.get("type"))
    return found


def literals(source):
    """The string literals of a C++ source, neighbours joined as the compiler does."""
    joined = []
    for token in TOKEN.finditer(source):
        text = token["text"] if token["raw"] is None else token["raw"]
        if text is not None:
            joined.append(text)
        elif joined and token["space"] is None and not token[0].startswith(("//", "/*")):
            yield "".join(joined).replace(r"\n", "\n").replace(r"\"", '"').replace(r"\\", "\\")
            joined = []


def mnemonics(text):
    return [letter.upper() for letter in re.findall("&(.)", text)]


class Translation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.kept = messages(os.path.join(TREE, TRANSLATION))
        with tempfile.TemporaryDirectory() as folder:
            fresh = os.path.join(folder, "fresh.ts")
            subprocess.run(["lupdate", "-silent", "-no-obsolete", *FOLDERS, "-ts", fresh], cwd=TREE, check=True,
                           stdout=subprocess.DEVNULL)
            cls.wanted = messages(fresh)

    def test_in_step_with_the_sources(self):
        advice = "run: lupdate -no-obsolete -locations none -disable-heuristic similartext " + " ".join(FOLDERS) + " -ts " + TRANSLATION
        self.assertGreater(len(self.wanted), 900)
        self.assertEqual(sorted(set(self.wanted) - set(self.kept)), [], advice)
        self.assertEqual(sorted(set(self.kept) - set(self.wanted)), [], advice)

    def test_every_text_is_translated(self):
        for (context, source, _), (translation, kind) in self.kept.items():
            with self.subTest(context=context, source=source):
                self.assertIsNone(kind)  # unfinished, obsolete, vanished
                self.assertTrue(translation)
                self.assertIsNone(re.search("[“”…]", translation) or CHINESE.search(translation))  # wide in a Chinese font
                self.assertEqual(set(re.findall(r"%\d", translation)), set(re.findall(r"%\d", source)))
                self.assertEqual(mnemonics(translation), mnemonics(source))  # unique in Chinese, so in English

    def test_no_shown_text_goes_past_the_translation(self):
        known = {source for _, source, _ in self.kept}
        for top in FOLDERS:
            for folder, _, names in os.walk(os.path.join(TREE, top)):
                for name in names:
                    if name.endswith((".cpp", ".h")):
                        self.check_source(os.path.join(folder, name), known)

    def check_source(self, path, known):
        name = os.path.relpath(path, TREE)
        data = DATA.get(name, set())
        with open(path, encoding="utf-8") as file:
            for text in literals(file.read()):
                if data is not None and CHINESE.search(text) and text not in data:
                    self.assertTrue(text in known, f"{name}: a Chinese text that lupdate does not see: {text!r}")


if __name__ == "__main__":
    unittest.main()
