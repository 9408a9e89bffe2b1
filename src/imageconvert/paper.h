// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

namespace imageconvert {

// Averaged copy at about 75 dpi; the factor is the one of the full-size pixels.
struct Shrunk
{
    cv::Mat pixels;
    int factor = 1;
};
Shrunk shrunk(const cv::Mat& pixels, double dpi);

// The usual colour of the paper: the middle of the brightest large group of grey levels. White when there is
// none.
cv::Scalar paperColour(const cv::Mat& pixels);

// The paper as it would be without anything on it, in tiles of about 2.7 mm. Ink is closed over (dark
// morphological closing); tiles are taken as paper when they join smoothly to the most usual colour, so
// pictures and the bed do not count; the gaps are filled from around. A page whose ground is dark (white on
// black) has no paper: the surface is 255 and all is picture.
struct PaperSurface
{
    cv::Mat tiles;    // 32-bit float, channels as the picture, in grey levels
    cv::Mat picture;  // 8 bit, 255 where a tile lies in a photograph or another large thing that is not paper
    int tileSize = 1; // in full-size pixels
    cv::Scalar usual; // the most usual colour
};
PaperSurface findPaper(const cv::Mat& pixels, double dpi);

// 255 * pixel / paper, limited to 255: a page on even, white, neutral paper.
cv::Mat flattened(const cv::Mat& pixels, const PaperSurface& paper);

// Level of the ink core in a flattened picture (0 to 255): a low quantile of what is clearly darker than
// paper. `limit` when there is hardly any ink. Tiles of pictures do not count.
int inkLevel(const cv::Mat& flat, const PaperSurface& paper, int limit);

} // namespace imageconvert
