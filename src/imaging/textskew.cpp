// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/textskew.h"

#include <QDebug>
#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace {

constexpr double kMaxDeg = 10, kCoarseDeg = 0.5, kFineDeg = 0.1;
constexpr double kClearlyDown = 1.15;  // times the contrast across; text pages have 1.3 and more
constexpr std::size_t kPoints = 15000; // ink pixels looked at: more do not change the answer

struct Skew
{
    double degrees = 0;
    double contrast = 0; // 1 when the ink is spread evenly, the more the clearer it falls into lines
};

// The sum of squared row counts when the points are sheared by `slope`: large when they fall into lines.
double squaredCounts(const std::vector<cv::Point>& points, double slope, std::vector<int>& bins)
{
    std::fill(bins.begin(), bins.end(), 0);
    const int offset = static_cast<int>(bins.size()) / 4;
    for (const cv::Point& point : points) {
        const int bin = offset + static_cast<int>(std::floor(point.y - slope * point.x));
        if (bin >= 0 && bin < static_cast<int>(bins.size()))
            ++bins[bin];
    }
    double sum = 0;
    for (const int count : bins)
        sum += static_cast<double>(count) * count;
    return sum;
}

Skew findSkew(const std::vector<cv::Point>& points, const cv::Size& size)
{
    Skew best;
    std::vector<int> bins(2 * (size.width + size.height));
    const auto search = [&](double from, double to, double by) {
        for (double degrees = from; degrees < to + by / 2; degrees += by) {
            const double contrast = squaredCounts(points, std::tan(degrees * CV_PI / 180), bins);
            if (contrast > best.contrast)
                best = {degrees, contrast};
        }
    };
    search(-kMaxDeg, kMaxDeg, kCoarseDeg);
    search(best.degrees - kCoarseDeg + kFineDeg, best.degrees + kCoarseDeg - kFineDeg, kFineDeg);
    const int height = cv::boundingRect(points).height;
    best.contrast *= height / std::pow(points.size(), 2);
    return best;
}

} // namespace

std::optional<double> textSkew(const cv::Mat& ink)
{
    std::vector<cv::Point> all, points, turned;
    cv::findNonZero(ink, all);
    const std::size_t step = all.size() / kPoints + 1;
    for (std::size_t i = 0; i < all.size(); i += step) {
        points.push_back(all[i]);
        turned.emplace_back(all[i].y, all[i].x);
    }
    if (points.empty())
        return std::nullopt;
    const Skew across = findSkew(points, ink.size());
    const Skew down = findSkew(turned, cv::Size(ink.rows, ink.cols));
    qDebug() << "skew: " << across.degrees << "lines across and down: " << across.contrast << down.contrast;
    if (down.contrast > kClearlyDown * across.contrast)
        return std::nullopt;
    return across.degrees;
}
