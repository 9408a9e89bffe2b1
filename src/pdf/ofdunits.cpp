// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/ofdunits.h"

#include "imageconvert/ofdpaper.h"

namespace {

QString wholeMillimetres(float value)
{
    const QString text = QString::number(static_cast<double>(value), 'g', 6);
    const int point = text.indexOf('.');
    return point < 0 ? text : text.left(point);
}

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
    const imageconvert::OfdPaper* paper = imageconvert::ofdPaper(paperIndex + 2);
    if (!paper)
        return firstPicture;
    const QSize upright(paper->shortSideMm, paper->longSideMm);
    return firstPicture.width() >= firstPicture.height() ? upright.transposed() : upright;
}
