// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

struct BinariseParams
{
    int threshold = 130; // the user's wish: 130 is neutral, higher gives more black, lower less
    double dpi = 300;
};

// Two levels, 0 and 255. Light is evened out by the paper surface; the threshold then lies between the local
// paper and the local ink (the darkest things within some millimetres), so faint and strong type on one page
// both get through, and what is much fainter than the page's ink (show-through) does not. Before the cut the
// scan is sharpened or smoothed as its blur and grain ask for.
cv::Mat twoLevels(const cv::Mat& grey, const BinariseParams& params);

} // namespace imageconvert
