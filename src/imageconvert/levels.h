// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/tone.h"

#include <opencv2/core.hpp>

namespace imageconvert {

struct LevelsResult
{
    bool isPage = false;     // false: a photograph or another picture without paper; left alone
    double paperShare = 0;   // pixels that belong to the paper
    cv::Scalar white, black; // levels that become 255 and 0, per channel
};

// Looks for the paper and ink levels on a small copy of the picture.
LevelsResult detectLevels(const cv::Mat& small);
// The stretch as a tone change; identity when it is no page.
Tone levelsTone(const LevelsResult& levels, int channels);

} // namespace imageconvert
