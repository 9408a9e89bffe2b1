// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/binarise.h"

#include "imageconvert/paper.h"
#include "imageconvert/picture.h"
#include "imageconvert/restoring.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace imageconvert {

namespace {

constexpr int kNeutral = 130;
constexpr double kLeastContrast = 22; // grey levels of 255; less is grain
constexpr double kLeastNoise = 5;     // grey levels: ink has grain that the paper lacks
constexpr double kLeastShare = 0.03;  // the same as a share of the contrast: the model is not exact
constexpr double kMiddle = 0.5;       // share of the way from paper to ink at which an edge lies
constexpr double kBlackInk = 133;     // cut below white, in grey levels, for ink that is black
constexpr double kFaintShare = 0.50;  // of the page's usual ink; fainter is show-through or a stain

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

// Share of the way from paper to ink at which the cut lies: the middle of the edge. Strokes of strong small
// type do not reach their full blackness in the scan; there the ink is taken to be as black as in large type.
double cutShare(int threshold, double usualContrast)
{
    const double strong = std::clamp((usualContrast - 130) / 60, 0.0, 1.0);
    const double neutral =
        kMiddle + strong * (std::clamp(kBlackInk / std::max(usualContrast, 1.0), kMiddle, 0.62) - kMiddle);
    const double wish = std::clamp(threshold, 0, 255);
    // 0 and 255 give nearly nothing and nearly all that is darker than paper.
    return wish <= kNeutral ? 0.95 - (0.95 - neutral) * wish / kNeutral
                            : neutral - (neutral - 0.08) * (wish - kNeutral) / (255 - kNeutral);
}

// Black where the restored picture is darker than the level of its place.
cv::Mat cutAt(const cv::Mat& flat, const cv::Mat& levels, int tileSize, const RestoringFilter& filter)
{
    constexpr int reach = 2;
    const int width = flat.cols;
    cv::Mat wide, out(flat.size(), CV_8UC1);
    cv::resize(levels, wide, {levels.cols * tileSize, levels.rows}, 0, 0, cv::INTER_LINEAR);
    const size_t padded = static_cast<size_t>(width + 2 * reach);
    std::vector<float> column3(padded), column5(padded);
    const auto row = [&](int y) { return flat.ptr(std::clamp(y, 0, flat.rows - 1)); };
    for (int y = 0; y < flat.rows; ++y) {
        const uchar *up2 = row(y - 2), *up = row(y - 1), *here = row(y), *down = row(y + 1),
                    *down2 = row(y + 2);
        float *three = column3.data() + reach, *five = column5.data() + reach;
        for (int x = 0; x < width; ++x) {
            const int sum = up[x] + here[x] + down[x];
            three[x] = static_cast<float>(sum);
            five[x] = static_cast<float>(sum + up2[x] + down2[x]);
        }
        for (int i = 1; i <= reach; ++i) {
            three[-i] = three[0];
            five[-i] = five[0];
            three[width - 1 + i] = three[width - 1];
            five[width - 1 + i] = five[width - 1];
        }
        const double at = std::clamp((y + 0.5) / tileSize - 0.5, 0.0, levels.rows - 1.0);
        const int above = static_cast<int>(at), below = std::min(above + 1, levels.rows - 1);
        const float part = static_cast<float>(at - above);
        const float *a = wide.ptr<float>(above), *b = wide.ptr<float>(below);
        uchar* to = out.ptr(y);
        for (int x = 0; x < width; ++x) {
            const float level = a[x] + part * (b[x] - a[x]);
            const float restored =
                filter.pixel * here[x] + filter.sum3 * (three[x - 1] + three[x] + three[x + 1]) +
                filter.sum5 * (five[x - 2] + five[x - 1] + five[x] + five[x + 1] + five[x + 2]);
            to[x] = restored < level ? 0 : 255;
        }
    }
    return out;
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
    const cv::Mat levels = 255.0f - cutShare(params.threshold, usual) * smooth;
    // Measured before the correction, which cuts the grain of the paper off at white.
    const double swing = std::max(kLeastContrast, usual) * paper.usual[0] / 255;
    const Unsharpness scan = measureUnsharpness(grey, swing);
    const double noise =
        std::max({kLeastNoise, kLeastShare * usual, scan.noise}) / std::max(kLeastContrast, usual);
    return cutAt(flat, levels, paper.tileSize, restoringFilter(scan.sigma, noise, params.dpi));
}

} // namespace imageconvert
