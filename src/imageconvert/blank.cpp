// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/blank.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace imageconvert {

namespace {

constexpr double kWindowMm = 10;
constexpr double kPaperMm = 12; // what is smaller than this is taken for something on the paper
constexpr double kRimMm = 4;    // what touches the frame within this is rim, not ink
constexpr double kHoleMinMm = 4, kHoleMaxMm = 9; // punch holes
constexpr double kHoleMarginMm = 22;
constexpr double kDustMm = 0.9; // marks of this size count only where there are many
constexpr int kManyDust = 8;
constexpr double kLoneInkMm2 = 0.32; // black ink below which a lone mark is a hair or a fleck
constexpr int kCompany = 4;          // marks in a window that are lone no more
constexpr double kSoftDarkness = 60; // darker marks are ink however soft
constexpr double kSharpness = 0.26;  // slope per pixel at 300 dpi over darkness: ink 0.37, show-through 0.2
constexpr double kMostSharpness = 0.36; // the slope filter cannot measure more than 0.5 per pixel
constexpr int kMostWindows = 80;
constexpr double kPictureRange = 90; // of the levels of the paper itself: more is a photograph

int odd(double value)
{
    return std::max(3, static_cast<int>(std::lround(value)) | 1);
}

cv::Mat paperOf(const cv::Mat& grey, double pxPerMm)
{
    const int reach = odd(kPaperMm * pxPerMm);
    cv::Mat paper;
    cv::morphologyEx(grey, paper, cv::MORPH_CLOSE, cv::getStructuringElement(cv::MORPH_RECT, {reach, reach}),
                     {-1, -1}, 1, cv::BORDER_REPLICATE);
    cv::blur(paper, paper, {odd(reach / 2.0), odd(reach / 2.0)}, {-1, -1}, cv::BORDER_REPLICATE);
    return paper;
}

// A picture from rim to rim has no paper to compare with.
bool isPicture(const cv::Mat& paper)
{
    const int x = paper.cols / 10, y = paper.rows / 10;
    std::vector<uchar> levels;
    for (int row = y; row < paper.rows - y; row += 3)
        for (int column = x; column < paper.cols - x; column += 3)
            levels.push_back(paper.at<uchar>(row, column));
    if (levels.size() < 20)
        return false;
    std::sort(levels.begin(), levels.end());
    const int low = levels[levels.size() / 20], high = levels[levels.size() * 19 / 20];
    return high - low > kPictureRange || levels[levels.size() / 2] < 90;
}

bool isHole(const cv::Rect& box, int area, const cv::Size& page, double pxPerMm)
{
    const double least = std::min(box.width, box.height), most = std::max(box.width, box.height);
    const bool round = least > 0.75 * most && area > 0.65 * box.area();
    const bool size = least >= kHoleMinMm * pxPerMm && most <= kHoleMaxMm * pxPerMm;
    const double margin = kHoleMarginMm * pxPerMm;
    const bool outside = box.x < margin || box.y < margin || box.br().x > page.width - margin ||
                         box.br().y > page.height - margin;
    return round && size && outside;
}

bool isRim(const cv::Rect& box, const cv::Size& page, double pxPerMm)
{
    const int rim = static_cast<int>(kRimMm * pxPerMm);
    const bool touches =
        box.x <= 1 || box.y <= 1 || box.br().x >= page.width - 1 || box.br().y >= page.height - 1;
    const bool within =
        box.br().x <= rim || box.br().y <= rim || box.x >= page.width - rim || box.y >= page.height - rim;
    const bool alongFrame = touches && (box.width > page.width / 3 || box.height > page.height / 3);
    return touches && (within || alongFrame);
}

// Rim and holes, a little enlarged since their edges are soft.
cv::Mat ignoredPlaces(const cv::Mat& mask, double pxPerMm)
{
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(mask, labels, stats, centres, 8, CV_32S);
    cv::Mat ignored(mask.size(), CV_8UC1, cv::Scalar(0));
    for (int i = 1; i < count; ++i) {
        const int* s = stats.ptr<int>(i);
        const cv::Rect box(s[cv::CC_STAT_LEFT], s[cv::CC_STAT_TOP], s[cv::CC_STAT_WIDTH],
                           s[cv::CC_STAT_HEIGHT]);
        if (isRim(box, mask.size(), pxPerMm) || isHole(box, s[cv::CC_STAT_AREA], mask.size(), pxPerMm))
            ignored(box).setTo(255, labels(box) == i);
    }
    const int grow = odd(1.2 * pxPerMm);
    cv::dilate(ignored, ignored, cv::getStructuringElement(cv::MORPH_RECT, {grow, grow}));
    return ignored;
}

// True when the marks of the window are as blurred as things seen through the paper.
bool isSoft(const cv::Mat& dark, const cv::Mat& mask, double dpi)
{
    cv::Mat dx, dy, slope;
    cv::Sobel(dark, dx, CV_32F, 1, 0, 3, 1 / 8.0);
    cv::Sobel(dark, dy, CV_32F, 0, 1, 3, 1 / 8.0);
    cv::magnitude(dx, dy, slope);
    std::vector<float> slopes, levels;
    cv::Mat around;
    cv::dilate(mask, around, cv::getStructuringElement(cv::MORPH_RECT, {3, 3}));
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x)
            if (around.at<uchar>(y, x)) {
                slopes.push_back(slope.at<float>(y, x));
                levels.push_back(dark.at<uchar>(y, x));
            }
    if (slopes.empty())
        return true;
    const auto upper = [](std::vector<float>& v) {
        const auto at = v.begin() + static_cast<long>(v.size() * 9 / 10);
        std::nth_element(v.begin(), at, v.end());
        return static_cast<double>(*at);
    };
    const double level = upper(levels);
    return level < kSoftDarkness && upper(slopes) < std::min(kSharpness * 300 / dpi, kMostSharpness) * level;
}

