// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

// All sizes in millimetres.

// The exact size of A3, A4, A5, B5 (JIS), Letter or Legal, in the picture's direction, when both sides are
// within 2 mm of it (a scan is some pixels short or long); else the size itself.
cv::Size2d snappedToPaper(const cv::Size2d& size);

// The paper of an OFD paper code (see ofdpaper.h) in the picture's direction when both sides are within 3 mm
// of it: those papers are up to 1 mm off. A page that was cropped, split or merged keeps its own size.
cv::Size2d snappedToOfdPaper(const cv::Size2d& size, int paperCode);

} // namespace imageconvert
