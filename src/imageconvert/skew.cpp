// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/skew.h"

#include "imageconvert/geometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace imageconvert {

namespace {

struct Mark
{
    float x, y, weight; // pixels of the grey copy from its middle; grey levels of contrast
};

// What is darker than its surroundings, as weighted points.
std::vector<Mark> marksOf(const cv::Mat& grey, double dpi)
{
    const int window = std::max(5, static_cast<int>(std::lround(dpi / 25.4 * 5)) | 1);
    cv::Mat around, contrast;
    cv::blur(grey, around, {window, window}, {-1, -1}, cv::BORDER_REPLICATE);
    cv::subtract(around, grey, contrast);
    int histogram[256] = {};
    for (int y = 0; y < contrast.rows; ++y)
        for (int x = 0; x < contrast.cols; ++x)
            ++histogram[contrast.at<uchar>(y, x)];
    long above = 0;
    int strong = 255;
    for (; strong > 0 && above < static_cast<long>(contrast.total() / 200); --strong)
        above += histogram[strong];
    const int least = std::max(8, strong / 3);
    const float middleX = (grey.cols - 1) / 2.0f, middleY = (grey.rows - 1) / 2.0f;
    std::vector<Mark> marks;
    for (int y = 0; y < contrast.rows; ++y) {
        const uchar* row = contrast.ptr(y);
        for (int x = 0; x < contrast.cols; ++x)
            if (row[x] >= least)
                marks.push_back(
                    {x - middleX, y - middleY, static_cast<float>(std::min<int>(row[x], 3 * least))});
    }
    return marks;
}

enum class Axis
{
    Rows,
    Columns
};

// A mark is one pixel wide in the profile, placed to a quarter of a pixel. Whole-pixel bins would favour the
// angles at which the pixel grid falls in step with them, above all 0.
constexpr int kPhases = 4;

// Postl's criterion for one angle.
double score(const std::vector<Mark>& marks, size_t stride, Axis axis, double angleDeg,
             std::vector<float>& bins)
{
    const float c = static_cast<float>(std::cos(angleDeg * CV_PI / 180)) * kPhases;
    const float s = static_cast<float>(std::sin(angleDeg * CV_PI / 180)) * kPhases;
    std::fill(bins.begin(), bins.end(), 0.0f);
    const float middle = static_cast<float>(bins.size()) / 2;
    for (size_t i = 0; i < marks.size(); i += stride) {
        const Mark& m = marks[i];
        const float at = (axis == Axis::Rows ? m.y * c - m.x * s : m.x * c + m.y * s) + middle;
        bins[static_cast<size_t>(at)] += m.weight;
    }
    // Neighbouring one-pixel sums at all phases.
    double sum = 0;
    float first = 0, second = 0;
    for (size_t i = 0; i < kPhases; ++i) {
        first += bins[i];
        second += bins[i + kPhases];
    }
    for (size_t i = 2 * kPhases; i < bins.size(); ++i) {
        const float step = second - first;
        sum += static_cast<double>(step) * step;
        first += bins[i - kPhases] - bins[i - 2 * kPhases];
        second += bins[i] - bins[i - kPhases];
    }
    return sum;
}

struct Peak
{
    double angleDeg = 0, prominence = 0;
};

Peak coarsePeak(const std::vector<Mark>& marks, Axis axis, double maxDeg, std::vector<float>& bins)
{
    const size_t stride = std::max<size_t>(1, marks.size() / 16000);
    constexpr double step = 0.2;
    std::vector<double> scores;
    Peak peak;
    double best = -1;
    for (double a = -maxDeg; a <= maxDeg + 1e-9; a += step) {
        scores.push_back(score(marks, stride, axis, a, bins));
        if (scores.back() > best) {
            best = scores.back();
            peak.angleDeg = a;
        }
    }
    std::nth_element(scores.begin(), scores.begin() + static_cast<long>(scores.size() / 2), scores.end());
    peak.prominence = best / std::max(1e-9, scores[scores.size() / 2]);
    return peak;
}

struct FineSearch
{
    double reachDeg, stepDeg;
    size_t mostMarks;
};

double finePeak(const std::vector<Mark>& marks, Axis axis, double aroundDeg, const FineSearch& search,
                std::vector<float>& bins)
{
    const double stepDeg = search.stepDeg;
    const size_t stride = std::max<size_t>(1, marks.size() / search.mostMarks);
    std::vector<double> scores;
    const int reach = static_cast<int>(std::lround(search.reachDeg / stepDeg));
    for (int i = -reach; i <= reach; ++i)
        scores.push_back(score(marks, stride, axis, aroundDeg + i * stepDeg, bins));
    // The centre of the top of the peak: steadier than its highest sample.
    const double best = *std::max_element(scores.begin(), scores.end());
    const double floor = best - 0.25 * (best - *std::min_element(scores.begin(), scores.end()));
    const int top = static_cast<int>(std::max_element(scores.begin(), scores.end()) - scores.begin());
    int first = top, last = top;
    while (first > 0 && scores[static_cast<size_t>(first - 1)] > floor)
        --first;
    while (last + 1 < static_cast<int>(scores.size()) && scores[static_cast<size_t>(last + 1)] > floor)
        ++last;
    double sum = 0, weight = 0;
    for (int i = first; i <= last; ++i) {
        const double w = scores[static_cast<size_t>(i)] - floor;
        sum += w * (i - reach);
        weight += w;
    }
    return aroundDeg + (weight > 0 ? sum / weight : top - reach) * stepDeg;
}

// Deals the marks out to two groups by the text lines that they belong to, every other line to the other
// group. The cuts lie where the profile at the given angle is lowest, within 3 to 12 mm of each other.
std::array<std::vector<Mark>, 2> everyOtherLine(const std::vector<Mark>& marks, Axis axis, double angleDeg,
                                                double dpi, size_t length)
{
    const float c = static_cast<float>(std::cos(angleDeg * CV_PI / 180));
    const float s = static_cast<float>(std::sin(angleDeg * CV_PI / 180));
    const auto place = [&](const Mark& m) {
        const float at = axis == Axis::Rows ? m.y * c - m.x * s : m.x * c + m.y * s;
        return static_cast<size_t>(at + static_cast<float>(length) / 2);
    };
    std::vector<float> profile(length + 1, 0.0f);
    for (const Mark& m : marks)
        profile[std::min(place(m), length)] += m.weight;
    const auto nearest = static_cast<size_t>(std::lround(3 * dpi / 25.4)) + 1;
    const auto farthest = static_cast<size_t>(std::lround(12 * dpi / 25.4)) + 2;
    std::vector<uchar> group(length + 1, 0);
    uchar turn = 0;
    size_t from = 0;
    while (from < length && profile[from] <= 0)
        ++from;
    while (from <= length) {
        const auto first = profile.begin() + static_cast<long>(std::min(from + nearest, length + 1));
        const auto last = profile.begin() + static_cast<long>(std::min(from + farthest, length + 1));
        const size_t to =
            first == last ? length + 1 : static_cast<size_t>(std::min_element(first, last) - profile.begin());
        std::fill(group.begin() + static_cast<long>(from), group.begin() + static_cast<long>(to), turn);
        // Empty bands belong to no line.
        if (std::any_of(profile.begin() + static_cast<long>(from), profile.begin() + static_cast<long>(to),
                        [](float sum) { return sum > 0; }))
            turn ^= 1;
        from = to;
    }
    std::array<std::vector<Mark>, 2> groups;
    for (const Mark& m : marks)
        groups[group[std::min(place(m), length)]].push_back(m);
    return groups;
}

// How well the angle is known: by how much two halves of the lines disagree about it. A single line, whose
// characters pull it up and down, has nothing to agree with.
double uncertaintyDeg(const std::vector<Mark>& marks, Axis axis, double angleDeg, double dpi,
                      std::vector<float>& bins)
{
    constexpr double single = 0.6;
    const auto groups = everyOtherLine(marks, axis, angleDeg, dpi, bins.size() / kPhases);
    if (std::min(groups[0].size(), groups[1].size()) < std::max<size_t>(75, marks.size() / 10))
        return single;
    const FineSearch wide{1.0, 0.05, 20000};
    return std::abs(finePeak(groups[0], axis, angleDeg, wide, bins) -
                    finePeak(groups[1], axis, angleDeg, wide, bins));
}

} // namespace

