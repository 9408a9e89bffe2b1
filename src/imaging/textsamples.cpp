// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/textsamples.h"

#include "imaging/textskew.h"
#include "recognition/projection.h"

#include <QDebug>
#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace {

// Lengths are pixels of the reduced page (about 90 dpi for A4) where nothing else is said.
constexpr std::int64_t kLargeAbove = 1'000'000;
constexpr int kPortraitWidth = 800, kLandscapeWidth = 1000;
constexpr double kPortraitScale = 3.1, kLandscapeScale = 3.51; // reduced page to A4 at 300 dpi
constexpr int kThresholdBlock = 25, kThresholdOffset = 15;

constexpr int kMaxAspect = 20;    // a longer strip is no page, and its copy at full width would be huge
constexpr int kRulingLength = 45; // straight strokes as long as this are rulings
constexpr int kMinLine = 9, kMaxLine = 70;                // height of a text line
constexpr double kMinCharacters = 4, kMaxCharacters = 24; // width of a sample in line heights
constexpr double kMinFill = 0.10, kMaxFill = 0.60; // share of ink; less is dots and rules, more is picture
constexpr double kMiddleFrom = 0.12, kMiddleTo = 0.88; // the middle of the page, as shares of its height
constexpr int kMaxCutDepth = 3;
// Height of a sample's line in its own pixels: larger characters are read slower and no better.
constexpr int kSampleLine = 30;

struct Reduced
{
    cv::Mat ink;       // two-level, ink 255
    double factor = 1; // full-resolution pixels per reduced pixel
    double scale = 1;  // pixels of a sample per reduced pixel, at most
};

struct Line
{
    cv::Rect rect;
    double characters = 0; // its length in line heights, capped
    bool inMiddle = false;
};

Reduced reduce(const cv::Mat& page)
{
    Reduced reduced;
    cv::Mat small = page;
    if (static_cast<std::int64_t>(page.rows) * page.cols > kLargeAbove) {
        const bool portrait = page.rows >= page.cols;
        const int width = portrait ? kPortraitWidth : kLandscapeWidth;
        const int height = std::max(1, static_cast<int>(static_cast<double>(page.rows) / page.cols * width));
        cv::resize(page, small, cv::Size(width, height), 0, 0, cv::INTER_LINEAR);
        reduced.factor = static_cast<double>(page.cols) / width;
        reduced.scale = std::min(reduced.factor, portrait ? kPortraitScale : kLandscapeScale);
    }
    cv::Mat grey;
    cv::cvtColor(small, grey, cv::COLOR_BGR2GRAY);
    cv::adaptiveThreshold(grey, reduced.ink, 255, cv::ADAPTIVE_THRESH_MEAN_C, cv::THRESH_BINARY_INV,
                          kThresholdBlock, kThresholdOffset);
    return reduced;
}

// Where straight strokes at least `across` long lie, or `down` long from top to bottom (pixels).
cv::Mat findRulings(const cv::Mat& ink, int across, int down)
{
    cv::Mat rulings, upright;
    cv::morphologyEx(ink, rulings, cv::MORPH_OPEN, cv::Mat::ones(1, across, CV_8U));
    cv::morphologyEx(ink, upright, cv::MORPH_OPEN, cv::Mat::ones(down, 1, CV_8U));
    rulings |= upright;
    cv::dilate(rulings, rulings, cv::Mat());
    return rulings;
}

bool isTextLine(const cv::Mat& ink, const cv::Rect& rect)
{
    if (rect.height < kMinLine || rect.height > kMaxLine || rect.width < kMinCharacters * rect.height)
        return false;
    const double fill = static_cast<double>(cv::countNonZero(ink(rect))) / rect.area();
    return fill >= kMinFill && fill <= kMaxFill;
}

// Shortens a long line at a gap between two characters.
cv::Rect capped(const cv::Mat& ink, cv::Rect rect)
{
    const int longest = static_cast<int>(kMaxCharacters * rect.height);
    if (rect.width <= longest)
        return rect;
    int width = longest;
    while (width > longest - rect.height &&
           cv::countNonZero(ink(cv::Rect(rect.x + width, rect.y, 1, rect.height))) > 0)
        --width;
    rect.width = width;
    return rect;
}

// Cuts an area into rows and blocks; what is too tall for one line (columns side by side, a heading next to a
// picture) is cut again by itself.
void cutLines(const cv::Mat& ink, const cv::Rect& area, int depth, std::vector<Line>& lines)
{
    for (const cv::Rect& row : getRowRects(ink(area))) {
        for (const cv::Rect& block :
             getBlockRects(ink(cv::Rect(area.x, area.y + row.y, area.width, row.height)), row.y)) {
            const cv::Rect place(block.x + area.x, block.y + area.y, block.width, block.height);
            cv::Rect rect = cv::boundingRect(ink(place));
            if (rect.empty())
                continue;
            rect += place.tl();
            if (rect.height > kMinLine * 2 && depth < kMaxCutDepth && place.area() < area.area() * 0.95) {
                cv::Rect again(rect.x, rect.y, rect.width + 1, rect.height + 2);
                const std::size_t before = lines.size();
                cutLines(ink, again & cv::Rect(0, 0, ink.cols, ink.rows), depth + 1, lines);
                if (lines.size() > before)
                    continue;
            }
            if (!isTextLine(ink, rect))
                continue;
            const double middle = (rect.y + rect.height / 2.0) / ink.rows;
            rect = capped(ink, rect);
            lines.push_back({rect, static_cast<double>(rect.width) / rect.height,
                             middle >= kMiddleFrom && middle <= kMiddleTo});
        }
    }
}

