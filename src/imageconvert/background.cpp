// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/background.h"

#include "imageconvert/paper.h"
#include "imageconvert/tone.h"

#include <algorithm>

namespace imageconvert {

namespace {

constexpr int kNeutral = 30, kColoured = 60; // span of red, green and blue on flattened paper, 255
constexpr double kColourShare = 0.6;         // of the whitening that a coloured pixel is spared

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

struct Curves
{
    Tone::Table grey, colour; // of pixels without and with a colour of their own
    int white;                // where the grey one reaches 255
};

// In place, `count` pixels of red, green, blue. A coloured pixel is ink, not a shadow of the paper: it is
// whitened less, or the edges of red type and stamps would fade.
void whitenColours(uchar* p, int count, const Curves& curves)
{
    for (const uchar* end = p + 3 * count; p < end; p += 3) {
        const int least = std::min({p[0], p[1], p[2]}), span = std::max({p[0], p[1], p[2]}) - least;
        if (least >= curves.white) {
            p[0] = p[1] = p[2] = 255;
            continue;
        }
        const int share = std::clamp((span - kNeutral) * 256 / (kColoured - kNeutral), 0, 256);
        for (int c = 0; c < 3; ++c) {
            const int grey = curves.grey[p[c]];
            p[c] = static_cast<uchar>(grey + (((curves.colour[p[c]] - grey) * share) >> 8));
        }
    }
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
    const double darkest = black * std::min(1.0, strength / 5.0), white = whitePoint(strength);
    const Curves curves{curve(darkest, white), curve(darkest, white + kColourShare * (255 - white)),
                        static_cast<int>(white)};
    for (int y = 0; y < flat.rows; ++y) {
        const uchar* picture = paper.picture.ptr(std::min(y / paper.tileSize, paper.picture.rows - 1));
        for (int tile = 0; tile * paper.tileSize < flat.cols; ++tile) {
            if (picture[std::min(tile, paper.picture.cols - 1)])
                continue;
            const int from = tile * paper.tileSize, count = std::min(paper.tileSize, flat.cols - from);
            if (flat.channels() == 3)
                whitenColours(flat.ptr(y) + 3 * from, count, curves);
            else
                for (int x = from; x < from + count; ++x)
                    flat.at<uchar>(y, x) = curves.grey[flat.at<uchar>(y, x)];
        }
    }
    return flat;
}

} // namespace imageconvert