// Pixels of the window's marks without dust and hairs.
int countedInk(const cv::Mat& dark, const cv::Mat& mask, double pxPerMm)
{
    cv::Mat labels, stats, centres;
    const int count = cv::connectedComponentsWithStats(mask, labels, stats, centres, 8, CV_32S);
    std::vector<double> black(static_cast<size_t>(count), 0);
    for (int y = 0; y < mask.rows; ++y)
        for (int x = 0; x < mask.cols; ++x)
            black[static_cast<size_t>(labels.at<int>(y, x))] += dark.at<uchar>(y, x) / 240.0;
    int dust = 0, dustArea = 0, marks = 0, strongArea = 0, weakArea = 0;
    for (int i = 1; i < count; ++i) {
        const int* s = stats.ptr<int>(i);
        const int area = s[cv::CC_STAT_AREA];
        if (area < 4)
            continue; // grain
        if (std::max(s[cv::CC_STAT_WIDTH], s[cv::CC_STAT_HEIGHT]) <= kDustMm * pxPerMm) {
            ++dust;
            dustArea += area;
            continue;
        }
        ++marks;
        (black[static_cast<size_t>(i)] >= kLoneInkMm2 * pxPerMm * pxPerMm ? strongArea : weakArea) += area;
    }
    return strongArea + (marks >= kCompany ? weakArea : 0) + (dust >= kManyDust ? dustArea : 0);
}

// Percentage of ink in one window of the full picture.
double inkIn(const cv::Mat& pixels, const cv::Rect& window, const cv::Mat& paper, const cv::Mat& ignored,
             const BlankParams& params, double dpi)
{
    cv::Mat grey = toGrey(pixels(window)), calm, paperHere, ignoredHere, dark;
    cv::GaussianBlur(grey, calm, cv::Size(), std::clamp(dpi / 300, 0.5, 3.0));
    cv::resize(paper, paperHere, window.size(), 0, 0, cv::INTER_LINEAR);
    cv::resize(ignored, ignoredHere, window.size(), 0, 0, cv::INTER_NEAREST);
    cv::subtract(paperHere, calm, dark);
    dark.setTo(0, ignoredHere);
    const cv::Mat mask = dark >= std::max(1, params.darkness);
    const double pxPerMm = dpi / 25.4;
    const double percent = 100.0 * countedInk(dark, mask, pxPerMm) / static_cast<double>(mask.total());
    return percent >= params.percent && isSoft(dark, mask, dpi) ? 0 : percent;
}

} // namespace

BlankResult detectBlank(const cv::Mat& pixels, const Reduced& reduced, const BlankParams& params)
{
    BlankResult result;
    const double pxPerMm = reduced.dpi / 25.4;
    const cv::Mat paper = paperOf(reduced.grey, pxPerMm);
    if (isPicture(paper)) {
        result.percent = 100;
        return result;
    }
    cv::Mat dark;
    cv::subtract(paper, reduced.grey, dark);
    // Thin strokes lose contrast in the small copy, so it only proposes.
    cv::Mat mask = dark >= std::max(1, params.darkness * 2 / 3);
    const cv::Mat ignored = ignoredPlaces(mask, pxPerMm);
    mask.setTo(0, ignored);
    cv::Mat weight, density;
    dark.convertTo(weight, CV_32F);
    weight = weight.mul(weight);
    weight.setTo(0, ~mask);
    const int side = std::min({odd(kWindowMm * pxPerMm), weight.cols, weight.rows});
    const cv::Rect frame(0, 0, weight.cols, weight.rows);
    for (int i = 0; i < kMostWindows; ++i) {
        cv::boxFilter(weight, density, CV_32F, {side, side}, {-1, -1}, false, cv::BORDER_CONSTANT);
        cv::Point at;
        double most = 0;
        cv::minMaxLoc(density, nullptr, &most, nullptr, &at);
        if (most <= 0)
            break;
        const int x = std::clamp(at.x - side / 2, 0, weight.cols - side);
        const int y = std::clamp(at.y - side / 2, 0, weight.rows - side);
        const cv::Rect window = cv::Rect(x, y, side, side) & frame;
        const cv::Rect full(window.x * reduced.factor, window.y * reduced.factor,
                            window.width * reduced.factor, window.height * reduced.factor);
        const double percent =
            inkIn(pixels, full, paper(window), ignored(window), params, reduced.dpi * reduced.factor);
        result.percent = std::max(result.percent, percent);
        if (percent >= params.percent)
            return result;
        weight(window).setTo(0);
    }
    result.blank = true;
    return result;
}

} // namespace imageconvert
