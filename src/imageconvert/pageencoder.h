// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core.hpp>
#include <string>

namespace imageconvert {

// Encoded pixel data for documents: no resolution in it, the document's page gives the size. `pixels`: 8 bit,
// 1 channel or 3 (red, green, blue). All throw PictureError.

// CCITT Group 4 of a two-level picture: one strip, most significant bit first, black runs are ink.
std::string groupFourData(const cv::Mat& pixels);
// A zlib stream of rows with PNG filters ("Predictor 15" in PDF).
std::string predictedData(const cv::Mat& pixels);
std::string jpegData(const cv::Mat& pixels, int quality);
// A PNG file, with 1 bit a pixel for two levels.
std::string pngData(const cv::Mat& pixels);

} // namespace imageconvert
