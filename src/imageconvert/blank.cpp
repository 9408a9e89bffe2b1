// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/blank.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace imageconvert {

namespace {

constexpr double kRimMm = 4;                     // what touches the frame within this is rim, not ink
constexpr double kDustMm2 = 0.35;                // smaller marks are dust unless others stand beside them
constexpr double kNeighbourMm = 3;               // letters stand this close
constexpr double kHoleMinMm = 4, kHoleMaxMm = 9; // punch holes
constexpr double kWindowMm = 10;

struct Scale
{
    double dpi;
    double px(double mm) const { return mm * dpi / 25.4; }
    double mm2(double pixels) const { return pixels * 25.4 * 25.4 / dpi / dpi; }
};

cv::Mat darkness(const cv::Mat& grey, const Scale& scale)
{
    // Strokes and dust vanish in the closing; holes and stamps of up to 12 mm too.
    const int reach = std::max(3, static_cast<int>(scale.px(12)) | 1);
    cv::Mat paper, dark;
    cv::morphologyEx(grey, paper, cv::MORPH_CLOSE, cv::getStructuringElement(cv::MORPH_RECT, {reach, reach}),
                     {-1, -1}, 1, cv::BORDER_REPLICATE);
    cv::blur(paper, paper, {reach / 2 | 1, reach / 2 | 1}, {-1, -1}, cv::BORDER_REPLICATE);
    cv::subtract(paper, grey, dark);
    return dark;
}

bool isHole(const cv::Rect& box, int area, const cv::Size& page, const Scale& scale)
{
    const double least = std::min(box.width, box.height), most = std::max(box.width, box.height);
    const bool round = least > 0.75 * most && area > 0.65 * box.area();
    const bool size = least >= scale.px(kHoleMinMm) && most <= scale.px(kHoleMaxMm);
    const double margin = scale.px(22);
    const bool outside = box.x < margin || box.y < margin || box.br().x > page.width - margin ||
                         box.br().y > page.height - margin;
    return round && size && outside;
}

bool isRim(const cv::Rect& box, const cv::Size& page, const Scale& scale)
{
    const int rim = static_cast<int>(scale.px(kRimMm));
    const bool touches =
        box.x <= 1 || box.y <= 1 || box.br().x >= page.width - 1 || box.br().y >= page.height - 1;
    const bool within =
        box.br().x <= rim || box.br().y <= rim || box.x >= page.width - rim || box.y >= page.height - rim;
    const bool alongFrame = touches && (box.width > page.width / 3 || box.height > page.height / 3);
    return (touches && within) || alongFrame;
}

// The marks that count as ink.
cv::Mat inkOf(const cv::Mat& dark, int least, const Scale& scale)
{
    cv::Mat mask = dark >= least, labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(mask, labels, stats, centres, 8, CV_32S);
    std::vector<char> keep(static_cast<size_t>(count), 0), small(keep);
    std::vector<cv::Rect> boxes(static_cast<size_t>(count));
    for (int i = 1; i < count; ++i) {
        const int* s = stats.ptr<int>(i);
        boxes[static_cast<size_t>(i)] = {s[cv::CC_STAT_LEFT], s[cv::CC_STAT_TOP], s[cv::CC_STAT_WIDTH],
                                         s[cv::CC_STAT_HEIGHT]};
        const cv::Rect& box = boxes[static_cast<size_t>(i)];
        const int area = s[cv::CC_STAT_AREA];
        if (isRim(box, mask.size(), scale) || isHole(box, area, mask.size(), scale))
            continue;
        small[static_cast<size_t>(i)] = scale.mm2(area) < kDustMm2;
        keep[static_cast<size_t>(i)] = !small[static_cast<size_t>(i)];
    }
    cv::Mat ink(mask.size(), CV_8UC1, cv::Scalar(0));
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x)
            if (keep[static_cast<size_t>(labels.at<int>(y, x))])
                ink.at<uchar>(y, x) = 255;
    return ink;
}

} // namespace

BlankResult detectBlank(const cv::Mat& grey, double dpi, const BlankParams& params)
{
    BlankResult result;
    const Scale scale{dpi};
    const cv::Mat ink = inkOf(darkness(grey, scale), std::max(1, params.darkness), scale);
    const int side = std::max(1, static_cast<int>(std::lround(scale.px(kWindowMm))));
    cv::Mat share;
    cv::boxFilter(ink, share, CV_32F, {side, side}, {-1, -1}, true, cv::BORDER_CONSTANT);
    double most = 0;
    cv::minMaxLoc(share, nullptr, &most);
    result.percent = most / 255 * 100;
    result.blank = result.percent < params.percent;
    return result;
}

} // namespace imageconvert
