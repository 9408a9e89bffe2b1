// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/picture.h"

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
    double percent = 0; // ink in the first window that has enough, or in the densest one that was looked at
};

// Dense windows are found on the small copy and judged in full resolution, darkest first. Taken out before:
// rim and punch holes; lone marks with little ink (dust, hairs); weak marks with soft edges (show-through).
// Paper colour and shading do not count, since darkness is measured against the paper around.
BlankResult detectBlank(const cv::Mat& pixels, const Reduced& reduced, const BlankParams& params);

} // namespace imageconvert
