// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

// How unsharp and grainy the scan is, measured at the edges of its ink and on its paper.
struct Unsharpness
{
    double sigma = 0.8; // of the Gaussian that would blur an ideal edge so, in pixels
    double noise = 0;   // standard deviation of the grain, in grey levels
};
// `contrast` is the difference of paper and usual ink in grey levels; edges that come near it are measured.
Unsharpness measureUnsharpness(const cv::Mat& grey, double contrast);

// A 5 x 5 filter made of the pixel and the sums of the 3 x 3 and the 5 x 5 pixels around it; the weights of
// all pixels add up to 1.
struct RestoringFilter
{
    float pixel = 1, sum3 = 0, sum5 = 0;
};
// The Wiener filter (N. Wiener, 1949) that gives sharp ink back with the least mean square error: it sharpens
// what is blurred and smooths what is grainy. Ink is modelled as a signal that forgets itself within a sixth
// of a millimetre (covariance exp(-distance / length)). `noiseShare` is the noise divided by the contrast.
RestoringFilter restoringFilter(double sigma, double noiseShare, double dpi);

} // namespace imageconvert
