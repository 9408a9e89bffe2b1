// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/picture.h"

#include <opencv2/core.hpp>

namespace imageconvert {

// A sheet of paper on the scanner's bed.
struct Sheet
{
    bool found = false;    // false: nothing to cut, or not sure
    cv::Point2d centre;    // pixels; of the copy it was found on, or full-size after scaled()
    cv::Size2d size;       // along and across its own sides
    double angleDeg = 0;   // by which it is turned clockwise, -45 to 45
    double confidence = 0; // 0 to 1: share of the outline that is confirmed by an edge or by the frame
    const char* reason = "";

    Sheet scaled(int factor) const;
};

// Looks for the bed along the frame: a dark or mid-grey one by its level, a light one by its even colour,
// which must differ from the paper all along the sheet. Gives up (found = false) on pictures without a bed,
// without a rectangular sheet, and on sheets that fill the frame.
Sheet detectSheet(const Reduced& reduced);

// Cuts the sheet out, straight; what lies outside of the picture gets `fill`.
cv::Mat cutSheet(const cv::Mat& pixels, const Sheet& fullSize, const cv::Scalar& fill);

} // namespace imageconvert
