// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/redheader.h"

#include "imageconvert/paper.h"

#include <algorithm>

namespace imageconvert {

namespace {

// All levels are of a flattened picture, paper 255.
constexpr int kWhite = 205;       // lighter is paper
constexpr int kRedWhite = 235;    // least of green and blue at which a reddish pixel is paper
constexpr int kLeastRedness = 34; // red minus the larger of green and blue
constexpr uchar kRed[3] = {214, 24, 30};

// Grey to 0 to 255 between ink and paper.
inline int stretched(int level, int black, int white)
{
    return std::clamp((level - black) * 255 / (white - black), 0, 255);
}

} // namespace

cv::Mat asRedHeaderDocument(const cv::Mat& pixels, double dpi)
{
    const PaperSurface paper = findPaper(pixels, dpi);
    cv::Mat flat = flattened(pixels, paper);
    const int black = inkLevel(flat, paper, 90);
    const int channels = flat.channels();
    for (int y = 0; y < flat.rows; ++y) {
        uchar* p = flat.ptr(y);
        for (int x = 0; x < flat.cols; ++x, p += channels) {
            if (channels == 1) {
                p[0] = static_cast<uchar>(stretched(p[0], black, kWhite));
                continue;
            }
            const int r = p[0], g = p[1], b = p[2], other = std::max(g, b);
            // A dark red is a stamp over text or the edge of black type: black unless red clearly leads.
            if (r - other > kLeastRedness && r > 100 && r * 5 > other * 6) {
                const int lightness = stretched(std::min(g, b), 110, kRedWhite);
                for (int c = 0; c < 3; ++c)
                    p[c] = static_cast<uchar>(kRed[c] + (255 - kRed[c]) * lightness / 255);
            } else {
                const int grey = stretched((77 * r + 151 * g + 28 * b) >> 8, black, kWhite);
                p[0] = p[1] = p[2] = static_cast<uchar>(grey);
            }
        }
    }
    return flat;
}

} // namespace imageconvert
