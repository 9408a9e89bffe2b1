// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

// A framed page (300 dpi) made ready: both pictures are grey and of its size, and lack the ruled lines of
// tables and forms, which would make a table one box. Rules are straight dark lines, across from 19 mm and
// upright from 14 mm long, and at most 1.5 mm thick; they get the colour of the paper, as stamps over text
// do.
struct ReadablePage
{
    cv::Mat clean; // for the engine: otherwise as scanned
    // For the layout: low-passed, the paper even, or its noise would be taken for boxes by the hundred, and
    // strokes a little wider.
    cv::Mat smooth;
};

ReadablePage readablePage(const cv::Mat& frame);
