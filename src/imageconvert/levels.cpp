// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/levels.h"

#include "imageconvert/paper.h"
#include "imageconvert/picture.h"

#include <algorithm>
#include <array>
#include <vector>

namespace imageconvert {

namespace {

constexpr double kLeastPaperShare = 0.3;
constexpr double kDarkestPaper = 110;
constexpr double kLeastContrast = 50; // below, what is dark is no ink but noise and shading
constexpr double kInkShare = 0.004;   // of all pixels; thin strokes fill little of a small copy

std::array<int, 256> histogramOf(const cv::Mat& pixels, int channel)
{
    std::array<int, 256> histogram{};
    const int channels = pixels.channels();
    for (int y = 0; y < pixels.rows; ++y)
        for (int x = 0; x < pixels.cols; ++x)
            ++histogram[pixels.ptr(y)[x * channels + channel]];
    return histogram;
}

int quantile(const std::array<int, 256>& histogram, double share, double total)
{
    double sum = 0;
    for (int i = 0; i < 256; ++i) {
        sum += histogram[static_cast<size_t>(i)];
        if (sum >= share * total)
            return i;
    }
    return 255;
}

} // namespace

LevelsResult detectLevels(const cv::Mat& small)
{
    LevelsResult result;
    const double total = static_cast<double>(small.total());
    const cv::Scalar paper = paperColour(small);
    const cv::Mat grey = toGrey(small);
    const double level =
        small.channels() == 1 ? paper[0] : 0.299 * paper[0] + 0.587 * paper[1] + 0.114 * paper[2];
    result.paperShare = cv::countNonZero((grey >= level - 14) & (grey <= level + 14)) / total;
    result.isPage = level >= kDarkestPaper && result.paperShare >= kLeastPaperShare;
    for (int c = 0; c < small.channels(); ++c) {
        const double ink = quantile(histogramOf(small, c), kInkShare, total);
        // A little under the paper's level, so that grain gets white too.
        result.white[c] = std::max(1.0, paper[c] - 5);
        result.black[c] = result.white[c] - ink >= kLeastContrast ? std::min(ink, 0.5 * result.white[c]) : 0;
    }
    return result;
}

Tone levelsTone(const LevelsResult& levels, int channels)
{
    if (!levels.isPage)
        return Tone();
    Tone::Table tables[3];
    for (int c = 0; c < 3; ++c) {
        const int from = channels == 1 ? 0 : c;
        for (int i = 0; i < 256; ++i)
            tables[c][static_cast<size_t>(i)] = cv::saturate_cast<uchar>(
                (i - levels.black[from]) * 255.0 / (levels.white[from] - levels.black[from]));
    }
    return Tone(tables[0], tables[1], tables[2]);
}

} // namespace imageconvert
