// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

// The orientation, 1 to 8, that a JPEG's APP1 segment tells (Exif 2.3, tag 0x0112, the same numbers as in
// TIFF); 1, "as stored", when it tells none or is damaged.
int exifOrientation(const uchar* segment, size_t size);

// The picture as it is meant to be seen.
cv::Mat upright(const cv::Mat& stored, int orientation);

} // namespace imageconvert
