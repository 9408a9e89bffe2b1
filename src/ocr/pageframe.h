// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <opencv2/core.hpp>

// The page as the OCR function looks at it: on a white portrait A4 sheet at 300 dpi.

struct LoadedPage
{
    cv::Mat pixels;  // CV_8UC1, or CV_8UC3 blue-green-red; empty when the file cannot be read
    double dpi = 0;  // as the file says, or guessed from the size
    QString problem; // English, for the log
};

// Reads a picture file of any kind that the image library knows. Throws nothing.
LoadedPage loadPage(const QString& file);

// The page resampled to 300 dpi at the top left of the white frame; reduced to fit it when it is larger, also
// a landscape page. A page that is the frame already is returned as it is.
cv::Mat layOnFrame(const cv::Mat& page, double dpi);
