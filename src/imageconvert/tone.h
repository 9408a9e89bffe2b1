// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <opencv2/core.hpp>

namespace imageconvert {

// A tone change: one table of 256 levels for each of red, green, blue (grey pictures use the green one).
class Tone
{
public:
    using Table = std::array<uchar, 256>;

    Tone(); // changes nothing
    explicit Tone(const Table& table) : m_tables{table, table, table} {}
    Tone(const Table& red, const Table& green, const Table& blue) : m_tables{red, green, blue} {}

    bool isIdentity() const;
    Tone then(const Tone& later) const; // this one first
    const Table& channel(int index) const { return m_tables[static_cast<size_t>(index)]; }
    // In place where the matrix is not shared, else in a copy.
    cv::Mat applied(const cv::Mat& pixels) const;

private:
    std::array<Table, 3> m_tables;
};

// out = 255 (in / 255)^(1 / gamma); above 1 lightens. Out of 0.01 to 100: identity.
Tone gammaTone(double gamma);
// Both -100 to 100 percent. Brightness shifts by that share of the range; contrast turns the line around the
// middle grey: slope tan((c + 1) pi / 4), which is 1 at 0, 0 at -100 and a threshold at 100.
Tone lightAndContrastTone(double brightness, double contrast);

} // namespace imageconvert
