// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/pagemeasures.h"

#include <QByteArray>
#include <QString>
#include <vector>

namespace companion {

// What became of one input, or of one piece of it: a line of the report.
struct PageReport
{
    struct Time
    {
        QString operation;
        double ms;
    };

    QString file;
    QString out;   // empty: nothing was written
    int width = 0; // of the finished picture, pixels
    int height = 0;
    std::optional<bool> blank;
    std::optional<int> turn;          // degrees clockwise, by which --orient has turned the page
    std::optional<double> confidence; // of that turn, 0 to 1; 0: undecided
    PageMeasures measures;
    std::vector<Time> times; // in the order of the work; a name may come more than once
    QString error;

    bool failed() const { return !error.isEmpty(); }
};

// One JSON object in one line, without the line's end. Keys: file, out, width, height, blank, blank_score,
// crop [x,y,w,h], skew_deg, turn, confidence, ms (one key an operation), error; null for what was not
// measured.
QByteArray reportLine(const PageReport& report);

} // namespace companion
