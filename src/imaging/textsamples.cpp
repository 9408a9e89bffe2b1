// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/textsamples.h"

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

constexpr int kRulerLength = 45;                          // straight strokes as long as this are rulings
constexpr double kMaxSkewDeg = 10.0;                      // degrees
constexpr int kMinLine = 9, kMaxLine = 70;                // height of a text line
constexpr double kMinCharacters = 4, kMaxCharacters = 16; // width of a sample in line heights
constexpr double kMinFill = 0.10, kMaxFill = 0.60; // share of ink; less is dots and rules, more is picture
constexpr double kMiddleFrom = 0.12, kMiddleTo = 0.88; // the middle of the page, as shares of its height
constexpr int kMaxCutDepth = 3;
constexpr int kMaxSampleLine =
    48; // height of a sample's line in its own pixels; larger characters are read no better

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

// Table rulings and paper edges tie text lines together: they go before the search.
cv::Mat withoutRulings(const cv::Mat& ink)
{
    cv::Mat rulings, vertical;
    cv::morphologyEx(ink, rulings, cv::MORPH_OPEN,
                     cv::getStructuringElement(cv::MORPH_RECT, cv::Size(kRulerLength, 1)));
    cv::morphologyEx(ink, vertical, cv::MORPH_OPEN,
                     cv::getStructuringElement(cv::MORPH_RECT, cv::Size(1, kRulerLength)));
    rulings |= vertical;
    cv::dilate(rulings, rulings, cv::Mat());
    cv::Mat text = ink.clone();
    text.setTo(0, rulings);
    return text;
}

// How clearly the ink falls into horizontal lines when sheared by `slope`: the sum of squared row counts.
double lineContrast(const std::vector<cv::Point>& points, double slope, std::vector<int>& bins)
{
    std::fill(bins.begin(), bins.end(), 0);
    const int offset = static_cast<int>(bins.size()) / 4;
    for (const cv::Point& point : points) {
        const int bin = offset + static_cast<int>(std::lround(point.y - slope * point.x));
        if (bin >= 0 && bin < static_cast<int>(bins.size()))
            ++bins[bin];
    }
    double sum = 0;
    for (const int count : bins)
        sum += static_cast<double>(count) * count;
    return sum;
}

// The clockwise turn of the text lines in degrees, found by trying shears.
double skewOf(const cv::Mat& ink)
{
    constexpr int kPoints = 20000;
    constexpr double kPi = 3.14159265358979;
    std::vector<cv::Point> all, points;
    cv::findNonZero(ink, all);
    const std::size_t step = all.size() / kPoints + 1;
    for (std::size_t i = 0; i < all.size(); i += step)
        points.push_back(all[i]);
    std::vector<int> bins(2 * (ink.rows + ink.cols));
    double best = 0, bestContrast = 0;
    const auto search = [&](double from, double to, double by) {
        for (double angle = from; angle <= to + 1e-9; angle += by) {
            const double contrast = lineContrast(points, std::tan(angle * kPi / 180), bins);
            if (contrast > bestContrast) {
                bestContrast = contrast;
                best = angle;
            }
        }
    };
    search(-kMaxSkewDeg, kMaxSkewDeg, 0.5);
    search(best - 0.4, best + 0.4, 0.1);
    return best;
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

// `rect` lies on the straightened reduced page; `straighten` (2x3) led there from the reduced page.
cv::Mat cutSample(const cv::Mat& page, const Reduced& reduced, const cv::Mat& straighten,
                  const cv::Rect& rect)
{
    const int margin = std::max(3, rect.height / 4);
    const cv::Rect wide(rect.x - margin, rect.y - margin, rect.width + 2 * margin, rect.height + 2 * margin);
    const double scale =
        std::min(reduced.scale, std::max(1.0, static_cast<double>(kMaxSampleLine) / rect.height));
    const cv::Size size(cvRound(wide.width * scale), cvRound(wide.height * scale));

    cv::Mat back; // straightened reduced page to reduced page
    cv::invertAffineTransform(straighten, back);
    cv::Mat map = cv::Mat::zeros(2, 3, CV_64F); // sample pixel to page pixel
    for (int i = 0; i < 2; ++i) {
        const double a = back.at<double>(i, 0), b = back.at<double>(i, 1), c = back.at<double>(i, 2);
        map.at<double>(i, 0) = a / scale * reduced.factor;
        map.at<double>(i, 1) = b / scale * reduced.factor;
        map.at<double>(i, 2) = (a * wide.x + b * wide.y + c) * reduced.factor;
    }
    cv::Mat colour, sample;
    cv::warpAffine(page, colour, map, size, cv::INTER_LINEAR | cv::WARP_INVERSE_MAP, cv::BORDER_REPLICATE);
    cv::cvtColor(colour, sample, cv::COLOR_BGR2GRAY);
    return sample;
}

} // namespace

std::vector<cv::Mat> findTextSamples(const cv::Mat& page)
{
    std::vector<cv::Mat> samples;
    const Reduced reduced = reduce(page);
    qDebug("find sample rect");
    const cv::Mat text = withoutRulings(reduced.ink);
    const cv::Mat straighten =
        cv::getRotationMatrix2D(cv::Point2f(text.cols / 2.0f, text.rows / 2.0f), skewOf(text), 1);
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
