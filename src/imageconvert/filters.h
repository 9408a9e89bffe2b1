// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

// Gaussian blur, level 1 or 2: sigma 0.8 and 1.6 pixels at 300 dpi, in proportion at other resolutions.
// Another level returns the picture as it is; so does sharpened().
cv::Mat blurred(const cv::Mat& pixels, int level, double dpi);

// Unsharp masking, level 1 or 2: 0.6 and 1.2 times the difference to a blur of one pixel at 300 dpi.
cv::Mat sharpened(const cv::Mat& pixels, int level, double dpi);

} // namespace imageconvert
