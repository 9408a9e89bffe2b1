// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/readablepage.h"

#include "ocr/medianlevel.h"
#include "ocr/stamps.h"

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
constexpr int kStroke = 5; // of that copy's pixels: 3.4 mm
// What differs from the paper by less than this is paper: five deviations of the noise, within limits.
constexpr double kNoiseFactor = 5, kLeastContrast = 8, kMostContrast = 30;
// Ink of the layout's picture is widened by this much at each side: short rows (page numbers, the last word
// of a paragraph) have too little ink to be seen as rows, or to be seen in their full height.
constexpr int kWidened = 1;
constexpr int kEdge = 6; // 1 mm: the shadow of a cropped page's edge
constexpr int kWhite = 250;
constexpr double kDeviation = 1.48; // standard deviation of a normal distribution by its median

cv::Mat blurred(const cv::Mat& half)
{
    cv::Mat out;
    cv::GaussianBlur(half, out, cv::Size(), kBlur);
    return out;
}

// The page on the white frame: from the top left to the last row and column that are not white all over.
cv::Size pageWithin(const cv::Mat& frame)
{
    cv::Mat columns, rows;
    cv::reduce(frame, columns, 0, cv::REDUCE_MIN);
    cv::reduce(frame, rows, 1, cv::REDUCE_MIN);
    cv::Size page = frame.size();
    while (page.width > 1 && columns.at<uchar>(0, page.width - 1) == 255)
        --page.width;
    while (page.height > 1 && rows.at<uchar>(page.height - 1, 0) == 255)
        --page.height;
    return page;
}

// The paper of `part`, going on to the frame as it ends.
cv::Mat extended(const cv::Mat& paper, const cv::Rect& part, const cv::Size& frame)
{
    cv::Mat out;
    cv::copyMakeBorder(paper, out, part.y, frame.height - part.br().y, part.x, frame.width - part.br().x,
                       cv::BORDER_REPLICATE);
    return out;
}

// Without strokes: of the picture with its dark strokes filled and with its light ones, at each place that
// which is nearer to the usual level there. A median alone sinks where small type stands close.
cv::Mat withoutStrokes(const cv::Mat& small)
{
    const cv::Mat stroke = cv::Mat::ones(kStroke, kStroke, CV_8U);
    cv::Mat light, dark, usual, toLight, toDark;
    cv::morphologyEx(small, light, cv::MORPH_CLOSE, stroke);
    cv::morphologyEx(small, dark, cv::MORPH_OPEN, stroke);
    cv::medianBlur(small, usual, kPaperReach);
    cv::absdiff(light, usual, toLight);
    cv::absdiff(dark, usual, toDark);
    dark.copyTo(light, toDark < toLight);
    return light;
}

cv::Mat paperOf(const cv::Mat& half)
{
    cv::Mat paper;
    const cv::Size small(std::max(1, half.cols / kPaperGrain), std::max(1, half.rows / kPaperGrain));
    cv::resize(half, paper, small, 0, 0, cv::INTER_AREA);
    cv::medianBlur(withoutStrokes(paper), paper, kPaperReach);
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

// What is written on of a page on its frame: not the shadow of a cropped page's edge. All of the frame where
// the paper is as white as the frame itself, for then the last ink is not the page's end.
cv::Rect writtenPart(const cv::Mat& half, const cv::Size& fullPage)
{
    const cv::Rect frame(cv::Point(), half.size());
    const cv::Rect page(0, 0, std::max(1, fullPage.width / 2), std::max(1, fullPage.height / 2));
    if (page == frame || page.width <= 4 * kEdge || page.height <= 4 * kEdge ||
        medianLevel(half(page)) >= kWhite)
        return frame;
    return {kEdge, kEdge, page.width - 2 * kEdge, page.height - 2 * kEdge};
}

// Paper and its noise get the paper's colour.
cv::Mat evened(const cv::Mat& smooth, const cv::Mat& paper, const cv::Rect& written)
{
    cv::Mat difference, out = smooth.clone();
    cv::absdiff(smooth, paper, difference);
    const double noise = kDeviation * medianLevel(difference(written));
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
        page.clean = greyWithoutStamps(frame);
    else
        page.clean = frame;
    cv::Mat half, fullPaper;
    cv::resize(page.clean, half, cv::Size(), kHalf, kHalf, cv::INTER_AREA);
    const cv::Rect written = writtenPart(half, pageWithin(page.clean));
    const cv::Mat paper = extended(paperOf(half(written)), written, half.size());
    // The step from coloured paper to the white frame would be ink that joins all rows: paper goes on
    // instead.
    const auto smoothed = [&] {
        cv::Mat out = paper.clone();
        blurred(half(written)).copyTo(out(written));
        return out;
    };
    cv::Mat smooth = smoothed();
    cv::Mat rules = findRules(smooth);
    if (!rules.empty()) {
        paper.copyTo(half, rules);
        smooth = smoothed();
        page.clean = page.clean.clone(); // a grey frame is the caller's
        cv::resize(paper, fullPaper, page.clean.size(), 0, 0, cv::INTER_LINEAR);
        cv::resize(rules, rules, page.clean.size(), 0, 0, cv::INTER_NEAREST);
        fullPaper.copyTo(page.clean, rules);
    }
    cv::resize(widened(evened(smooth, paper, written)), page.smooth, page.clean.size(), 0, 0,
               cv::INTER_LINEAR);
    return page;
}
