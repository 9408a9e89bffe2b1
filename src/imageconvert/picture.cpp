// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/picture.h"

#include <algorithm>
#include <cmath>
#include <opencv2/imgproc.hpp>

namespace imageconvert {

const cv::Mat& Picture::pixels()
{
    if (!m_tone.isIdentity()) {
        m_pixels = m_tone.applied(m_pixels);
        m_tone = Tone();
    }
    return m_pixels;
}

void Picture::setPixels(cv::Mat pixels)
{
    m_pixels = std::move(pixels);
    m_tone = Tone();
    m_reduced.reset();
}

void Picture::setUntoned(cv::Mat pixels)
{
    m_pixels = std::move(pixels);
    m_reduced.reset();
}

void Picture::setDpi(double dpi)
{
    if (std::abs(dpi - m_dpi) > 0.5)
        m_reduced.reset(); // its scale depends on the resolution
    m_dpi = dpi;
}

double Picture::workingDpi() const
{
    return m_dpi >= 30 && m_dpi <= 2400 ? m_dpi : guessDpi(m_pixels.size());
}

const Reduced& Picture::reduced()
{
    if (m_reduced)
        return *m_reduced;
    auto copy = std::make_unique<Reduced>();
    const int shorter = std::min(m_pixels.cols, m_pixels.rows);
    copy->factor =
        std::clamp(static_cast<int>(std::lround(workingDpi() / 75.0)), 1, std::max(1, shorter / 16));
    copy->dpi = workingDpi() / copy->factor;
    if (copy->factor == 1) {
        copy->colour = m_pixels.clone(); // tone changes work in place on the picture's own pixels
    } else {
        // Whole blocks only: the area filter is several times faster on an exact factor.
        const cv::Size small(m_pixels.cols / copy->factor, m_pixels.rows / copy->factor);
        const cv::Mat whole =
            m_pixels(cv::Rect(0, 0, small.width * copy->factor, small.height * copy->factor));
        cv::resize(whole, copy->colour, small, 0, 0, cv::INTER_AREA);
    }
    copy->grey = toGrey(copy->colour);
    m_reduced = std::move(copy);
    return *m_reduced;
}

double guessDpi(const cv::Size& size)
{
    const double longSide = std::max(size.width, size.height);
    for (double dpi : {75.0, 100.0, 150.0, 200.0, 300.0, 400.0, 600.0})
        if (longSide / dpi * 25.4 <= 357)
            return dpi;
    return 1200;
}

cv::Mat toGrey(const cv::Mat& pixels)
{
    if (pixels.channels() == 1)
        return pixels;
    cv::Mat grey;
    cv::cvtColor(pixels, grey, cv::COLOR_RGB2GRAY);
    return grey;
}

bool isTwoLevel(const cv::Mat& pixels)
{
    if (pixels.type() != CV_8UC1)
        return false;
    for (int y = 0; y < pixels.rows; ++y) {
        const uchar* row = pixels.ptr(y);
        unsigned bad = 0;
        for (int x = 0; x < pixels.cols; ++x)
            bad |= static_cast<uchar>(row[x] + 1) > 1; // 255 + 1 wraps to 0
        if (bad)
            return false;
    }
    return true;
}

void checkSize(double width, double height)
{
    if (!(width >= 1 && height >= 1))
        throw PictureError("picture without pixels");
    if (width > kMaxSide || height > kMaxSide || width * height > kMaxPixels)
        throw PictureError("picture too large: " + std::to_string(static_cast<long long>(width)) + " x " +
                           std::to_string(static_cast<long long>(height)));
}

} // namespace imageconvert
