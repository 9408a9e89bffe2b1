// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

// The median of a grey picture's levels (8 bits); 0 when it is empty.
int medianLevel(const cv::Mat& levels);
