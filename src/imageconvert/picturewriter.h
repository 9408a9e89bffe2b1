// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/picture.h"

#include <string>

namespace imageconvert {

class ByteSink;
class OutputFile;

// Writes `path` whole or not at all. `type`: "jpg", "jpeg", "tif", "tiff", "png" or "bmp", any case. Pictures
// of two levels become 1-bit files where the type has them. Throws PictureError.
void writePicture(const cv::Mat& pixels, const std::string& path, const std::string& type, double dpi,
                  const SaveOptions& options);

// The single types; pixels 8 bit, 1 or 3 channels (red, green, blue). `dpi` 0: the file tells no resolution.
void writeJpeg(ByteSink& file, const cv::Mat& pixels, double dpi, int quality);
void writePng(ByteSink& file, const cv::Mat& pixels, double dpi, int level);
void writeTiff(OutputFile& file, const cv::Mat& pixels, double dpi, SaveOptions::Tiff compression);
void writeBmp(OutputFile& file, const cv::Mat& pixels, double dpi);

// Packs a row of 0 and 255 into bits, most significant first; a set bit is 255, with `invert` 0.
void packRow(const uchar* row, int width, bool invert, uchar* packed);

} // namespace imageconvert
