// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

// Removes black specks of at most `size` pixels (at 300 dpi, in proportion at others) in width and height
// from a two-level picture. Strokes next to a letter, such as dots and accents of small type, stay: a speck
// with a larger mark within its own size is part of it.
cv::Mat despeckled(const cv::Mat& twoLevel, int size, double dpi);

} // namespace imageconvert
