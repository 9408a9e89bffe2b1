# SPDX-License-Identifier: GPL-3.0-or-later
"""The main job from the command line to the files."""
import os
import subprocess
import unittest

from programtest import BUILD, SAMPLES, ProgramTest, count_bars, picture, plain_options, similarity

# The sides of the sample sheets that carry print, in feeder order.
PRINTED = ["001-front", "001-back", "002-front", "003-front", "004-front", "005-front", "006-front", "006-back"]
UPSIDE_DOWN = {"006-front", "006-back"}
SKEWED = {"005-front"}


class Demo(ProgramTest):
    def reduced(self, source, name, *steps):
        path = os.path.join(self.folder, name + ".png")
        subprocess.run(["convert", source, *steps, "-fuzz", "25%", "-trim", "+repage", "-colorspace", "Gray", "-resize", "200x280!",
                        "-blur", "0x1", path], check=True)
        return path

    def test_samples_come_out_upright_and_blank_sides_do_not(self):
        status, lines, errors = self.demo()
        self.assertEqual(status, 0, errors)
        self.assertEqual(len(lines["saved"]), len(PRINTED), lines)
        for side, saved in zip(PRINTED, lines["saved"]):
            if side in SKEWED:
                continue  # on a bed: measured below
            sheet = os.path.join(SAMPLES, side + ".png")
            wanted = self.reduced(sheet, side + "-wanted", *(["-rotate", "180"] if side in UPSIDE_DOWN else []))
            turned = self.reduced(sheet, side + "-turned", *([] if side in UPSIDE_DOWN else ["-rotate", "180"]))
            got = self.reduced(saved, side + "-got")
            self.assertGreater(similarity(got, wanted), similarity(got, turned) + 0.1, f"{side} is not upright in {saved}")
        self.assertEqual(len(lines["screenshot"]), 1)
        self.assertGreater(os.path.getsize(lines["screenshot"][0]), 10000)
        self.assertIn(str(len(PRINTED)), lines["status"][0])
        self.assertGreater(float(lines["seconds"][0]), 0)

    def test_skewed_sheet_is_cut_and_straightened(self):
        feeder = os.path.join(self.folder, "skewed")
        os.makedirs(feeder)
        os.symlink(os.path.join(SAMPLES, "005-front.png"), os.path.join(feeder, "001-front.png"))
        status, lines, errors = self.demo("--feeder", feeder, "--set", "Scan_Scan/scanType=1")
        self.assertEqual(status, 0, errors)
        size = subprocess.run(["identify", "-format", "%w %h", lines["saved"][0]], check=True, stdout=subprocess.PIPE).stdout
        width, height = map(int, size.split())
        self.assertAlmostEqual(width / height, 185 / 260, delta=0.02)
        corner = subprocess.run(["convert", lines["saved"][0], "-colorspace", "Gray", "-gravity", "NorthWest", "-crop", "5%x5%+0+0",
                                 "-format", "%[fx:mean]", "info:"], check=True, stdout=subprocess.PIPE).stdout
        self.assertGreater(float(corner), 0.8, "bed is left in the corner")

    def test_any_folder_of_pictures_in_name_order(self):
        feeder = os.path.join(self.folder, "any")
        os.makedirs(feeder)
        for bars, name in enumerate(("a.jpg", "b.png", "c.png"), 3):
            picture(os.path.join(feeder, name), bars)
        status, lines, errors = self.demo("--feeder", feeder, *plain_options())
        self.assertEqual(status, 0, errors)
        self.assertEqual({os.path.dirname(path) for path in lines["saved"]}, {self.out})
        self.assertEqual([count_bars(path) for path in lines["saved"]], [3, 4, 5])

    def test_empty_feeder(self):
        empty = os.path.join(self.folder, "empty")
        os.makedirs(empty)
        status, lines, _ = self.demo("--feeder", empty)
        self.assertEqual(status, 3)
        self.assertEqual(lines["saved"], [])
        self.assertTrue(lines["status"][0])

    def test_time_out_leaves_no_process(self):
        status, _, errors = self.demo("--timeout", "0.3")
        self.assertEqual(status, 4, errors)
        self.assertIn("time-out", errors)
        running = subprocess.run(["pgrep", "-f", os.path.join(BUILD, "vscan", "vscan") + " run .*" + self.out], check=False)
        self.assertEqual(running.returncode, 1)


if __name__ == "__main__":
    unittest.main()
