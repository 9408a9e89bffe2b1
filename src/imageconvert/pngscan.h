// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace imageconvert {

// What the chunks of a PNG file say; nothing is decoded.
struct PngInfo
{
    int width = 0, height = 0;
    int depth = 0;      // bits per sample
    int colourType = 0; // 0 grey, 2 red-green-blue, 3 palette, 4 and 6 with transparency
    bool interlaced = false;
    bool transparent = false;
    double xDpi = 0, yDpi = 0;                     // 0: not said
    std::vector<std::pair<size_t, size_t>> pixels; // offset and length of each piece of the zlib stream
};

// Walks over all chunks and checks their sums, so that a file that is cut off or has a wrong bit is found.
// Throws PictureError.
PngInfo scanPng(const std::string& bytes);

// Whole resolutions come back whole from dots per metre.
double dpiOfDotsPerMetre(uint32_t dots);

} // namespace imageconvert
