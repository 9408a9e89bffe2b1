#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Takes the manual's pictures from the running program, with a virtual scanner on a display of its own.

    screenshots.py --build BUILD [--folder FOLDER] [GROUP...]

The groups are the functions below whose names begin with "show_"; without one, all pictures are taken. FOLDER is shown as
the save folder; it must not exist, and is removed at the end.
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

sys.dont_write_bytecode = True
HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parents[1] / "scripts" / "demo"))
from session import Session  # noqa: E402

IMAGES = HERE / "images"
COLOURS = 160  # of a picture: a form has few, a photograph of paper looks right with these
SETTLE = 1.2  # seconds until a window that has come up is painted, with its previews
# What the pictures show as set: names of prefix and number, A4 on both sides where the factory has Letter.
NAMES = [("Scan_Scan", "usrDefine", "true"), ("Scan_Scan", "name", "合同"), ("Scan_Scan", "length", "3")]
PANELS = [(f"Scan_{function}", key, value) for function in ("OCR", "Copy", "File")
          for key, value in (("paperSize", "0"), ("scanType", "3"), ("delBlank", "true"), ("autoRight", "true"))]
WORD = [("Scan_OCR", "docType", "1")]
ASK = [("Scan_Scan", "messgBox", "true")]
MORE = ("alt+o", "shift+Tab", "space")  # opens the menu of the further settings


class Camera:
    """A session and what a hand does in it before each picture."""

    def __init__(self, session):
        self.session = session
        self.display = session.display

    def press(self, *keys):
        """Key combinations in the window that has the focus, each after the one before has had its effect."""
        for key in keys:
            self.display.type([key])
            time.sleep(0.25)

    def wait_for(self, title):
        """Waits until a window with these words in its title has the focus."""
        self.session.wait_until(lambda: title in self.display.title(self.session.window_above()), 60, f"no window {title}")
        time.sleep(SETTLE)

    def take(self, name, window=None, part=None):
        """A picture of the window that has the focus, or of another one or a part of it, with few colours."""
        path = IMAGES / f"{name}.png"
        self.display.screenshot(str(path), window or self.session.window_above())
        cut = ["-crop", part, "+repage"] if part else []
        subprocess.run(["convert", str(path), "-strip", *cut, "+dither", "-colors", str(COLOURS), "-define",
                        "png:compression-level=9", "-define", "png:exclude-chunks=date,time", f"PNG8:{path}"], check=True)
        print(path.name, path.stat().st_size, flush=True)

    def click_icon(self):
        """The other mouse button on the tray icon."""
        self.display.click(1355, 757, 3)
        time.sleep(SETTLE)

    def dialog(self, name, title, *keys, then=(), text="", back="QWD200"):
        """Opens a dialog, does something in it, takes it and closes it; the window named `back` is in front again."""
        self.press(*keys)
        self.wait_for(title)
        self.press(*then)
        self.display.type(text)
        time.sleep(SETTLE if then or text else 0)
        self.take(name)
        self.press("Escape")
        self.wait_for(back)

    def scan(self, key="ctrl+Return"):
        self.session.press_scan_with(key)
        self.session.wait_for_end(180)


def show_window(camera):
    """The scan page after a batch, and what its buttons open."""
    camera.scan()
    camera.wait_for("QWD200")
    camera.take("window-scan")
    camera.dialog("rotate", "页面旋转", "alt+r", then=["alt+f"])
    camera.dialog("imgmend", "影像补边", "alt+o", "shift+Tab", "shift+Tab", "shift+Tab", "space")
    camera.dialog("noise", "杂点", *MORE, "n")
    camera.dialog("paper", "纸张", *MORE, "p", then=["alt+s", "Down"])
    camera.dialog("output", "输出", *MORE, "o")
    camera.dialog("compress", "压缩", *MORE, "c")
    camera.dialog("append", "应用程序", "alt+o", "Tab", "Tab", "Tab", "Tab", "space", then=["Down"])
    camera.dialog("templatename", "保存模板", "alt+w", text="合同归档")
    camera.dialog("saveset", "保存设置", "alt+b")
    camera.press("alt+b")
    camera.wait_for("保存设置")
    camera.dialog("filenameset", "文件名设置", "alt+n", back="保存设置")


def show_wholeset(camera):
    """The settings of all functions; the maintenance page shows counters of a scanner in use."""
    camera.session.vscan("counters", "scan=18342", "roller=41250", "pad=23980")
    camera.scan()
    camera.wait_for("QWD200")
    camera.dialog("wholeset", "整体设定", "alt+g")
    camera.dialog("maintenance", "整体设定", "alt+g", then=["alt+m", "alt+j"])


