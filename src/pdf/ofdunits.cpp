// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/ofdunits.h"

namespace {

QString wholeMillimetres(float value)
{
    const QString text = QString::number(static_cast<double>(value), 'g', 6);
    const int point = text.indexOf('.');
    return point < 0 ? text : text.left(point);
}

struct Sides
{
    int longSide;
    int shortSide;
};

// Whole millimetres, cut off; A5 and B5 are one short of the standard's, as they always were here.
constexpr Sides kPapers[] = {{297, 210}, {279, 215}, {209, 148}, {257, 181}, {355, 215}};

} // namespace

QString getOFDLeft(int px, int pageWidthMm)
{
    return wholeMillimetres(static_cast<float>(px) / kOfdFrameWidth * static_cast<float>(pageWidthMm));
}

QString getOFDWidth(int px, int pageWidthMm)
{
    return wholeMillimetres(static_cast<float>(px) / kOfdFrameWidth * static_cast<float>(pageWidthMm) * 1.2f);
}

QString getOFDHeight(int px, int pageHeightMm)
{
    return wholeMillimetres(static_cast<float>(px) * static_cast<float>(pageHeightMm) / kOfdFrameHeight);
}

QString getOFDTop(int px, int pageHeightMm)
{
    return getOFDHeight(px, pageHeightMm);
}

QSize ofdPageBox(int paperIndex, const QSize& firstPicture)
{
    constexpr int papers = sizeof kPapers / sizeof kPapers[0];
    if (paperIndex < 0 || paperIndex >= papers)
        return firstPicture;
    const QSize upright(kPapers[paperIndex].shortSide, kPapers[paperIndex].longSide);
    return firstPicture.width() >= firstPicture.height() ? upright.transposed() : upright;
}
