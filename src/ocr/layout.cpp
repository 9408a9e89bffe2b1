// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/layout.h"

#include "recognition/projection.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <opencv2/imgproc.hpp>

namespace {

constexpr std::int64_t kReducedFrom = 1'000'001; // pixels
constexpr int kPortraitWidth = 800, kLandscapeWidth = 1000;
constexpr int kThresholdBlock = 15, kThresholdOffset = 5;

cv::Mat reduced(const cv::Mat& page)
{
    if (static_cast<std::int64_t>(page.cols) * page.rows < kReducedFrom)
        return page;
    const int width = page.cols > page.rows ? kLandscapeWidth : kPortraitWidth;
    const double height = std::round(static_cast<double>(page.rows) / page.cols * width);
    cv::Mat small;
    cv::resize(page, small, cv::Size(width, std::max(1, static_cast<int>(height))), 0, 0, cv::INTER_LINEAR);
    return small;
}

} // namespace

cv::Mat reducedInk(const cv::Mat& page)
{
    if (page.empty())
        return cv::Mat();
    cv::Mat grey = reduced(page);
    if (grey.channels() == 3)
        cv::cvtColor(grey, grey, cv::COLOR_BGR2GRAY);
    cv::Mat ink;
    cv::adaptiveThreshold(grey, ink, 255, cv::ADAPTIVE_THRESH_MEAN_C, cv::THRESH_BINARY_INV, kThresholdBlock,
                          kThresholdOffset);
    return ink;
}

QMap<int, zarnRECT> findTextBoxes(const cv::Mat& page)
{
    QMap<int, zarnRECT> boxes;
    const cv::Mat ink = reducedInk(page);
    for (const cv::Rect& row : getRowRects(ink))
        for (const cv::Rect& block : getBlockRects(ink(row), row.y))
            boxes.insert(boxes.size(), zarnRECT{block.x, block.y, block.width, block.height});
    return boxes;
}

cv::Rect onPage(const zarnRECT& box)
{
    const auto scaled = [](int pixels) { return static_cast<int>(pixels * kPageFactor); };
    return {scaled(box.x), scaled(box.y), scaled(box.width), scaled(box.height)};
}

bool withinFrame(const cv::Rect& box)
{
    return box.x + box.width <= kPageFrame.width && box.y + box.height <= kPageFrame.height;
}

std::vector<cv::Rect> onPage(const QMap<int, zarnRECT>& boxes)
{
    std::vector<cv::Rect> rects;
    rects.reserve(static_cast<std::size_t>(boxes.size()));
    for (const zarnRECT& box : boxes)
        rects.push_back(onPage(box));
    return rects;
}
