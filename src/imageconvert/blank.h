// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

struct BlankParams
{
    int darkness = 20;     // grey levels by which ink is darker than the paper around it
    double percent = 0.81; // ink in the densest 10 x 10 mm window from which on the page is not blank
};

struct BlankResult
{
    bool blank = false;
    double percent = 0; // ink in the densest window after dust, holes, rim and show-through are taken out
};

// `grey`: copy of about 75 dpi.
BlankResult detectBlank(const cv::Mat& grey, double dpi, const BlankParams& params);

} // namespace imageconvert
