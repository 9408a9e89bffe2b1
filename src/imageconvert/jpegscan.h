// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace imageconvert {

// What the markers of a JPEG file say; nothing is decoded.
struct JpegInfo
{
    int width = 0, height = 0;
    int components = 0;
    bool passable = false;     // 8-bit baseline, extended or progressive: what PDF and OFD readers decode
    bool adobe = false;        // an Adobe marker: four inks are stored inverted
    double xDpi = 0, yDpi = 0; // 0: not said
    int orientation = 1;       // of the Exif data, 1 to 8
};

// Walks over all markers to the end of the picture, so that a file that is cut off is found (about 1 ms per
// MB). Wrong bits between markers are not seen. Throws PictureError.
JpegInfo scanJpeg(const std::string& bytes);

} // namespace imageconvert
