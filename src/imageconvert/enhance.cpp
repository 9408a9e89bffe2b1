// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/enhance.h"

#include "imageconvert/paper.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace imageconvert {

cv::Mat enhancedCharacters(const cv::Mat& pixels, int strength, double dpi)
{
    if (strength <= 0)
        return pixels;
    const int steps = std::min(strength, 10);
    const cv::Mat flat = flattened(pixels, findPaper(pixels, dpi));
    constexpr double knee = 0.9;
    std::array<int, 256> factor{}; // 8 binary places, by which the pixel keeps its light
    for (int i = 0; i < 256; ++i) {
        const double share = i / 255.0 / knee;
        factor[static_cast<size_t>(i)] =
            share >= 1 ? 256 : static_cast<int>(std::lround(256 * std::pow(share, 0.15 * steps)));
    }
    cv::Mat soft;
    cv::GaussianBlur(pixels, soft, cv::Size(), std::clamp(dpi / 300, 0.5, 4.0));
    const int sharpness = static_cast<int>(std::lround(256 * 0.05 * steps));
    cv::Mat out(pixels.size(), pixels.type());
    const int samples = pixels.cols * pixels.channels();
    for (int y = 0; y < pixels.rows; ++y) {
        const uchar *level = flat.ptr(y), *blurred = soft.ptr(y), *from = pixels.ptr(y);
        uchar* to = out.ptr(y);
        for (int i = 0; i < samples; ++i) {
            const int keep = factor[level[i]];
            // Sharpening would only raise the grain of the paper.
            if (keep == 256) {
                to[i] = from[i];
                continue;
            }
            const int sharp = std::clamp(from[i] + (((from[i] - blurred[i]) * sharpness) >> 8), 0, 255);
            to[i] = static_cast<uchar>((sharp * keep) >> 8);
        }
    }
    return out;
}

} // namespace imageconvert
