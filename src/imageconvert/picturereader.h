// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/picture.h"

#include <cstdio>
#include <string>

namespace imageconvert {

struct ReadResult
{
    cv::Mat pixels; // 8 bit, grey or red-green-blue; deeper samples rounded, transparency laid on white
    double dpi = 0; // 0: the file does not say
};

// Reads a picture file; the kind is told by its first bytes, not by its name. Sizes are checked before
// anything is allocated. Throws PictureError for what is damaged, cut off, absurdly large or of an unknown
// kind.
ReadResult readPicture(const std::string& path);

// The single kinds; the file stands at its start.
ReadResult readPnm(std::FILE* file, double fileSize);
ReadResult readJpeg(std::FILE* file);
ReadResult readPng(std::FILE* file);
ReadResult readTiff(const std::string& path);
ReadResult readBmp(std::FILE* file, double fileSize);
// `format`: the ImageMagick name of the kind, so that nothing in the file chooses another reader.
ReadResult readWithMagick(std::FILE* file, double fileSize, const char* format);

} // namespace imageconvert
