// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>
#include <QString>

// Millimetres of an OFD page from pixels of the frame of 2480 x 3508 (A4 at 300 dpi) that stands for the
// page. Single precision, six significant digits, whole millimetres: what follows the decimal point is cut
// off.
constexpr int kOfdFrameWidth = 2480;
constexpr int kOfdFrameHeight = 3508;

QString getOFDLeft(int px, int pageWidthMm);
QString getOFDWidth(int px, int pageWidthMm); // with a fifth more: readers cut off what stands outside a box
QString getOFDHeight(int px, int pageHeightMm);
QString getOFDTop(int px, int pageHeightMm);

// The page box in millimetres for an item of the paper combo (0 A4, 1 Letter, 2 A5, 3 B5, 4 Legal), lying
// when the first page's picture does; for any other paper the picture's pixels count as millimetres.
QSize ofdPageBox(int paperIndex, const QSize& firstPicture);
