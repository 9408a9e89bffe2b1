// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

// Makes a clean drawing look like a scan. Pure functions of their arguments: the same picture every time.
namespace scannerlook {

constexpr int kWidth = 2480; // A4 at 300 dpi
constexpr int kHeight = 3508;

// The sheet lies on a dark bed of A4 size, turned clockwise by `degrees` about the middle of the bed.
QImage onDarkBed(const QImage& sheet, double degrees);

// The back of a sheet with nothing on it: a few specks of dust and a trace of the front's print.
QImage blankBack(const QImage& front);

// Paper tint, light that falls off towards the edges, and sensor noise; `seed` chooses the noise.
QImage scanned(const QImage& page, quint32 seed);

} // namespace scannerlook
