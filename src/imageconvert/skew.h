// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

struct SkewParams
{
    double maxAngleDeg = 10;
    double fineStepDeg = 0.02;
    double leastConfidence = 2.3;
    double mostUncertaintyDeg = 0.6;
};

struct SkewResult
{
    bool sure = false;
    double angleDeg = 0;       // by which the content is turned clockwise
    double confidence = 0;     // score of the best angle over the median score
    double uncertaintyDeg = 0; // by which one half of the lines disagrees with the other
};

// Skew of text lines and rules by projection profiles (Postl's criterion: the squared differences of
// neighbouring profile bins are largest along the lines), rows and columns, on a grey copy of about 75 dpi.
// Not sure where no angle stands out, where one half of the lines disagrees with the other (handwriting,
// drawings), and where the angle is smaller than that disagreement: turning such a page would harm it.
SkewResult detectSkew(const cv::Mat& grey, double dpi, const SkewParams& params = {});

// Turns the picture straight around its middle, same size; the corners get `fill`. Angles that move no pixel
// of the rim by a third of a pixel leave it untouched.
cv::Mat straightened(const cv::Mat& pixels, double skewDeg, const cv::Scalar& fill);

} // namespace imageconvert
