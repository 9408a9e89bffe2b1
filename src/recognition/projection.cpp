// SPDX-License-Identifier: GPL-3.0-or-later
#include "recognition/projection.h"

#include <opencv2/imgproc.hpp>

namespace {

constexpr int kRowStartAbove = 7;     // ink pixels: more than these start a row
constexpr int kRowEndAtMost = 6;      // ink pixels: this many or fewer end it; exactly 7 does neither
constexpr int kRowNoEndBefore = 5;    // pixel rows
constexpr int kRowKeptAbove = 8;      // pixel rows
constexpr int kBlockAbove = 1;        // ink pixels of a column inside a block
constexpr int kBlockNoEndBefore = 11; // columns
constexpr int kMergedGap = 10;        // columns: wider gaps part two blocks
const cv::Size kFuse(10, 1);          // joins the characters of a phrase

// Ink pixels (exactly 255) of every row, or with `columns` of every column.
std::vector<int> inkCounts(const cv::Mat& image, bool columns)
{
    if (image.empty())
        return {};
    cv::Mat ink, sums;
    cv::compare(image, 255, ink, cv::CMP_EQ);
    cv::reduce(ink, sums, columns ? 0 : 1, cv::REDUCE_SUM, CV_32S);
    std::vector<int> counts;
    counts.reserve(sums.total());
    for (auto sum = sums.begin<int>(); sum != sums.end<int>(); ++sum)
        counts.push_back(*sum / 255);
    return counts;
}

void appendOrWiden(std::vector<cv::Rect>& blocks, const cv::Rect& block)
{
    if (blocks.empty() || block.x - blocks.back().br().x > kMergedGap)
        blocks.push_back(block);
    else
        blocks.back().width = block.br().x - blocks.back().x;
}

} // namespace

std::vector<cv::Rect> getRowRects(const cv::Mat& image)
{
    std::vector<cv::Rect> rows;
    const std::vector<int> counts = inkCounts(image, false);
    int start = -1;
    for (int y = 0; y < static_cast<int>(counts.size()); ++y) {
        if (start < 0) {
            if (counts[y] > kRowStartAbove)
                start = y;
            continue;
        }
        const int height = y - start;
        if (height < kRowNoEndBefore || counts[y] > kRowEndAtMost)
            continue;
        if (height > kRowKeptAbove)
            rows.emplace_back(0, start, image.cols, height);
        start = -1;
    }
    return rows; // a row still open at the bottom is cut off: dropped
}

std::vector<cv::Rect> getBlockRects(const cv::Mat& rowImage, int rowTop)
{
    std::vector<cv::Rect> blocks;
    if (rowImage.empty())
        return blocks;
    cv::Mat fused;
    cv::dilate(rowImage, fused, cv::getStructuringElement(cv::MORPH_RECT, kFuse));
    const std::vector<int> counts = inkCounts(fused, true);
    int start = -1;
    for (int x = 0; x < static_cast<int>(counts.size()); ++x) {
        if (start < 0) {
            if (counts[x] > kBlockAbove)
                start = x;
            continue;
        }
        if (x - start < kBlockNoEndBefore || counts[x] > kBlockAbove)
            continue;
        appendOrWiden(blocks, cv::Rect(start, rowTop, x - start, rowImage.rows));
        start = -1;
    }
    return blocks; // a block still open at the right edge is dropped
}
