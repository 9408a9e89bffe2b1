// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

struct SkewParams
{
    double maxAngleDeg = 10;
    double fineStepDeg = 0.02;
    double leastConfidence = 1.7;
};

struct SkewResult
{
    bool sure = false;
    double angleDeg = 0;   // by which the content is turned clockwise
    double confidence = 0; // score of the best angle over the median score
};

// Skew of text lines and rules by projection profiles (Postl's criterion: the squared differences of
// neighbouring profile bins are largest along the lines), rows and columns, on a grey copy of about 75 dpi.
SkewResult detectSkew(const cv::Mat& grey, double dpi, const SkewParams& params = {});

// Turns the picture straight around its middle, same size; the corners get `fill`. Angles that move no pixel
// of the rim by a third of a pixel leave it untouched.
cv::Mat straightened(const cv::Mat& pixels, double skewDeg, const cv::Scalar& fill);

} // namespace imageconvert
