// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/pageframe.h"

#include "imageconvert/picture.h"
#include "imageconvert/picturereader.h"
#include "ocr/layout.h"

#include <QFile>
#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace {

constexpr double kFrameDpi = 300;

// Rules are looked for at half size: lengths in pixels at 150 dpi.
constexpr double kHalf = 0.5;
constexpr int kRuleLength = 80;
constexpr int kRuleThickness = 7;
constexpr int kBridged = 3; // gaps in a rule
constexpr int kThresholdBlock = 41, kThresholdOffset = 20;
constexpr int kPaperGrain = 8; // the paper's colour is taken from a copy this much smaller
constexpr int kPaperReach = 5; // of its pixels, so that a rule with text beside it still finds paper

// Thin straight strokes along x.
cv::Mat rulesAcross(const cv::Mat& ink)
{
    cv::Mat lines, thick;
    cv::morphologyEx(ink, lines, cv::MORPH_CLOSE, cv::Mat::ones(1, kBridged, CV_8U));
    cv::morphologyEx(lines, lines, cv::MORPH_OPEN, cv::Mat::ones(1, kRuleLength, CV_8U));
    cv::morphologyEx(lines, thick, cv::MORPH_OPEN, cv::Mat::ones(kRuleThickness + 1, 1, CV_8U));
    return lines & ~thick;
}

cv::Mat findRules(const cv::Mat& grey)
{
    cv::Mat small, ink;
    cv::resize(grey, small, cv::Size(), kHalf, kHalf, cv::INTER_AREA);
    cv::adaptiveThreshold(small, ink, 255, cv::ADAPTIVE_THRESH_MEAN_C, cv::THRESH_BINARY_INV, kThresholdBlock,
                          kThresholdOffset);
    cv::Mat rules = rulesAcross(ink);
    cv::Mat upright = rulesAcross(ink.t());
    rules |= upright.t();
    if (cv::countNonZero(rules) == 0)
        return cv::Mat();
    cv::dilate(rules, rules, cv::Mat()); // the blurred edges too
    cv::resize(rules, rules, grey.size(), 0, 0, cv::INTER_NEAREST);
    return rules;
}

// The brightness of the paper at each place.
cv::Mat paperOf(const cv::Mat& grey)
{
    cv::Mat paper;
    cv::resize(grey, paper, cv::Size(grey.cols / kPaperGrain, grey.rows / kPaperGrain), 0, 0, cv::INTER_AREA);
    cv::dilate(paper, paper, cv::Mat::ones(kPaperReach, kPaperReach, CV_8U));
    cv::resize(paper, paper, grey.size(), 0, 0, cv::INTER_LINEAR);
    return paper;
}

} // namespace

LoadedPage loadPage(const QString& file)
{
    LoadedPage page;
    try {
        const imageconvert::ReadResult read =
            imageconvert::readPicture(QFile::encodeName(file).toStdString());
        page.pixels = read.pixels;
        if (page.pixels.channels() == 3)
            cv::cvtColor(page.pixels, page.pixels, cv::COLOR_RGB2BGR);
        page.dpi = read.dpi > 0 ? read.dpi : imageconvert::guessDpi(page.pixels.size());
    } catch (const std::exception& error) {
        page.pixels.release();
        page.problem = QString::fromUtf8(error.what());
    }
    return page;
}

cv::Mat layOnFrame(const cv::Mat& page, double dpi)
{
    if (page.empty() || page.size() == kPageFrame)
        return page;
    const double fit = std::min(static_cast<double>(kPageFrame.width) / page.cols,
                                static_cast<double>(kPageFrame.height) / page.rows);
    const double factor = std::min(dpi > 0 ? kFrameDpi / dpi : 1.0, fit);
    const cv::Size size(std::clamp(static_cast<int>(std::lround(page.cols * factor)), 1, kPageFrame.width),
                        std::clamp(static_cast<int>(std::lround(page.rows * factor)), 1, kPageFrame.height));
    cv::Mat frame(kPageFrame, page.type(), cv::Scalar::all(255));
    cv::Mat place = frame(cv::Rect(cv::Point(), size));
    if (size == page.size())
        page.copyTo(place);
    else
        cv::resize(page, place, size, 0, 0, factor < 1 ? cv::INTER_AREA : cv::INTER_CUBIC);
    return frame;
}

cv::Mat withoutRules(const cv::Mat& frame)
{
    cv::Mat grey = frame;
    if (frame.channels() == 3)
        cv::cvtColor(frame, grey, cv::COLOR_BGR2GRAY);
    const cv::Mat rules = findRules(grey);
    if (rules.empty())
        return grey;
    cv::Mat clean = grey.data == frame.data ? grey.clone() : grey;
    paperOf(grey).copyTo(clean, rules);
    return clean;
}