bool sameRow(const cv::Rect& a, const cv::Rect& b)
{
    return a.y < b.br().y && b.y < a.br().y;
}

// The two longest lines of different rows, those of the middle of the page first.
std::vector<cv::Rect> chooseTwo(std::vector<Line> lines, int pageHeight)
{
    const auto fromMiddle = [&](const Line& line) {
        return std::abs(2 * line.rect.y + line.rect.height - pageHeight);
    };
    std::sort(lines.begin(), lines.end(), [&](const Line& a, const Line& b) {
        if (a.inMiddle != b.inMiddle)
            return a.inMiddle;
        if (std::lround(a.characters / 3) != std::lround(b.characters / 3))
            return a.characters > b.characters;
        return fromMiddle(a) < fromMiddle(b);
    });
    std::vector<cv::Rect> chosen;
    for (const Line& line : lines) {
        if (chosen.empty() || !sameRow(chosen.front(), line.rect))
            chosen.push_back(line.rect);
        if (chosen.size() == 2)
            break;
    }
    return chosen;
}

// The brightness of the paper: of more than half of a sample's pixels.
int paperLevel(const cv::Mat& grey)
{
    std::vector<uchar> levels(grey.begin<uchar>(), grey.end<uchar>());
    const auto median = levels.begin() + levels.size() / 2;
    std::nth_element(levels.begin(), median, levels.end());
    return *median;
}

// A sample dark on bright, without rulings and with a rim of bare paper: rulings, and characters cut at the
// sides, are misread and spoil the confidence.
cv::Mat cleaned(const cv::Mat& grey)
{
    cv::Mat ink, sample;
    const double threshold = cv::threshold(grey, ink, 0, 255, cv::THRESH_BINARY_INV | cv::THRESH_OTSU);
    if (paperLevel(grey) > threshold) {
        sample = grey.clone();
    } else {
        cv::bitwise_not(grey, sample);
        cv::bitwise_not(ink, ink);
    }
    const int paper = paperLevel(sample);
    sample.setTo(paper, findRulings(ink, 2 * kSampleLine, grey.rows * 9 / 10));
    const int side = grey.rows / 3, above = grey.rows / 6;
    cv::copyMakeBorder(sample, sample, above, above, side, side, cv::BORDER_CONSTANT, cv::Scalar(paper));
    return sample;
}

// The text line at `rect` of the straightened reduced page, cut from the full page. `straighten` (2x3) leads
// from the reduced page to the straightened one.
cv::Mat cutSample(const cv::Mat& page, const Reduced& reduced, const cv::Mat& straighten,
                  const cv::Rect& rect)
{
    const int margin = std::max(2, rect.height / 4);
    const cv::Rect tall(rect.x, rect.y - margin, rect.width, rect.height + 2 * margin);
    const double scale = reduced.scale;
    cv::Mat map; // sample pixel to page pixel, by way of the reduced page
    cv::invertAffineTransform(straighten, map);
    for (int i = 0; i < 2; ++i) {
        double* row = map.ptr<double>(i);
        row[2] = (row[0] * tall.x + row[1] * tall.y + row[2]) * reduced.factor;
        row[0] *= reduced.factor / scale;
        row[1] *= reduced.factor / scale;
    }
    cv::Mat colour, grey;
    cv::warpAffine(page, colour, map, cv::Size(cvRound(tall.width * scale), cvRound(tall.height * scale)),
                   cv::INTER_LINEAR | cv::WARP_INVERSE_MAP, cv::BORDER_REPLICATE);
    cv::cvtColor(colour, grey, cv::COLOR_BGR2GRAY);
    const double shrink = kSampleLine / (scale * rect.height);
    if (shrink < 1)
        cv::resize(grey, grey, cv::Size(), shrink, shrink, cv::INTER_AREA);
    return cleaned(grey);
}

} // namespace

std::vector<cv::Mat> findTextSamples(const cv::Mat& page)
{
    std::vector<cv::Mat> samples;
    if (std::max(page.rows, page.cols) > kMaxAspect * std::min(page.rows, page.cols))
        return samples;
    const Reduced reduced = reduce(page);
    qDebug("find sample rect");
    cv::Mat text = reduced.ink;
    text.setTo(0, findRulings(text, kRulingLength, kRulingLength)); // they tie lines of text together
    const std::optional<double> skew = textSkew(text);
    if (!skew)
        return samples;
    const cv::Point2f centre(text.cols / 2.0f, text.rows / 2.0f);
    const cv::Mat straighten = cv::getRotationMatrix2D(centre, *skew, 1);
    cv::Mat straight;
    cv::warpAffine(text, straight, straighten, text.size(), cv::INTER_NEAREST);
    std::vector<Line> lines;
    cutLines(straight, cv::Rect(0, 0, straight.cols, straight.rows), 0, lines);
    const std::vector<cv::Rect> rects = chooseTwo(lines, straight.rows);
    qDebug() << "countrects: " << lines.size() << "lrects: " << rects.size();
    if (rects.size() < 2)
        return samples;
    for (std::size_t i = 0; i < rects.size(); ++i) {
        const cv::Rect& rect = rects[i];
        qDebug() << (i == 0 ? "rect1: " : "rect2: ") << rect.x << rect.y << rect.width << rect.height;
        samples.push_back(cutSample(page, reduced, straighten, rect));
    }
    return samples;
}
