// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/exif.h"

#include <cstring>

namespace imageconvert {

namespace {

// Numbers at places of a segment; 0 beyond its end.
struct Segment
{
    const uchar* data;
    size_t size;
    bool littleEndian = false;

    uint32_t number(size_t at, size_t bytes) const
    {
        uint32_t value = 0;
        if (at + bytes > size)
            return 0;
        for (size_t i = 0; i < bytes; ++i)
            value = value << 8 | data[at + (littleEndian ? bytes - 1 - i : i)];
        return value;
    }
};

} // namespace

int exifOrientation(const uchar* segment, size_t size)
{
    constexpr size_t prefix = 6, entrySize = 12;
    constexpr uint32_t tag = 0x0112, typeShort = 3;
    if (size < prefix + 8 || std::memcmp(segment, "Exif\0\0", prefix) != 0)
        return 1;
    Segment tiff{segment + prefix, size - prefix};
    tiff.littleEndian = tiff.data[0] == 'I';
    const size_t directory = tiff.number(4, 4);
    const size_t entries = tiff.number(directory, 2);
    for (size_t i = 0; i < entries; ++i) {
        const size_t entry = directory + 2 + i * entrySize;
        if (tiff.number(entry, 2) != tag || tiff.number(entry + 2, 2) != typeShort)
            continue;
        const uint32_t value = tiff.number(entry + 8, 2);
        return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
    }
    return 1;
}

cv::Mat upright(const cv::Mat& stored, int orientation)
{
    if (orientation < 2 || orientation > 8)
        return stored;
    cv::Mat out = stored;
    if (orientation > 4)
        cv::transpose(stored, out);
    // What is left after the transposition: mirrored across, turned by 180 degrees, mirrored down.
    constexpr int none = 2;
    constexpr int flips[] = {none, none, 1, -1, 0, none, 1, -1, 0};
    if (flips[orientation] != none)
        cv::flip(out, out, flips[orientation]);
    return out;
}

} // namespace imageconvert
