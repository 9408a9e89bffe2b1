// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/pngscan.h"

#include "imageconvert/picture.h"

#include <cmath>
#include <cstring>
#include <zlib.h>

namespace imageconvert {

namespace {

constexpr double kMetresPerInch = 0.0254;

[[noreturn]] void damaged(const char* why)
{
    throw PictureError(std::string("damaged PNG: ") + why);
}

uint32_t u32(const uchar* at)
{
    return static_cast<uint32_t>(at[0]) << 24 | static_cast<uint32_t>(at[1]) << 16 |
           static_cast<uint32_t>(at[2]) << 8 | at[3];
}

void readHeader(const uchar* data, size_t size, PngInfo& info)
{
    if (size != 13)
        damaged("wrong header");
    checkSize(u32(data), u32(data + 4));
    info.width = static_cast<int>(u32(data));
    info.height = static_cast<int>(u32(data + 4));
    info.depth = data[8];
    info.colourType = data[9];
    info.interlaced = data[12] != 0;
    info.transparent = (info.colourType & 4) != 0;
}

} // namespace

double dpiOfDotsPerMetre(uint32_t dots)
{
    const double dpi = std::round(dots * kMetresPerInch * 100) / 100;
    return std::abs(dpi - std::round(dpi)) < 0.03 ? std::round(dpi) : dpi;
}

PngInfo scanPng(const std::string& bytes)
{
    const auto* data = reinterpret_cast<const uchar*>(bytes.data());
    PngInfo info;
    for (size_t at = 8;;) {
        if (at + 12 > bytes.size())
            damaged("the file ends too early");
        const size_t size = u32(data + at);
        if (size > bytes.size() - at - 12)
            damaged("the file ends too early");
        const uchar* type = data + at + 4;
        const uchar* content = type + 4;
        if (crc32(crc32(0, nullptr, 0), type, static_cast<uInt>(size + 4)) != u32(content + size))
            damaged("a check sum is wrong");
        if (std::memcmp(type, "IHDR", 4) == 0)
            readHeader(content, size, info);
        else if (std::memcmp(type, "tRNS", 4) == 0)
            info.transparent = true;
        else if (std::memcmp(type, "IDAT", 4) == 0)
            info.pixels.emplace_back(at + 8, size);
        else if (std::memcmp(type, "pHYs", 4) == 0 && size == 9 && content[8] == 1) {
            info.xDpi = dpiOfDotsPerMetre(u32(content));
            info.yDpi = dpiOfDotsPerMetre(u32(content + 4));
        } else if (std::memcmp(type, "IEND", 4) == 0)
            break;
        at += 12 + size;
    }
    if (info.width == 0 || info.pixels.empty())
        damaged("no picture in it");
    return info;
}

} // namespace imageconvert
