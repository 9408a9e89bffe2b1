// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>
#include <QString>

// What the settings dialogs show their effect on: a page as a reduced copy and the piece of it with the most
// on it in full resolution, both as picture files.
struct SamplePage
{
    QString page;   // the whole page
    QString detail; // the piece
    QRect place;    // of the piece on the page, pixels of the scan
    QSize size;     // of the whole page, pixels of the scan
    double dpi = 0; // of the scan

    static constexpr int kReduction = 4; // of the page's copy, in width and height
    double pageDpi() const { return dpi / kReduction; }
    bool good() const { return !place.isEmpty(); }
};

// Makes the sample of a page in `folder` (with "/"): "lastPage.ppm", a quarter as wide and high, and
// "lastDetail.ppm". Any thread; false (logged) when the page cannot be read or the files not written.
bool makeSample(const QString& pageFile, double dpi, const QString& folder);
// The sample that was made last in `folder`; one that is not good() when there is none.
SamplePage readSample(const QString& folder);

// The sample of the page that was scanned last stands among the page files.
bool keepLastPage(const QString& pageFile, double dpi);
SamplePage lastPage();

// The size of the piece, in pixels of the scan.
constexpr QSize kDetailSize(540, 400);
