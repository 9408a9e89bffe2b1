// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/paper.h"

#include "imageconvert/picture.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <opencv2/imgproc.hpp>

namespace imageconvert {

namespace {

constexpr int kTile = 8;             // shrunk pixels
constexpr int kClosing = 15;         // shrunk pixels: strokes up to 5 mm vanish
constexpr float kStep = 0.055f;      // largest change of paper from tile to tile, of its level
constexpr double kDarkestPaper = 90; // grey level; darker is no paper
constexpr double kPictureMm2 = 400;  // smaller things that are not paper are ink

// The grey level of the brightest group that holds a good share of the pixels.
int paperLevel(const cv::Mat& grey)
{
    int histogram[256] = {};
    for (int y = 0; y < grey.rows; ++y)
        for (int x = 0; x < grey.cols; ++x)
            ++histogram[grey.at<uchar>(y, x)];
    constexpr int reach = 6;
    int best = 255;
    double bestWeight = 0;
    for (int level = reach; level < 256; ++level) {
        int sum = 0;
        for (int i = level - reach; i <= std::min(255, level + reach); ++i)
            sum += histogram[i];
        const double weight = sum * (0.35 + level / 255.0); // paper is the brighter of two equal groups
        if (weight > bestWeight) {
            bestWeight = weight;
            best = level;
        }
    }
    return best;
}

// Marks the tiles that join smoothly to the usual paper colour.
cv::Mat joinedTiles(const cv::Mat& tiles, const cv::Scalar& usual)
{
    const int channels = tiles.channels();
    cv::Mat joined(tiles.size(), CV_8UC1, cv::Scalar(0));
    std::deque<cv::Point> open;
    const auto at = [&](const cv::Point& p) { return tiles.ptr<float>(p.y) + p.x * channels; };
    for (int y = 0; y < tiles.rows; ++y)
        for (int x = 0; x < tiles.cols; ++x) {
            bool near = true;
            for (int c = 0; c < channels; ++c)
                near = near && std::abs(at({x, y})[c] - usual[c]) < 0.05 * usual[c] + 2;
            if (near) {
                joined.at<uchar>(y, x) = 255;
                open.push_back({x, y});
            }
        }
    const cv::Rect all(0, 0, tiles.cols, tiles.rows);
    while (!open.empty()) {
        const cv::Point p = open.front();
        open.pop_front();
        for (const cv::Point& d : {cv::Point(1, 0), cv::Point(-1, 0), cv::Point(0, 1), cv::Point(0, -1)}) {
            const cv::Point q = p + d;
            if (!all.contains(q) || joined.at<uchar>(q))
                continue;
            bool smooth = true;
            for (int c = 0; c < channels; ++c) {
                const float from = at(p)[c], to = at(q)[c];
                smooth = smooth && std::abs(to - from) < kStep * from && to > 0.45 * usual[c];
            }
            if (smooth) {
                joined.at<uchar>(q) = 255;
                open.push_back(q);
            }
        }
    }
    return joined;
}

// Keeps the large groups of tiles that are not paper.
cv::Mat largeGroups(const cv::Mat& notPaper, double tileMm)
{
    cv::Mat labels, stats, centres;
    cv::Mat closed;
    cv::morphologyEx(notPaper, closed, cv::MORPH_CLOSE, cv::getStructuringElement(cv::MORPH_RECT, {5, 5}));
    const int count = cv::connectedComponentsWithStats(closed, labels, stats, centres, 4, CV_32S);
    cv::Mat large(notPaper.size(), CV_8UC1, cv::Scalar(0));
    for (int i = 1; i < count; ++i)
        if (stats.at<int>(i, cv::CC_STAT_AREA) * tileMm * tileMm >= kPictureMm2)
            large.setTo(255, labels == i);
    return large;
}

// Fills the tiles outside the mask from those around, near ones first (growing normalised blurs).
cv::Mat filled(const cv::Mat& tiles, const cv::Mat& mask, const cv::Scalar& usual)
{
    cv::Mat weight, weighted;
    mask.convertTo(weight, CV_32F, 1 / 255.0);
    std::vector<cv::Mat> copies(static_cast<size_t>(tiles.channels()), weight);
    cv::Mat weights;
    cv::merge(copies, weights);
    cv::multiply(tiles, weights, weighted);
    cv::Mat result(tiles.size(), tiles.type(), usual);
    for (double sigma : {40.0, 12.0, 4.0, 1.2}) {
        cv::Mat sum, total;
        if (sigma > 20) { // a box serves as well there, and its time does not grow with its size
            const int side = 2 * static_cast<int>(sigma) + 1;
            cv::blur(weighted, sum, {side, side});
            cv::blur(weights, total, {side, side});
        } else {
            cv::GaussianBlur(weighted, sum, cv::Size(), sigma);
            cv::GaussianBlur(weights, total, cv::Size(), sigma);
        }
        for (int y = 0; y < result.rows; ++y) {
            float* to = result.ptr<float>(y);
            const float *s = sum.ptr<float>(y), *t = total.ptr<float>(y);
            for (int i = 0; i < result.cols * result.channels(); ++i)
                if (t[i] > 0.15f)
                    to[i] = s[i] / t[i];
        }
    }
    return result;
}

} // namespace

Shrunk shrunk(const cv::Mat& pixels, double dpi)
{
    Shrunk out;
    const int shorter = std::min(pixels.cols, pixels.rows);
    out.factor = std::clamp(static_cast<int>(std::lround(dpi / 75)), 1, std::max(1, shorter / 16));
    const cv::Size size(pixels.cols / out.factor, pixels.rows / out.factor);
    cv::resize(pixels(cv::Rect(0, 0, size.width * out.factor, size.height * out.factor)), out.pixels, size, 0,
               0, cv::INTER_AREA);
    return out;
}

cv::Scalar paperColour(const cv::Mat& pixels)
{
    const cv::Mat grey = toGrey(pixels);
    const int level = paperLevel(grey);
    const cv::Mat mask = (grey >= level - 8) & (grey <= level + 8);
    if (cv::countNonZero(mask) == 0)
        return cv::Scalar::all(255);
    return cv::mean(pixels, mask);
}

PaperSurface findPaper(const cv::Mat& pixels, double dpi)
{
    const Shrunk small = shrunk(pixels, dpi);
    PaperSurface paper;
    paper.tileSize = kTile * small.factor;
    paper.usual = paperColour(small.pixels);
    const cv::Size grid((small.pixels.cols + kTile - 1) / kTile, (small.pixels.rows + kTile - 1) / kTile);
    const double level = small.pixels.channels() == 3 ? (paper.usual[0] + paper.usual[1] + paper.usual[2]) / 3
                                                      : paper.usual[0];
    if (level < kDarkestPaper) { // white on black: nothing to even out
        paper.tiles = cv::Mat(grid, CV_MAKETYPE(CV_32F, small.pixels.channels()), cv::Scalar::all(255));
        paper.picture = cv::Mat(grid, CV_8UC1, cv::Scalar(255));
        return paper;
    }
    cv::Mat calm, closed;
    cv::medianBlur(small.pixels, calm, 3);
    cv::morphologyEx(calm, closed, cv::MORPH_CLOSE,
                     cv::getStructuringElement(cv::MORPH_RECT, {kClosing, kClosing}), {-1, -1}, 1,
                     cv::BORDER_REPLICATE);
    cv::copyMakeBorder(closed, closed, 0, grid.height * kTile - closed.rows, 0,
                       grid.width * kTile - closed.cols, cv::BORDER_REPLICATE);
    cv::Mat tiles8;
    cv::resize(closed, tiles8, grid, 0, 0, cv::INTER_AREA);
    cv::Mat tiles;
    tiles8.convertTo(tiles, CV_32F);
    const cv::Mat joined = joinedTiles(tiles, paper.usual);
    paper.picture = largeGroups(255 - joined, 25.4 / dpi * paper.tileSize);
    // Leaks into a picture go with it; the ring around is left out, since closing smears the edge.
    cv::Mat grown;
    cv::dilate(paper.picture, grown, cv::getStructuringElement(cv::MORPH_RECT, {3, 3}));
    paper.tiles = filled(tiles, joined & ~grown, paper.usual);
    return paper;
}

cv::Mat flattened(const cv::Mat& pixels, const PaperSurface& paper)
{
    const int channels = pixels.channels(), samples = pixels.cols * channels;
    // Gains with 8 binary places, stretched in width at once and in height row by row.
    cv::Mat gains = cv::max(paper.tiles, 24.0f), wide;
    cv::divide(255.0 * 256.0, gains, gains);
    cv::resize(gains, wide, {paper.tiles.cols * paper.tileSize, paper.tiles.rows}, 0, 0, cv::INTER_LINEAR);
    cv::Mat out(pixels.size(), pixels.type());
    std::vector<int> row(static_cast<size_t>(samples));
    for (int y = 0; y < pixels.rows; ++y) {
        const double at = std::clamp((y + 0.5) / paper.tileSize - 0.5, 0.0, paper.tiles.rows - 1.0);
        const int above = static_cast<int>(at), below = std::min(above + 1, paper.tiles.rows - 1);
        const float part = static_cast<float>(at - above);
        const float *a = wide.ptr<float>(above), *b = wide.ptr<float>(below);
        const uchar* from = pixels.ptr(y);
        uchar* to = out.ptr(y);
        for (int i = 0; i < samples; ++i) {
            const int gain = static_cast<int>(a[i] + part * (b[i] - a[i]));
            to[i] = static_cast<uchar>(std::min(255, (from[i] * gain + 128) >> 8));
        }
    }
    return out;
}

int inkLevel(const cv::Mat& flat, const PaperSurface& paper, int limit)
{
    int histogram[256] = {};
    const int channels = flat.channels();
    const int middle = channels == 3 ? 1 : 0;
    for (int y = 0; y < flat.rows; y += 4) {
        const uchar* picture = paper.picture.ptr(std::min(y / paper.tileSize, paper.picture.rows - 1));
        const uchar* row = flat.ptr(y);
        for (int x = 0; x < flat.cols; x += 2)
            if (!picture[std::min(x / paper.tileSize, paper.picture.cols - 1)])
                ++histogram[row[x * channels + middle]];
    }
    const int darkest = 140; // of 255: show-through and stains are lighter
    long total = 0;
    for (int i = 0; i < darkest; ++i)
        total += histogram[i];
    if (total < flat.total() / 8 * 0.0005)
        return limit;
    long sum = 0;
    for (int i = 0; i < darkest; ++i) {
        sum += histogram[i];
        if (sum * 10 >= total * 3)
            return std::min(i, limit);
    }
    return limit;
}

} // namespace imageconvert
