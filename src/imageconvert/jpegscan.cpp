// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/jpegscan.h"

#include "imageconvert/exif.h"
#include "imageconvert/pictureerror.h"

#include <cstring>

namespace imageconvert {

namespace {

[[noreturn]] void damaged(const char* why)
{
    throw PictureError(std::string("damaged JPEG: ") + why);
}

// Bytes of a segment; reading beyond the end gives zeros.
struct Bytes
{
    const uchar* data;
    size_t size;

    unsigned at(size_t i) const { return i < size ? data[i] : 0; }
    unsigned u16(size_t i) const { return at(i) << 8 | at(i + 1); }
    bool startsWith(const char* text, size_t length) const
    {
        return size >= length && std::memcmp(data, text, length) == 0;
    }
};

void readJfif(const Bytes& segment, JpegInfo& info)
{
    const unsigned unit = segment.at(7);
    if (unit != 1 && unit != 2)
        return;
    const double perInch = unit == 2 ? 2.54 : 1;
    info.xDpi = segment.u16(8) * perInch;
    info.yDpi = segment.u16(10) * perInch;
}

bool isFrame(unsigned marker)
{
    return marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
}

void readSegment(unsigned marker, const Bytes& segment, JpegInfo& info)
{
    if (isFrame(marker)) {
        info.height = static_cast<int>(segment.u16(1));
        info.width = static_cast<int>(segment.u16(3));
        info.components = static_cast<int>(segment.at(5));
        const bool known = info.components == 1 || info.components == 3 || info.components == 4;
        info.passable = marker <= 0xc2 && segment.at(0) == 8 && known && info.height > 0;
    } else if (marker == 0xe0 && segment.startsWith("JFIF", 5)) {
        readJfif(segment, info);
    } else if (marker == 0xe1 && info.orientation == 1) {
        info.orientation = exifOrientation(segment.data, segment.size);
    } else if (marker == 0xee && segment.startsWith("Adobe", 5)) {
        info.adobe = true;
    }
}

// The place of the next marker in coded data: 0xff that is neither a stuffed byte nor a restart marker.
size_t afterCodedData(const std::string& bytes, size_t at)
{
    while (at + 1 < bytes.size()) {
        const void* found = std::memchr(bytes.data() + at, 0xff, bytes.size() - at - 1);
        if (!found)
            break;
        at = static_cast<size_t>(static_cast<const char*>(found) - bytes.data());
        const auto next = static_cast<uchar>(bytes[at + 1]);
        if (next == 0xff)
            ++at;
        else if (next == 0 || (next >= 0xd0 && next <= 0xd7))
            at += 2;
        else
            return at;
    }
    damaged("the file ends too early");
}

} // namespace

JpegInfo scanJpeg(const std::string& bytes)
{
    const Bytes all{reinterpret_cast<const uchar*>(bytes.data()), bytes.size()};
    JpegInfo info;
    bool coded = false;
    size_t at = 2;
    for (;;) {
        if (at + 1 >= bytes.size())
            damaged("the file ends too early");
        if (all.at(at) != 0xff)
            damaged("no marker where one must stand");
        const unsigned marker = all.at(at + 1);
        if (marker == 0xd9)
            break;
        if (marker == 0xff || marker == 0x01 || (marker >= 0xd0 && marker <= 0xd8)) {
            at += marker == 0xff ? 1 : 2;
            continue;
        }
        const size_t length = all.u16(at + 2);
        if (length < 2 || at + 2 + length > bytes.size())
            damaged("the file ends too early");
        readSegment(marker, {all.data + at + 4, length - 2}, info);
        at += 2 + length;
        if (marker == 0xda) {
            coded = true;
            at = afterCodedData(bytes, at);
        }
    }
    if (!coded || info.components == 0)
        damaged("no picture in it");
    return info;
}

} // namespace imageconvert
