// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

struct BackgroundParams
{
    int strength =
        5; // 1 to 10: how much darker than the paper a thing may be and still get white; 0: nothing
    double dpi = 300;
};

// Divides by the paper's colour and whitens what is only a little darker: stains, shadows, show-through.
// Photographs get the paper's correction but not the whitening.
cv::Mat withoutBackground(const cv::Mat& pixels, const BackgroundParams& params);

} // namespace imageconvert
