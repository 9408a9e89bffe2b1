# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes keys into the program's INI files before its first start; the program adds the factory values."""
import re


def split_assignment(text):
    """"GROUP/KEY=VALUE" or "KEY=VALUE" -> (group, key, value); ValueError says what is wrong."""
    name, equals, value = text.partition("=")
    group, slash, key = name.rpartition("/")
    if not equals or not re.fullmatch(r"[A-Za-z0-9_]+", key) or (slash and not re.fullmatch(r"[A-Za-z0-9_]+", group)):
        raise ValueError(f"expected GROUP/KEY=VALUE, got {text!r}")
    return group or "General", key, value


def ini_value(value):
    """The value as QSettings reads it back: plain when harmless, else quoted with escapes."""
    if re.fullmatch(r"[\w./+-]+", value):
        return value
    escaped = value.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n").replace("\r", "\\r")
    return f'"{escaped}"'


def write_ini(path, assignments):
    """A new INI file with the assignments; a later one for the same key wins."""
    groups = {}
    for group, key, value in assignments:
        groups.setdefault(group, {})[key] = value
    with open(path, "w", encoding="utf-8") as ini:
        for group, keys in groups.items():
            ini.write(f"[{group}]\n")
            ini.writelines(f"{key}={ini_value(value)}\n" for key, value in keys.items())
            ini.write("\n")
