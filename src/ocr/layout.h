// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMap>
#include <opencv2/core.hpp>
#include <vector>

// Cuts a page into numbered text boxes by projecting the ink of a reduced copy onto its axes.

// One text box, in pixels of the reduced page.
struct zarnRECT
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// The frame that every page is laid on, A4 at 300 dpi, and what leads from the reduced page to it. The factor
// is fixed: on the frame the reduced page is 800 wide.
const cv::Size kPageFrame(2480, 3508);
constexpr double kPageFactor = 3.1;

// The reduced two-level copy (CV_8UC1, ink 255) of a page (CV_8UC1, or CV_8UC3 blue-green-red): pages over a
// million pixels become 800 wide, or 1000 when wider than high. Empty for an empty page.
cv::Mat reducedInk(const cv::Mat& page);

// The text boxes of a page in reading order: rows from top to bottom, in each its blocks from left to right.
QMap<int, zarnRECT> findTextBoxes(const cv::Mat& page);

// The box on the page: each number times 3.1, cut to an integer.
cv::Rect onPage(const zarnRECT& box);

// Only boxes within the frame are read.
bool withinFrame(const cv::Rect& box);

// The boxes on the page; the place in the list is the number.
std::vector<cv::Rect> onPage(const QMap<int, zarnRECT>& boxes);
