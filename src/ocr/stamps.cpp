// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/stamps.h"

#include "ocr/medianlevel.h"

#include <algorithm>
#include <array>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace {

// Stamps are looked for at a quarter of the size: pixels at 75 dpi.
constexpr double kQuarter = 0.25;
constexpr int kInFull = 4;
constexpr int kLeastSide = 53, kMostSide = 177; // 18 and 60 mm
constexpr double kMostFilled = 0.6; // of the box around it: less than a picture or a coloured field
constexpr int kLeastChroma = 40;    // levels from the weakest to the strongest channel, above the paper's
constexpr int kBlack = 110;         // of the strongest channel
constexpr int kLeastBlack = 40;     // pixels in the stamp's rows: two small characters
constexpr int kEdge = 5;            // pixels: the scan's blur carries the colour beyond the stroke

struct Channels
{
    cv::Mat strongest, chroma;
};

Channels channelsOf(const cv::Mat& page)
{
    std::array<cv::Mat, 3> planes;
    cv::split(page, planes.data());
    cv::Mat weakest;
    Channels channels;
    cv::max(planes[0], planes[1], channels.strongest);
    cv::max(channels.strongest, planes[2], channels.strongest);
    cv::min(planes[0], planes[1], weakest);
    cv::min(weakest, planes[2], weakest);
    channels.chroma = channels.strongest - weakest;
    return channels;
}

int chromaOfInk(const cv::Mat& chroma)
{
    return medianLevel(chroma) + kLeastChroma;
}

bool hasStampShape(const cv::Rect& box, int pixels)
{
    return std::min(box.width, box.height) >= kLeastSide && std::max(box.width, box.height) <= kMostSide &&
           pixels < kMostFilled * box.area();
}

// Boxes at the page's full size, with the edge of their strokes.
std::vector<cv::Rect> findStamps(const cv::Mat& frame)
{
    cv::Mat small, coloured, labels, stats, centroids;
    cv::resize(frame, small, cv::Size(), kQuarter, kQuarter, cv::INTER_AREA);
    const Channels channels = channelsOf(small);
    coloured = channels.chroma >= chromaOfInk(channels.chroma);
    cv::morphologyEx(coloured, coloured, cv::MORPH_CLOSE, cv::Mat::ones(3, 3, CV_8U)); // worn rings
    const cv::Mat black = (channels.strongest < kBlack) & ~coloured;
    const int count = cv::connectedComponentsWithStats(coloured, labels, stats, centroids);
    std::vector<cv::Rect> stamps;
    for (int i = 1; i < count; ++i) {
        const cv::Rect box(stats.at<int>(i, cv::CC_STAT_LEFT), stats.at<int>(i, cv::CC_STAT_TOP),
                           stats.at<int>(i, cv::CC_STAT_WIDTH), stats.at<int>(i, cv::CC_STAT_HEIGHT));
        if (!hasStampShape(box, stats.at<int>(i, cv::CC_STAT_AREA)) ||
            cv::countNonZero(black.rowRange(box.y, box.br().y)) < kLeastBlack)
            continue;
        const cv::Rect full(box.x * kInFull - kEdge, box.y * kInFull - kEdge, box.width * kInFull + 2 * kEdge,
                            box.height * kInFull + 2 * kEdge);
        stamps.push_back(full & cv::Rect(cv::Point(), frame.size()));
    }
    return stamps;
}

// In the stamp's strongest channel its ink is nearly as light as paper; text is dark in all of them.
// Stretching that channel from the ink's level to the paper's makes the stamp paper and leaves the text.
void fade(const cv::Mat& frame, const cv::Rect& box, cv::Mat& grey)
{
    const Channels channels = channelsOf(frame(box));
    cv::Mat ink, faded;
    const cv::Mat stroke = channels.chroma >= chromaOfInk(channels.chroma);
    const double inkLevel = cv::mean(channels.strongest, stroke)[0];
    const double paperLevel = cv::mean(grey(box), ~stroke & (channels.strongest >= kBlack))[0];
    cv::dilate(stroke, ink, cv::Mat::ones(kEdge, kEdge, CV_8U));
    channels.strongest.convertTo(faded, CV_8U, paperLevel / std::max(1.0, inkLevel));
    cv::min(faded, paperLevel, faded);
    faded.copyTo(grey(box), ink);
}

} // namespace

cv::Mat greyWithoutStamps(const cv::Mat& frame)
{
    cv::Mat grey;
    cv::cvtColor(frame, grey, cv::COLOR_BGR2GRAY);
    for (const cv::Rect& stamp : findStamps(frame))
        fade(frame, stamp, grey);
    return grey;
}
