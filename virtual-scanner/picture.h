// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <string>

namespace vscan {

struct Picture
{
    cv::Mat pixels; // 8 bit, grey or BGR
    double dpi = 300;
};

// Reads a PNM, PNG or JPEG file. The resolution is the file's own (PNG pHYs, JFIF density) or else
// `defaultDpi`. False with `error` set when the file is missing or damaged.
bool readPicture(const std::string& path, double defaultDpi, Picture& picture, std::string& error);

// Resolution that a file states, 0 when it states none.
double statedDpi(const std::string& path);

} // namespace vscan
