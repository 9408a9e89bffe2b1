// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pdf/pagereader.h"

#include <QMap>
#include <QSize>
#include <QString>

// A recognised line of a searchable PDF, in pixels at 300 dpi on the paper.
struct zarnPDFLINERET
{
    int number = 0;
    int x = 0;        // the line's left edge is trunc(x * 0.8)
    int baseline = 0; // y of the line the characters stand on
    int width = 0;
    int height = 0;
    int confidence = 0;
    QString text;
};

// A recognised line of a searchable OFD, in a frame of 2480 x 3508 whatever the page's size and direction.
struct zarnOFDLINERET
{
    int number = 0;
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    int confidence = 0;
    QString text;
    QString deltaX; // advance from each character to the next in millimetres: one value fewer than characters
};

constexpr int kTextConfidence = 64; // only what is read with more than this counts as text

// Horizontal place on the paper where the text of a record is drawn: trunc(x * 0.8).
int drawnLeft(int x);

// What a document shows of a page's lines, by line number in reading order: those of enough confidence.
// Pages larger than the paper (in pixels at 300 dpi), landscape pages among them, are shrunk to fit it. The
// text of a PDF line ends at its first comma.
QMap<int, zarnPDFLINERET> pdfTextLines(const PageText& page, const QSize& paper);
QMap<int, zarnOFDLINERET> ofdTextLines(const PageText& page, int pageWidthMm);
