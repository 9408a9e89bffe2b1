# SPDX-License-Identifier: GPL-3.0-or-later
"""The udev rule gives the scanner that the program looks for to the seated user, and to nobody else.

Build machines have no udevd, so the file is read here the way udev reads it."""
import os
import re
import unittest

TREE = os.path.abspath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
RULE = "packaging/60-qwd200.rules"
_TOKEN = re.compile(r'([A-Z]+(?:\{[^}"]+\})?)\s*(==|!=|\+=|-=|:=|=)\s*"([^"]*)"')
MATCHES, ASSIGNS = ("==", "!="), ("=", "+=", "-=", ":=")


def text_of(path):
    with open(os.path.join(TREE, path), encoding="utf-8") as source:
        return source.read()


def rules(text):
    """One list of (key, operator, value) for each rule; ValueError for what udev would refuse."""
    found = []
    for line in text.replace("\\\n", " ").splitlines():
        line = line.strip()
        if not line or line.startswith("#"):
            continue
        tokens = []
        for part in re.split(r"\s*,\s*", line):
            token = _TOKEN.fullmatch(part)
            if not token:
                raise ValueError(f"not a rule: {part!r}")
            tokens.append(token.groups())
        found.append(tokens)
    return found


def number(source, name):
    return re.search(rf"\b{name} = 0x([0-9A-Fa-f]{{4}});", source).group(1).lower()


class UdevRule(unittest.TestCase):
    def setUp(self):
        source = text_of("src/device/usb_communicate.cpp")
        self.vendor, self.product = number(source, "vendorId"), number(source, "productId")
        self.rules = rules(text_of(RULE))

    def test_only_the_scanner_is_given_to_the_seat(self):
        self.assertEqual(len(self.rules), 1)
        matched = {key: (operator, value) for key, operator, value in self.rules[0] if operator in MATCHES}
        self.assertEqual(matched, {"ACTION": ("!=", "remove"), "SUBSYSTEM": ("==", "usb"), "ENV{DEVTYPE}": ("==", "usb_device"),
                                   "ATTR{idVendor}": ("==", self.vendor), "ATTR{idProduct}": ("==", self.product)})
        assigned = [token for token in self.rules[0] if token[1] in ASSIGNS]
        # Neither a mode nor an owner: the tag and SANE's mark are the only rights given.
        self.assertCountEqual(assigned, [("ENV{libsane_matched}", "=", "yes"), ("TAG", "+=", "uaccess")])

    def test_comes_before_the_rules_that_give_the_rights(self):
        self.assertLess(os.path.basename(RULE), "70-uaccess.rules")
        self.assertLess(os.path.basename(RULE), "99-libsane1.rules")

    def test_others_name_the_same_scanner(self):
        modalias = f"<modalias>usb:v{self.vendor.upper()}p{self.product.upper()}d*</modalias>"
        self.assertIn(modalias, text_of("packaging/cn.zarn.qwd200.metainfo.xml"))
        self.assertIn(f"idVendor={self.vendor}", text_of("packaging/deb/postinst"))
        for name, value in (("SCANNER_VENDOR", self.vendor), ("SCANNER_PRODUCT", self.product)):
            self.assertIn(f"readonly {name}={value}\n", text_of("run.sh"))

    def test_a_broken_rule_is_noticed(self):
        for broken in ('SUBSYSTEM=="usb" TAG+="uaccess"', 'ATTR{idVendor}==0efd', 'TAG+="uaccess",'):
            self.assertRaises(ValueError, rules, broken)


if __name__ == "__main__":
    unittest.main()
