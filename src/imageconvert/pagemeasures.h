// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>
#include <optional>

// What the operations on one handle found out about its page. Nothing where the operation has not been run.
struct PageMeasures
{
    // Ink in the densest 10 x 10 mm window in percent: what AutoDeleteBlankPage compares with its limit.
    std::optional<double> blankPercent;
    // What auto-crop kept: the sheet's bounding box, in pixels of the picture before; all of it when nothing
    // was cut.
    std::optional<QRect> cropBox;
    // By how many degrees the content lay turned clockwise before auto-crop and deskew straightened it, in
    // all; 0 when they left the page alone.
    std::optional<double> skewDeg;
};
