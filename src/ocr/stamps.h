// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>

// A framed page (300 dpi, three channels) as a grey picture in which coloured stamps that share rows with
// black text are faded into the paper: a stamp joins the rows that it crosses to one box, and its ring and
// characters make the text below unreadable. Stamps are outlines in colour, 18 to 60 mm in both directions.
// A stamp that stands alone stays: it becomes a box of its own.
cv::Mat greyWithoutStamps(const cv::Mat& frame);
