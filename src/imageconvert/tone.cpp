// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/tone.h"

#include <algorithm>
#include <cmath>

namespace imageconvert {

namespace {

Tone::Table identityTable()
{
    Tone::Table table;
    for (int i = 0; i < 256; ++i)
        table[static_cast<size_t>(i)] = static_cast<uchar>(i);
    return table;
}

template <class Curve>
Tone::Table tableOf(Curve curve)
{
    Tone::Table table;
    for (int i = 0; i < 256; ++i)
        table[static_cast<size_t>(i)] = cv::saturate_cast<uchar>(curve(i));
    return table;
}

} // namespace

Tone::Tone() : m_tables{identityTable(), identityTable(), identityTable()} {}

bool Tone::isIdentity() const
{
    static const Table identity = identityTable();
    return std::all_of(m_tables.begin(), m_tables.end(), [](const Table& t) { return t == identity; });
}

Tone Tone::then(const Tone& later) const
{
    Tone result;
    for (size_t c = 0; c < 3; ++c)
        for (size_t i = 0; i < 256; ++i)
            result.m_tables[c][i] = later.m_tables[c][m_tables[c][i]];
    return result;
}

cv::Mat Tone::applied(const cv::Mat& pixels) const
{
    if (pixels.empty() || isIdentity())
        return pixels;
    const bool shared = !pixels.u || pixels.u->refcount > 1;
    cv::Mat out = shared ? cv::Mat(pixels.size(), pixels.type()) : pixels;
    const Table &r = m_tables[0], &g = m_tables[1], &b = m_tables[2];
    for (int y = 0; y < pixels.rows; ++y) {
        const uchar* from = pixels.ptr(y);
        uchar* to = out.ptr(y);
        if (pixels.channels() == 1) {
            for (int x = 0; x < pixels.cols; ++x)
                to[x] = g[from[x]];
        } else {
            for (int x = 0; x < 3 * pixels.cols; x += 3) {
                to[x] = r[from[x]];
                to[x + 1] = g[from[x + 1]];
                to[x + 2] = b[from[x + 2]];
            }
        }
    }
    return out;
}

Tone gammaTone(double gamma)
{
    if (!(gamma >= 0.01 && gamma <= 100))
        return Tone();
    return Tone(tableOf([gamma](int i) { return 255.0 * std::pow(i / 255.0, 1.0 / gamma); }));
}

Tone lightAndContrastTone(double brightness, double contrast)
{
    if (!std::isfinite(brightness) || !std::isfinite(contrast))
        return Tone();
    const double shift = std::clamp(brightness, -100.0, 100.0) / 100.0 * 255.0;
    const double share = std::clamp(contrast, -100.0, 100.0) / 100.0;
    const double slope = std::min(std::tan((share + 1) * CV_PI / 4), 1e4);
    if (shift == 0 && share == 0)
        return Tone();
    return Tone(tableOf([=](int i) { return (i - 127.5) * slope + 127.5 + shift; }));
}

} // namespace imageconvert
