// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

// An official document with a red header: paper white, text black and neutral, red headings, lines and stamps
// in one clear red. A grey picture gets the white and the black only.
cv::Mat asRedHeaderDocument(const cv::Mat& pixels, double dpi);

} // namespace imageconvert
