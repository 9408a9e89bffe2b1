// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <vector>

// Finds text rows and the blocks inside them by projecting a two-level image (CV_8UC1, ink 255) onto its
// axes. Serves orientation detection and the layout of recognised documents.

// Rows from top to bottom: x 0, full width. A row starts where a pixel row has more than 7 ink pixels, ends
// at the first pixel row at least 5 below its start with at most 6, and is kept when it is more than 8 high.
std::vector<cv::Rect> getRowRects(const cv::Mat& image);

// Blocks of one row from left to right; `rowImage` is the row's strip, and the blocks get `rowTop` as y and
// the strip's height. Pieces 10 or fewer columns apart (after a 10 x 1 dilation) are one block.
std::vector<cv::Rect> getBlockRects(const cv::Mat& rowImage, int rowTop);
