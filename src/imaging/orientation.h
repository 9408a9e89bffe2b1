// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <string>

// Which way up a page is, judged by recognising two samples of its text in each direction.
//
// Codes: 0 upright, 1 / 2 / 3 to be turned 90 / 180 / 270 degrees clockwise, 4 undecided (left as it is).
// The functions may be called from any thread; they switch OpenMP off for it. Nothing throws.

constexpr int kOrientationUndecided = 4;

struct Orientation
{
    int code = kOrientationUndecided;
    double confidence = 0; // of the less sure sample, 0 to 1; 0 when undecided
};

// The orientation of the page in the file; undecided when it cannot be read or the language model is missing.
Orientation detectOrientation(const std::string& path);

// Its code alone.
int getRealRotation(const std::string& path);

// 0 upright, 2 upside down, 4 neither could be confirmed. `image`: CV_8UC3 (BGR), full resolution.
int getRotation(const cv::Mat& image);

// The clockwise angle in degrees of a code (0 for undecided).
double rotationAngle(int code);
