// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/binarise.h"

#include "imageconvert/paper.h"
#include "imageconvert/picture.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace imageconvert {

namespace {

constexpr int kNeutral = 130;
constexpr double kLeastContrast = 22; // grey levels of 255; less is grain
constexpr double kFaintShare = 0.42;  // of the page's usual ink; fainter is show-through or a stain

// The contrast of the page's usual ink: the median of the tiles' contrasts weighted by their squares, so that
// a few lines of ink outweigh a whole page of show-through, but a heading not a page of faint type.
double usualContrast(const cv::Mat& contrast)
{
    double weights[257] = {};
    double total = 0;
    for (int y = 0; y < contrast.rows; ++y)
        for (int x = 0; x < contrast.cols; ++x) {
            const float c = contrast.at<float>(y, x);
            if (c > kLeastContrast) {
                weights[static_cast<int>(c)] += static_cast<double>(c) * c;
                total += static_cast<double>(c) * c;
            }
        }
    double sum = 0;
    for (int level = 0; level < 256 && total > 0; ++level) {
        sum += weights[level];
        if (sum >= total / 2)
            return level;
    }
    return 0;
}

// Darkest level of each tile in the full-size picture, slightly smoothed against grain.
cv::Mat darkestOfTiles(const cv::Mat& flat, int tile, const cv::Size& grid)
{
    cv::Mat darkest(grid, CV_8UC1, cv::Scalar(255));
    for (int y = 1; y + 1 < flat.rows; ++y) {
        const uchar *above = flat.ptr(y - 1), *row = flat.ptr(y), *below = flat.ptr(y + 1);
        uchar* to = darkest.ptr(std::min(y / tile, grid.height - 1));
        for (int x = 1; x + 1 < flat.cols; x += 2) {
            const int level = (2 * row[x] + row[x - 1] + row[x + 1] + above[x] + below[x]) / 6;
            uchar& least = to[std::min(x / tile, grid.width - 1)];
            if (level < least)
                least = static_cast<uchar>(level);
        }
    }
    return darkest;
}

// Share of the way from paper to ink at which the cut lies. In faint type grain makes the darkest level
// darker than the ink, in strong type the ink itself is cut off at black: measured, the best shares are 0.44
// and 0.54.
double cutShare(int threshold, double usualContrast)
{
    const double neutral = 0.44 + 0.10 * std::clamp((usualContrast - 120) / 120, 0.0, 1.0);
    const double wish = std::clamp(threshold, 0, 255);
    // 0 and 255 give nearly nothing and nearly all that is darker than paper.
    return wish <= kNeutral ? 0.95 - (0.95 - neutral) * wish / kNeutral
                            : neutral - (neutral - 0.08) * (wish - kNeutral) / (255 - kNeutral);
}

} // namespace

cv::Mat twoLevels(const cv::Mat& grey, const BinariseParams& params)
{
    if (isTwoLevel(grey))
        return grey;
    const PaperSurface paper = findPaper(grey, params.dpi);
    const cv::Mat flat = flattened(grey, paper);
    cv::Mat ink8 = darkestOfTiles(flat, paper.tileSize, paper.tiles.size()), ink;
    cv::erode(ink8, ink8, cv::getStructuringElement(cv::MORPH_RECT, {3, 3}));
    ink8.convertTo(ink, CV_32F);
    cv::Mat contrast = 255.0f - ink;
    const double usual = usualContrast(contrast);
    const double least = std::max(kLeastContrast, kFaintShare * usual);
    // Between the usual ink and the local one: single dark specks must not thin a faint text around.
    cv::Mat bounded = cv::max(cv::min(contrast, 1.15 * usual), least);
    cv::Mat smooth;
    cv::GaussianBlur(bounded, smooth, cv::Size(), 1.5);
    cv::Mat levels = 255.0f - cutShare(params.threshold, usual) * smooth;
    cv::Mat wide;
    cv::resize(levels, wide, {paper.tiles.cols * paper.tileSize, paper.tiles.rows}, 0, 0, cv::INTER_LINEAR);
    cv::Mat out(grey.size(), CV_8UC1);
    for (int y = 0; y < grey.rows; ++y) {
        const double at = std::clamp((y + 0.5) / paper.tileSize - 0.5, 0.0, paper.tiles.rows - 1.0);
        const int above = static_cast<int>(at), below = std::min(above + 1, paper.tiles.rows - 1);
        const float part = static_cast<float>(at - above);
        const float *a = wide.ptr<float>(above), *b = wide.ptr<float>(below);
        const uchar* from = flat.ptr(y);
        uchar* to = out.ptr(y);
        for (int x = 0; x < grey.cols; ++x)
            to[x] = from[x] < a[x] + part * (b[x] - a[x]) ? 0 : 255;
    }
    return out;
}

} // namespace imageconvert
