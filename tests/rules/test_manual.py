# SPDX-License-Identifier: GPL-3.0-or-later
"""The manual's chapter of faults has every text that reports one, and the manual names every control.

A text of the program reports a fault when it has one of the words FAULT or goes to one of the functions REPORTS; the
few others with such a word stand in NO_FAULTS. A control's text has its key in brackets, or stands in a form. What the commands print beside their usage is
not asked for: they are explained by their manual pages."""
import html
import re
import sys
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

TREE = Path(__file__).resolve().parents[2]
PROGRAMS = ("src", "companions/pdfreader")
LITERALS = re.compile(r'"(?:[^"\\\n]|\\.)*"(?:\s*"(?:[^"\\\n]|\\.)*")*')
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
CHINESE = re.compile(r"[\u4e00-\u9fff]")
FAULT = re.compile("无法|未能|未找到|找不到|不能|失败|不足|损坏|错误|断开|缺少|请检查|忙，|不是|无纸|为空|是空的|太长|过长|太大|过大|只读|"
                   "必须|不正确|异常|不存在|未识别|仅保留|未完成|被移走|已加密|不接受|不完整|没有.*权限|没有应答|没有成对|未读到|已停止|不受支持|"
                   "尚未连接|请联系|请输入|已有|不属于|需要更换|没有启动命令|有未|没有找到$")
REPORTS = re.compile(r"\b(?:notice|addProblem|addFault)\(([^;]*);")
NO_FAULTS = {  # tool tips and explanations
    "当前设置与模板“%1”不同。点“载入”恢复，点“保存”另存。",
    "数值越大，变成黑色的内容越多；太大时底色也会变黑，太小时笔画会断开",
    "此文件夹尚不存在，确定后将会新建。",
    "页面按 A4（210 × 297 毫米）扫描，再裁切成这里设定的大小；不能超过 A4。",
}
KEY = re.compile(r"\(&[A-Z0-9]\)")


def comparable(text):
    """Without blanks, keys and line breaks; what is filled in is "…"."""
    text = KEY.sub("", text).replace("\\n", "")
    return re.sub(r"\s", "", re.sub(r"%\d", "…", text)).rstrip(":：。").removesuffix("...")


def manual_text(chapters="*"):
    sources = sorted((TREE / "docs" / "manual" / "chapters").glob(f"{chapters}.html"))
    text = "\n".join(path.read_text(encoding="utf-8") for path in sources)
    return re.sub(r"\s", "", html.unescape(re.sub(r"<[^>]*>", "", text)))


def texts_in(source):
    for literals in LITERALS.findall(source):
        text = "".join(LITERAL.findall(literals))
        if CHINESE.search(text):
            yield text


def sources():
    for folder in PROGRAMS:
        for path in sorted((TREE / folder).rglob("*.cpp")):
            yield re.sub(r"(?m)(?<!:)//.*$", "", path.read_text(encoding="utf-8"))


def faults():
    for source in sources():
        yield from (text for text in texts_in(source) if FAULT.search(text) and text not in NO_FAULTS)
        for call in REPORTS.findall(source):
            yield from texts_in(call)


def controls():
    for source in sources():
        yield from (text for text in texts_in(source) if KEY.search(text))
    yield from form_texts()


def form_texts():
    """What is written on the controls of the forms; not the explanations, which are sentences."""
    for path in sorted((TREE / "src").rglob("*.ui")):
        for widget in ElementTree.parse(path).iter("widget"):
            for place in ("property[@name='text']/string", "property[@name='title']/string", "attribute[@name='title']/string"):
                text = widget.findtext(place) or ""
                if CHINESE.search(text) and "。" not in text and text[0] != "(":
                    yield text


class Manual(unittest.TestCase):
    def assert_in(self, manual, texts):
        wanted = set(texts)
        self.assertGreater(len(wanted), 100)
        self.assertEqual(sorted(text for text in wanted if comparable(text) not in manual), [])

    def test_every_fault(self):
        self.assert_in(manual_text("*-faults"), faults())

    def test_every_control(self):
        self.assert_in(manual_text(), controls())


if __name__ == "__main__":
    unittest.main()
