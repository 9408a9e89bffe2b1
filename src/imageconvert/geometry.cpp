// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/geometry.h"

#include "imageconvert/picture.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace imageconvert {

namespace {

constexpr int kMaxWarpSide = 32000; // the warp counts source pixels in 16 bits

cv::Mat asColour(const cv::Mat& pixels)
{
    if (pixels.channels() == 3)
        return pixels;
    cv::Mat colour;
    cv::cvtColor(pixels, colour, cv::COLOR_GRAY2RGB);
    return colour;
}

void makeTwoLevel(cv::Mat& pixels)
{
    cv::threshold(pixels, pixels, 127, 255, cv::THRESH_BINARY);
}

} // namespace

cv::Mat warped(const cv::Mat& pixels, const cv::Matx23d& targetToSource, const cv::Size& size,
               const cv::Scalar& fill)
{
    checkSize(size.width, size.height);
    if (std::max({pixels.cols, pixels.rows, size.width, size.height}) > kMaxWarpSide)
        throw PictureError("picture too large for turning");
    cv::Mat out;
    cv::warpAffine(pixels, out, targetToSource, size, cv::INTER_LINEAR | cv::WARP_INVERSE_MAP,
                   cv::BORDER_CONSTANT, fill);
    if (isTwoLevel(pixels))
        makeTwoLevel(out);
    return out;
}

cv::Mat rotated(const cv::Mat& pixels, double degrees, const cv::Scalar& fill)
{
    if (!std::isfinite(degrees))
        throw PictureError("not an angle");
    double turn = std::fmod(degrees, 360.0);
    if (turn < 0)
        turn += 360;
    if (turn == 0)
        return pixels;
    if (turn == 90 || turn == 180 || turn == 270) {
        cv::Mat out;
        cv::rotate(pixels, out,
                   turn == 90    ? cv::ROTATE_90_CLOCKWISE
                   : turn == 180 ? cv::ROTATE_180
                                 : cv::ROTATE_90_COUNTERCLOCKWISE);
        return out;
    }
    const double angle = turn * CV_PI / 180, c = std::cos(angle), s = std::sin(angle);
    const int width =
        static_cast<int>(std::ceil(std::abs(pixels.cols * c) + std::abs(pixels.rows * s) - 1e-6));
    const int height =
        static_cast<int>(std::ceil(std::abs(pixels.cols * s) + std::abs(pixels.rows * c) - 1e-6));
    const double sourceX = (pixels.cols - 1) / 2.0, sourceY = (pixels.rows - 1) / 2.0;
    const double x = (width - 1) / 2.0, y = (height - 1) / 2.0;
    return warped(pixels, {c, s, sourceX - c * x - s * y, -s, c, sourceY + s * x - c * y}, {width, height},
                  fill);
}

cv::Mat resampled(const cv::Mat& pixels, double scaleX, double scaleY)
{
    const double width = std::round(pixels.cols * scaleX), height = std::round(pixels.rows * scaleY);
    checkSize(std::max(1.0, width), std::max(1.0, height));
    const cv::Size size(std::max(1, static_cast<int>(width)), std::max(1, static_cast<int>(height)));
    if (size == pixels.size())
        return pixels;
    cv::Mat out;
    const bool shrinks = size.area() <= pixels.size().area();
    cv::resize(pixels, out, size, 0, 0, shrinks ? cv::INTER_AREA : cv::INTER_CUBIC);
    if (isTwoLevel(pixels))
        makeTwoLevel(out);
    return out;
}

cv::Mat cutOut(const cv::Mat& pixels, const cv::Size& size, bool fromTopLeft)
{
    const int width = std::clamp(size.width, 1, pixels.cols),
              height = std::clamp(size.height, 1, pixels.rows);
    const int x = fromTopLeft ? 0 : (pixels.cols - width) / 2,
              y = fromTopLeft ? 0 : (pixels.rows - height) / 2;
    return pixels(cv::Rect(x, y, width, height)).clone();
}

std::vector<cv::Rect> splitRects(const cv::Size& size, int count, bool sideBySide)
{
    std::vector<cv::Rect> rects;
    const int length = sideBySide ? size.width : size.height;
    if (count < 1 || count > length)
        return rects;
    for (int i = 0; i < count; ++i) {
        const int from = static_cast<int>(static_cast<long long>(length) * i / count);
        const int to = static_cast<int>(static_cast<long long>(length) * (i + 1) / count);
        rects.push_back(sideBySide ? cv::Rect(from, 0, to - from, size.height)
                                   : cv::Rect(0, from, size.width, to - from));
    }
    return rects;
}

cv::Mat joined(const cv::Mat& first, const cv::Mat& second, bool sideBySide)
{
    const bool colour = first.channels() == 3 || second.channels() == 3;
    const double width = sideBySide ? double(first.cols) + second.cols : std::max(first.cols, second.cols);
    const double height = sideBySide ? std::max(first.rows, second.rows) : double(first.rows) + second.rows;
    checkSize(width, height);
    cv::Mat out(static_cast<int>(height), static_cast<int>(width), colour ? CV_8UC3 : CV_8UC1,
                cv::Scalar::all(255));
    int start = 0;
    for (const cv::Mat* part : {&first, &second}) {
        const int x = sideBySide ? start : (out.cols - part->cols) / 2;
        const int y = sideBySide ? (out.rows - part->rows) / 2 : start;
        cv::Mat place = out(cv::Rect(x, y, part->cols, part->rows));
        (colour ? asColour(*part) : *part).copyTo(place);
        start += sideBySide ? part->cols : part->rows;
    }
    return out;
}

cv::Mat withBorder(const cv::Mat& pixels, const Border& border)
{
    const bool neutral = border.colour[0] == border.colour[1] && border.colour[1] == border.colour[2];
    const cv::Mat source = neutral ? pixels : asColour(pixels);
    if (border.inside) {
        const int vertical = std::clamp(border.vertical, 0, (source.rows + 1) / 2);
        const int sides = std::clamp(border.sides, 0, (source.cols + 1) / 2);
        const cv::Rect inner(sides, vertical, std::max(0, source.cols - 2 * sides),
                             std::max(0, source.rows - 2 * vertical));
        cv::Mat out(source.size(), source.type(), border.colour);
        if (!inner.empty())
            source(inner).copyTo(out(inner));
        return out;
    }
    const int vertical = std::max(0, border.vertical), sides = std::max(0, border.sides);
    checkSize(source.cols + 2.0 * sides, source.rows + 2.0 * vertical);
    cv::Mat out;
    cv::copyMakeBorder(source, out, vertical, vertical, sides, sides, cv::BORDER_CONSTANT, border.colour);
    return out;
}

} // namespace imageconvert
