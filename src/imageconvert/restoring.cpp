// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/restoring.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <opencv2/imgproc.hpp>

namespace imageconvert {

namespace {

constexpr int kStep = 5;       // every fifth row is measured
constexpr int kReach = 4;      // pixels to both sides of an edge
constexpr double kType = 0.93; // blur that type has by its corners and curves: measured
constexpr int kFewEdges = 200; // fewer tell nothing

// The median of a histogram whose bins are `width` wide.
template <size_t bins>
double median(const std::array<int, bins>& histogram, double width)
{
    long total = 0, sum = 0;
    for (int n : histogram)
        total += n;
    for (size_t i = 0; i < bins; ++i) {
        if (2 * (sum + histogram[i]) >= total)
            return (static_cast<double>(i) + (total / 2.0 - sum) / std::max(1, histogram[i])) * width;
        sum += histogram[i];
    }
    return static_cast<double>(bins) * width;
}

// Share of an edge's swing over 6 pixels that happens within 2, for an edge blurred by a Gaussian.
double steepness(double sigma)
{
    return std::erf(1 / (sigma * std::sqrt(2.0))) / std::erf(3 / (sigma * std::sqrt(2.0)));
}

double sigmaOf(double measured)
{
    double sigma = 0.4;
    while (sigma < 2.5 && steepness(sigma) > measured)
        sigma += 0.02;
    return sigma;
}

// Notes how steep the edge at this pixel is, if it is one: across `step`, between two even sides (thin
// strokes tell little) and with its middle at the pixel (grain would else favour steep readings).
inline void addEdge(const uchar* pixel, std::ptrdiff_t step, int least, std::array<int, 101>& steep)
{
    const int before = pixel[-3 * step], after = pixel[3 * step], swing = std::abs(after - before);
    if (swing < least || 4 * std::abs(2 * *pixel - after - before) > swing)
        return;
    const int uneven = std::abs(pixel[kReach * step] - after) + std::abs(pixel[-kReach * step] - before);
    if (6 * uneven > swing)
        return;
    const int percent = 100 * std::abs(pixel[step] - pixel[-step]) / swing;
    ++steep[static_cast<size_t>(std::min(percent, 100))];
}

} // namespace

Unsharpness measureUnsharpness(const cv::Mat& grey, double contrast)
{
    std::array<int, 101> steep{}; // percent
    std::array<int, 256> grain{}; // differences of neighbours three apart, in grey levels
    const int least = static_cast<int>(0.7 * contrast);
    for (int y = kReach; y + kReach < grey.rows; y += kStep) {
        const uchar* row = grey.ptr(y);
        for (int x = kReach; x + kReach < grey.cols; ++x) {
            ++grain[static_cast<size_t>(std::abs(row[x] - row[x - 3]))];
            addEdge(row + x, 1, least, steep);
            addEdge(row + x, static_cast<std::ptrdiff_t>(grey.step), least, steep);
        }
    }
    Unsharpness result;
    if (std::accumulate(steep.begin(), steep.end(), 0L) >= kFewEdges) {
        const double measured = sigmaOf(median(steep, 1) / 100);
        result.sigma = std::sqrt(std::max(0.1, measured * measured - kType * kType));
    }
    result.noise = median(grain, 1) / (0.6745 * std::sqrt(2.0)); // of a normal distribution
    return result;
}

RestoringFilter restoringFilter(double sigma, double noiseShare, double dpi)
{
    constexpr int reach = 2, centre = 24; // the covariances are sampled at half pixels
    const double length = std::clamp(2 * dpi / 300, 1.0, 4.0);
    cv::Mat ink(2 * centre + 1, 2 * centre + 1, CV_64F), crossed, blurred;
    for (int y = -centre; y <= centre; ++y)
        for (int x = -centre; x <= centre; ++x)
            ink.at<double>(y + centre, x + centre) = 0.25 * std::exp(-std::hypot(x, y) / 2 / length);
    cv::GaussianBlur(ink, crossed, cv::Size(), 2 * sigma);
    cv::GaussianBlur(ink, blurred, cv::Size(), 2 * sigma * std::sqrt(2.0));

    const std::array<int, 3> reaches{0, 1, reach};
    cv::Mat a = cv::Mat::zeros(4, 4, CV_64F), b = cv::Mat::zeros(4, 1, CV_64F), weights;
    const auto square = [](int r, auto work) {
        for (int y = -r; y <= r; ++y)
            for (int x = -r; x <= r; ++x)
                work(x, y);
    };
    for (int i = 0; i < 3; ++i) {
        square(reaches[static_cast<size_t>(i)], [&](int x, int y) {
            b.at<double>(i) += crossed.at<double>(centre + 2 * y, centre + 2 * x);
            a.at<double>(i, 3) += 1; // the weights add up to 1 (a Lagrange multiplier)
            a.at<double>(3, i) += 1;
            for (int j = 0; j < 3; ++j)
                square(reaches[static_cast<size_t>(j)], [&](int u, int v) {
                    a.at<double>(i, j) += blurred.at<double>(centre + 2 * (y - v), centre + 2 * (x - u)) +
                                          (x == u && y == v ? noiseShare * noiseShare : 0);
                });
        });
    }
    b.at<double>(3) = 1;
    if (!cv::solve(a, b, weights, cv::DECOMP_LU))
        return {};
    return {static_cast<float>(weights.at<double>(0)), static_cast<float>(weights.at<double>(1)),
            static_cast<float>(weights.at<double>(2))};
}

} // namespace imageconvert
