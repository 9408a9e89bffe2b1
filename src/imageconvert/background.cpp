// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/background.h"

#include "imageconvert/paper.h"
#include "imageconvert/tone.h"

#include <algorithm>

namespace imageconvert {

namespace {

// Strength 5 whitens what keeps 80 % of the paper's light, 10 what keeps 62 %.
double whitePoint(int strength)
{
    return 255 * (0.98 - 0.036 * strength);
}

Tone::Table curve(double black, double white)
{
    Tone::Table table;
    for (int i = 0; i < 256; ++i)
        table[static_cast<size_t>(i)] = cv::saturate_cast<uchar>((i - black) * 255.0 / (white - black));
    return table;
}

} // namespace

cv::Mat withoutBackground(const cv::Mat& pixels, const BackgroundParams& params)
{
    if (params.strength <= 0)
        return pixels;
    const int strength = std::min(params.strength, 10);
    const PaperSurface paper = findPaper(pixels, params.dpi);
    cv::Mat flat = flattened(pixels, paper);
    const int black = inkLevel(flat, paper, 18 * strength);
    const Tone::Table table = curve(black * std::min(1.0, strength / 5.0), whitePoint(strength));
    const int channels = flat.channels();
    for (int y = 0; y < flat.rows; ++y) {
        const uchar* picture = paper.picture.ptr(std::min(y / paper.tileSize, paper.picture.rows - 1));
        uchar* row = flat.ptr(y);
        for (int tile = 0; tile * paper.tileSize < flat.cols; ++tile) {
            if (picture[std::min(tile, paper.picture.cols - 1)])
                continue;
            const int end = std::min((tile + 1) * paper.tileSize, flat.cols) * channels;
            for (int i = tile * paper.tileSize * channels; i < end; ++i)
                row[i] = table[row[i]];
        }
    }
    return flat;
}

} // namespace imageconvert
