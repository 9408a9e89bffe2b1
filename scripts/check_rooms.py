#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""check_rooms.py [SOURCE_DIR]: reads the includes below src/ and companions/ and reports what breaks the house rules.

A room may include itself and the rooms that ALLOWED names; rooms without widgets include no widget header;
each outside library has one source file that talks to it; the install root is named in one place.
The small programs below companions/ call rooms below the panels, and never each other.
"""
import glob
import os
import re
import sys

BELOW_IMAGING = {"config", "imageconvert", "output", "recognition"}
BELOW_PANELS = BELOW_IMAGING | {"imaging"}
ALLOWED = {
    "config": set(),
    "language": set(),
    "imageconvert": set(),
    "recognition": set(),
    "output": {"config"},
    "imaging": BELOW_IMAGING,
    "device": {"config"},
    "forms": BELOW_PANELS,
    "pdf": BELOW_PANELS | {"forms"},
    "ocr": BELOW_PANELS | {"forms"},
    "app": BELOW_PANELS | {"forms", "pdf", "ocr", "device", "language"},
}
WITHOUT_WIDGETS = {"config", "imageconvert", "recognition", "output", "imaging", "device"}
# Rooms with panels and logic: only panels may know panels.
PANEL_ROOMS = {"pdf", "ocr"}
# What a companion may call; one that is not named here: every room below the panels. None may know a panel.
COMPANIONS = {"imageconvert": {"imageconvert", "imaging"}, "ocrdoc": BELOW_PANELS | PANEL_ROOMS,
              "pdfreader": {"language"}}
COMPANIONS_WITHOUT_WIDGETS = {"imageconvert"}
# The files of device/ that have windows; all others there are device_core.
DEVICE_UI = {"readbtn", "stateinfopanel", "statusicon", "functionalapp"}
SEAMS = ("sane/sane.h", "libusb.h", "libusb-1.0/libusb.h", "tesseract/baseapi.h")
ROOT_NAME, ROOT_PLACE = "/opt/zarn", "config/installroot.cpp"
LONGEST_FILE = 600
_INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.M)


def widget_headers():
    names = {os.path.basename(path) for path in glob.glob("/usr/include/*/qt5/QtWidgets/*")}
    if "QWidget" not in names:
        sys.exit("the headers of Qt Widgets were not found")
    return names


def sources(root):
    for path in sorted(glob.glob(os.path.join(root, "**", "*"), recursive=True)):
        if path.endswith((".cpp", ".h")):
            with open(path, encoding="utf-8") as source:
                yield os.path.relpath(path, root), source.read()


def stem(path):
    return os.path.splitext(os.path.basename(path))[0]


def include_faults(name, room, include, rooms, widgets):
    target = include.split("/")[0]
    has_windows = room == "device" and stem(name) in DEVICE_UI
    if room == "device" and target == room and stem(include) in DEVICE_UI and not has_windows:
        yield f"{name}: device_core must not know device_ui ({include})"
    if target in rooms and "/" in include:
        if target != room and target not in ALLOWED[room]:
            yield f"{name}: {room} must not call {target} ({include})"
        if room in PANEL_ROOMS and include.endswith("panel.h") and "panel" not in os.path.basename(name):
            yield f"{name}: logic must not know a panel ({include})"
    if room in WITHOUT_WIDGETS and not has_windows and (os.path.basename(include) in widgets or include.startswith("ui_")):
        yield f"{name}: {room} has no widgets ({include})"


def text_faults(name, text):
    if ROOT_NAME in text and name != ROOT_PLACE:
        yield f"{name}: only {ROOT_PLACE} names the install root"
    if "SPDX-License-Identifier: GPL-3.0-or-later" not in text[:200]:
        yield f"{name}: no licence line"
    if text.count("\n") > LONGEST_FILE:
        yield f"{name}: {text.count(chr(10))} lines, more than {LONGEST_FILE}"


def check_companions(root, rooms):
    widgets = widget_headers()
    faults = []
    for name, text in sources(root):
        companion = name.split(os.sep)[0]
        allowed = COMPANIONS.get(companion, BELOW_PANELS)
        for include in _INCLUDE.findall(text):
            target = include.split("/")[0]
            if "/" in include and target in rooms and (target not in allowed or include.endswith("panel.h")):
                faults.append(f"companions/{name}: {companion} must not call {target} ({include})")
            if include.startswith("../") or include.startswith("companions/"):
                faults.append(f"companions/{name}: a companion includes its own folder and the rooms ({include})")
            if companion in COMPANIONS_WITHOUT_WIDGETS and os.path.basename(include) in widgets:
                faults.append(f"companions/{name}: {companion} has no widgets ({include})")
        faults += text_faults("companions/" + name, text)
    return faults


def check(root):
    widgets = widget_headers()
    rooms = {entry for entry in os.listdir(root) if os.path.isdir(os.path.join(root, entry))}
    faults = [f"{room}: a room that ALLOWED does not know" for room in sorted(rooms - set(ALLOWED))]
    seams = {}
    for name, text in sources(root):
        room = name.split(os.sep)[0]
        if room not in ALLOWED:
            continue
        for include in _INCLUDE.findall(text):
            faults += include_faults(name, room, include, rooms, widgets)
            if include in SEAMS:
                seams.setdefault(include, []).append(name)
        faults += text_faults(name, text)
    faults += [f"{include} is included in {len(names)} files: {', '.join(names)}"
               for include, names in seams.items() if len(names) > 1]
    return faults


def main():
    tree = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
    faults = check(os.path.join(tree, "src")) + check_companions(os.path.join(tree, "companions"), set(ALLOWED))
    print("\n".join(faults) or "the rooms are in order")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
