// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <vector>

namespace imageconvert {

// Linear resampling; `targetToSource` maps pixel centres. What lies outside the source gets `fill`.
// A two-level picture stays one.
cv::Mat warped(const cv::Mat& pixels, const cv::Matx23d& targetToSource, const cv::Size& size,
               const cv::Scalar& fill);

// Turned clockwise; right angles are exact, others enlarge the picture to hold all of it on `fill`.
cv::Mat rotated(const cv::Mat& pixels, double degrees, const cv::Scalar& fill);

// Scaled by the two factors: averaged when it shrinks, cubic when it grows. A two-level picture stays one.
cv::Mat resampled(const cv::Mat& pixels, double scaleX, double scaleY);

// The size is cut from the top-left corner or from the middle; what is larger than the picture is limited to
// it.
cv::Mat cutOut(const cv::Mat& pixels, const cv::Size& size, bool fromTopLeft);

// `count` bands of (nearly) equal size, left to right or top to bottom; empty when there are not enough
// pixels.
std::vector<cv::Rect> splitRects(const cv::Size& size, int count, bool sideBySide);

// Both on one picture, the smaller centred on white; colour when one is.
cv::Mat joined(const cv::Mat& first, const cv::Mat& second, bool sideBySide);

struct Border
{
    cv::Scalar colour;  // red, green, blue
    int vertical = 0;   // pixels at top and bottom
    int sides = 0;      // pixels at left and right
    bool inside = true; // painted over the rim, else put around the picture
};
cv::Mat withBorder(const cv::Mat& pixels, const Border& border);

} // namespace imageconvert
