// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

// Removes black specks of at most `size` pixels (at 300 dpi, in proportion at others) in width and height
// from a two-level picture. Strokes next to a letter, such as dots and accents of small type, stay: a speck
// over half the limit with a larger mark within three times the limit is part of it. Full stops and decimal
// points stay by that too.
cv::Mat despeckled(const cv::Mat& twoLevel, int size, double dpi);

} // namespace imageconvert
