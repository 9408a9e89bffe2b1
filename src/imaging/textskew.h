// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <optional>

// The clockwise turn of the horizontal text lines in a two-level picture (CV_8UC1, ink 255), -10 to 10
// degrees; nothing when there is no ink or its lines run from top to bottom.
std::optional<double> textSkew(const cv::Mat& ink);
