// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/pngscan.h"

#include <opencv2/core.hpp>
#include <string>
#include <sys/types.h>

namespace imageconvert {

// One page file on its way into a document. Its bytes are read when they are needed, never kept.
struct PageFile
{
    enum class Kind
    {
        Jpeg,    // goes in as it is
        PngBits, // 1-bit grey PNG, not interlaced
        Png,     // other PNG
        Other    // what readPicture() reads
    };
    std::string path;
    Kind kind = Kind::Other;
    off_t bytes = 0;
    cv::Size size;    // pixels as stored
    int channels = 3; // 1, 3, or 4 inks (JPEG)
    bool twoLevel = false;
    bool invertedInks = false; // with 4 channels
    int orientation = 1;       // how to turn the stored picture, as Exif counts it, 1 to 8
    double xDpi = 0, yDpi = 0; // 0: the file does not say
    PngInfo png;               // of a PNG

    bool onItsSide() const { return orientation >= 5; } // rows of the file stand upright on the page
};

// Looks at a page file. Throws PictureError when it is missing, empty, cut off, damaged or no picture.
PageFile inspectPage(const std::string& path);

// The file's bytes; throws when they cannot be read or are no longer as many as when the page was looked at.
std::string readBytes(const PageFile& page);

// The page's pixels, grey or red-green-blue, the right way up; throws like readBytes().
cv::Mat decodedPixels(const PageFile& page);

// Size on paper in millimetres, the right way up; `sourceDpi` is for files that do not say (0: guessed).
cv::Size2d physicalSize(const PageFile& page, double sourceDpi);

} // namespace imageconvert
