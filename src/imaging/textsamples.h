// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <vector>

// Picks the two pieces of text on a page that tell best which way up it lies.
//
// `page`: CV_8UC3 (BGR), any size. Returns two grey pictures (CV_8UC1) of one text line each, straightened,
// cut from the full-resolution page and at most about 760 x 60 pixels; or nothing when the page has no two
// such lines.
std::vector<cv::Mat> findTextSamples(const cv::Mat& page);
