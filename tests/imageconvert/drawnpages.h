// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <opencv2/core.hpp>

// Pages drawn in code, red-green-blue, so that angle, border and content are known exactly.
namespace drawn {

struct PageSpec
{
    cv::Size size{1240, 1754}; // A4 at 150 dpi
    cv::Scalar paper{250, 249, 246};
    int lines = 24;
    double inkShare = 1; // 1: black
    double noise = 2.5;  // standard deviation, grey levels
};

cv::Mat page(const PageSpec& spec = {});
// Smooth colour fields and discs, nothing straight, no paper.
cv::Mat photograph(const cv::Size& size);
// The page turned clockwise around its middle and laid on a bed of the given size, centred plus `shift`.
cv::Mat onBed(const cv::Mat& page, double degreesClockwise, const cv::Size& bed, const cv::Scalar& bedColour,
              const cv::Point& shift = {});
// Turned within its own frame; the corners repeat the rim.
cv::Mat turned(const cv::Mat& page, double degreesClockwise);
void addNoise(cv::Mat& picture, double sigma, int seed = 7);
// Share of pixels of a grey picture that are darker than `level`.
double darkShare(const cv::Mat& grey, int level);
double meanDifference(const cv::Mat& a, const cv::Mat& b);

// Writes a binary PNM file; `magicEnd` stands between the magic number and the size.
void writePnm(const QString& path, const cv::Mat& picture, const char* magicEnd = "\n");

} // namespace drawn
