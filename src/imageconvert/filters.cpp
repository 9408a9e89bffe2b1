// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/filters.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace imageconvert {

namespace {

cv::Mat smoothed(const cv::Mat& pixels, double sigmaAt300, double dpi)
{
    cv::Mat out;
    const double sigma = std::clamp(sigmaAt300 * dpi / 300, 0.4, 8.0);
    cv::GaussianBlur(pixels, out, cv::Size(), sigma, sigma, cv::BORDER_REPLICATE);
    return out;
}

} // namespace

cv::Mat blurred(const cv::Mat& pixels, int level, double dpi)
{
    return level == 1 || level == 2 ? smoothed(pixels, 0.8 * level, dpi) : pixels;
}

cv::Mat sharpened(const cv::Mat& pixels, int level, double dpi)
{
    if (level != 1 && level != 2)
        return pixels;
    const double amount = 0.6 * level;
    cv::Mat out;
    cv::addWeighted(pixels, 1 + amount, smoothed(pixels, 1.0, dpi), -amount, 0, out);
    return out;
}

} // namespace imageconvert
