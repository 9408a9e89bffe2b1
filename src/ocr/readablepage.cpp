// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/readablepage.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace {

// All is done at half size: pixels at 150 dpi.
constexpr double kHalf = 0.5;
constexpr double kBlur = 0.6; // sigma
// Sizes of structuring elements are odd: opening with an even one moves the picture. Rules across are longer
// than a dash with the strokes beside it.
constexpr int kRuleAcross = 111, kRuleUpright = 81;
constexpr int kTooThick = 11; // with what the blur adds
constexpr int kBridged = 3;   // gaps in a rule
constexpr int kThresholdBlock = 41, kThresholdOffset = 20;
// The paper's colour at a place is the median of a smaller copy around it: of 120 pixels across.
constexpr int kPaperGrain = 4, kPaperReach = 15;
// What differs from the paper by less than this is paper: five deviations of the noise, within limits.
constexpr double kNoiseFactor = 5, kLeastContrast = 8, kMostContrast = 30;
// Ink of the layout's picture is widened by this much at each side: short rows (page numbers, the last word
// of a paragraph) have too little ink to be seen as rows, or to be seen in their full height.
constexpr int kWidened = 1;
constexpr double kDeviation = 1.48; // standard deviation of a normal distribution by its median

cv::Mat blurred(const cv::Mat& half)
{
    cv::Mat out;
    cv::GaussianBlur(half, out, cv::Size(), kBlur);
    return out;
}

cv::Mat paperOf(const cv::Mat& half)
{
    cv::Mat paper;
    cv::resize(half, paper, cv::Size(half.cols / kPaperGrain, half.rows / kPaperGrain), 0, 0, cv::INTER_AREA);
    cv::medianBlur(paper, paper, kPaperReach);
    cv::resize(paper, paper, half.size(), 0, 0, cv::INTER_LINEAR);
    return paper;
}

// Thin straight strokes along x.
cv::Mat rulesAcross(const cv::Mat& ink, int length)
{
    cv::Mat lines, thick;
    cv::morphologyEx(ink, lines, cv::MORPH_CLOSE, cv::Mat::ones(1, kBridged, CV_8U));
    cv::morphologyEx(lines, lines, cv::MORPH_OPEN, cv::Mat::ones(1, length, CV_8U));
    cv::morphologyEx(lines, thick, cv::MORPH_OPEN, cv::Mat::ones(kTooThick, 1, CV_8U));
    return lines & ~thick;
}

// Where rules lie; empty when there are none.
cv::Mat findRules(const cv::Mat& smooth)
{
    cv::Mat ink;
    cv::adaptiveThreshold(smooth, ink, 255, cv::ADAPTIVE_THRESH_MEAN_C, cv::THRESH_BINARY_INV,
                          kThresholdBlock, kThresholdOffset);
    cv::Mat rules = rulesAcross(ink, kRuleAcross);
    const cv::Mat upright = rulesAcross(ink.t(), kRuleUpright);
    rules |= upright.t();
    if (cv::countNonZero(rules) == 0)
        return cv::Mat();
    cv::dilate(rules, rules, cv::Mat()); // the blurred edges too
    return rules;
}

int medianOf(const cv::Mat& levels)
{
    const int channel = 0, bins = 256;
    const float range[] = {0, 256};
    const float* ranges = range;
    cv::Mat histogram;
    cv::calcHist(&levels, 1, &channel, cv::noArray(), histogram, 1, &bins, &ranges);
    double below = 0;
    int level = 0;
    while (level < bins - 1 && (below += histogram.at<float>(level)) < levels.total() / 2.0)
        ++level;
    return level;
}

// Paper and its noise get the paper's colour.
cv::Mat evened(const cv::Mat& smooth, const cv::Mat& paper)
{
    cv::Mat difference, out = smooth.clone();
    cv::absdiff(smooth, paper, difference);
    const double noise = kDeviation * medianOf(difference);
    const double contrast = std::clamp(kNoiseFactor * noise, kLeastContrast, kMostContrast);
    paper.copyTo(out, difference < contrast);
    return out;
}

cv::Mat widened(const cv::Mat& smooth)
{
    cv::Mat out;
    cv::erode(smooth, out, cv::Mat::ones(1, 2 * kWidened + 1, CV_8U));
    return out;
}

} // namespace

ReadablePage readablePage(const cv::Mat& frame)
{
    ReadablePage page;
    if (frame.channels() == 3)
        cv::cvtColor(frame, page.clean, cv::COLOR_BGR2GRAY);
    else
        page.clean = frame;
    cv::Mat half, fullPaper;
    cv::resize(page.clean, half, cv::Size(), kHalf, kHalf, cv::INTER_AREA);
    const cv::Mat paper = paperOf(half);
    cv::Mat smooth = blurred(half);
    cv::Mat rules = findRules(smooth);
    if (!rules.empty()) {
        paper.copyTo(half, rules);
        smooth = blurred(half);
        page.clean = page.clean.clone(); // a grey frame is the caller's
        cv::resize(paper, fullPaper, page.clean.size(), 0, 0, cv::INTER_LINEAR);
        cv::resize(rules, rules, page.clean.size(), 0, 0, cv::INTER_NEAREST);
        fullPaper.copyTo(page.clean, rules);
    }
    cv::resize(widened(evened(smooth, paper)), page.smooth, page.clean.size(), 0, 0, cv::INTER_LINEAR);
    return page;
}