def show_job(camera):
    """What is seen before a batch, during it and after one with a fault."""
    camera.session.press_scan()
    camera.wait_for("前缀")
    camera.take("prefix")
    camera.press("Return")
    camera.session.wait_for_progress("正在扫描第3张图像", 60)
    camera.wait_for("扫描状态")
    camera.take("status")
    camera.session.vscan("jam-at", "6")
    camera.session.wait_for_end(180)
    camera.wait_for("扫描状态")
    camera.take("fault")


def show_preview(camera):
    camera.scan("alt+v")
    camera.wait_for("预览")
    camera.press(*["Next"] * 4)
    time.sleep(SETTLE)
    camera.take("preview")


def show_documents(camera):
    """The panels of the functions that make documents, and a recognised one."""
    camera.press("alt+u", "p", "Tab")
    time.sleep(SETTLE)
    camera.take("window-pdf")
    camera.press("alt+u", "o", "Tab")
    time.sleep(SETTLE)
    camera.take("window-ocr")
    camera.scan()
    camera.wait_for("预览")
    camera.take("preview-ocr")


def show_folder(camera):
    """The panels that show a folder."""
    camera.press("alt+u", "f", "Tab")
    camera.scan()
    time.sleep(SETTLE)
    camera.press("alt+n", "Home", "Down")
    camera.take("panel-file")
    camera.press("alt+u", "c", "Tab", "alt+z")
    time.sleep(SETTLE)
    camera.take("panel-settings")
    camera.dialog("copyproperty", "复印属性", "alt+t", "shift+Tab", "shift+Tab", "space")


def show_tray(camera):
    """The corner of the screen: the balloon at the start, the icon's menu."""
    camera.press("alt+k")  # the window makes room
    time.sleep(SETTLE)
    camera.take("balloon", "root", "170x95+1194+672")
    camera.click_icon()
    camera.take("traymenu", "root", "170x130+1194+637")


def show_reader(camera):
    """The manual in the viewer, opened with the help key, with a search."""
    camera.press("F1")
    camera.wait_for("help_qwd200")
    camera.press("ctrl+f")
    camera.display.type("空白页")
    camera.press("Return")
    time.sleep(2 * SETTLE)
    camera.press(*["F3"] * 6)
    time.sleep(SETTLE)
    camera.take("reader")


# Each group in a program of its own: how its session differs from the demo's.
SESSIONS = {"window": {"keys": NAMES}, "wholeset": {}, "job": {"keys": NAMES + ASK, "speed": "real"}, "preview": {},
            "documents": {"keys": PANELS + WORD}, "folder": {"keys": PANELS}, "tray": {"tray": True}, "reader": {}}


def reversed_stack(samples, folder):
    """The sample sheets in reverse order: the last page, which the dialogs show, is an upright text."""
    sheets = sorted(Path(samples).glob("*-front.png"), reverse=True)
    for number, front in enumerate(sheets, 1):
        for side in ("front", "back"):
            os.symlink(front.with_name(front.name.replace("front", side)), f"{folder}/{number:03}-{side}.png")


def install_help(session):
    """What the help key opens: the viewer, and the manual as the build has typeset it."""
    for path in ("companions/pdfreader/pdfReader", "docs/manual/help_qwd200.pdf"):
        os.symlink(os.path.join(session.build, path), os.path.join(session.root, os.path.basename(path)))


def parse():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", default="build", help="the build folder to take the programs from")
    parser.add_argument("--folder", default="/home/ScanDoc", help="what is shown as the save folder")
    parser.add_argument("groups", nargs="*", metavar="GROUP", help="only these of " + ", ".join(SESSIONS))
    return parser.parse_args()


def take_group(name, options, feeder):
    try:
        with Session(options.build, feeder, options.folder, **{"tray": False, **SESSIONS[name]}) as session:
            session.prepare()
            if name == "reader":
                install_help(session)
            session.start_program()
            globals()[f"show_{name}"](Camera(session))
    finally:
        shutil.rmtree(options.folder, ignore_errors=True)


def main():
    options = parse()
    os.environ["LC_ALL"] = "C.UTF-8"
    if os.path.exists(options.folder):
        sys.exit(f"{options.folder} exists; give another --folder")
    with tempfile.TemporaryDirectory() as feeder:
        reversed_stack(os.path.join(options.build, "samples"), feeder)
        for name in options.groups or SESSIONS:
            take_group(name, options, feeder)


if __name__ == "__main__":
    main()