SkewResult detectSkew(const cv::Mat& grey, double dpi, const SkewParams& params)
{
    SkewResult result;
    const std::vector<Mark> marks = marksOf(grey, dpi);
    if (marks.size() < 150)
        return result;
    std::vector<float> bins(static_cast<size_t>(std::hypot(grey.cols, grey.rows) + 6) * kPhases);
    const Peak rows = coarsePeak(marks, Axis::Rows, params.maxAngleDeg, bins);
    const Peak columns = coarsePeak(marks, Axis::Columns, params.maxAngleDeg, bins);
    const bool byRows = rows.prominence >= columns.prominence;
    const Peak& best = byRows ? rows : columns;
    result.confidence = best.prominence;
    const Axis axis = byRows ? Axis::Rows : Axis::Columns;
    result.angleDeg = finePeak(marks, axis, best.angleDeg, {0.3, params.fineStepDeg, 60000}, bins);
    result.uncertaintyDeg = uncertaintyDeg(marks, axis, result.angleDeg, dpi, bins);
    // A peak at the end of the range belongs to an angle outside of it.
    result.sure = result.confidence >= params.leastConfidence &&
                  std::abs(best.angleDeg) < params.maxAngleDeg - 0.1 &&
                  result.uncertaintyDeg <= params.mostUncertaintyDeg &&
                  (result.uncertaintyDeg < 0.02 || result.uncertaintyDeg < std::abs(result.angleDeg));
    return result;
}

cv::Mat straightened(const cv::Mat& pixels, double skewDeg, const cv::Scalar& fill)
{
    const double angle = skewDeg * CV_PI / 180;
    if (std::abs(angle) * std::max(pixels.cols, pixels.rows) / 2 < 0.34)
        return pixels;
    const double c = std::cos(angle), s = std::sin(angle);
    const double x = (pixels.cols - 1) / 2.0, y = (pixels.rows - 1) / 2.0;
    return warped(pixels, {c, -s, x - c * x + s * y, s, c, y - s * x - c * y}, pixels.size(), fill);
}

} // namespace imageconvert
