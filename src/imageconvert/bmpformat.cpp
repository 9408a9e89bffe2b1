// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/outputfile.h"
#include "imageconvert/picturereader.h"
#include "imageconvert/picturewriter.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace imageconvert {

namespace {

constexpr double kMetresPerInch = 0.0254;
constexpr size_t kHeaderSize = 54; // file header 14, information header 40

void put(std::vector<uchar>& to, uint32_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        to.push_back(static_cast<uchar>(value >> (8 * i)));
}

uint32_t get(const uchar* from, int bytes)
{
    uint32_t value = 0;
    for (int i = 0; i < bytes; ++i)
        value |= static_cast<uint32_t>(from[i]) << (8 * i);
    return value;
}

std::vector<uchar> header(const cv::Mat& pixels, int bits, size_t stride, double dpi)
{
    const uint32_t colours = bits == 24 ? 0 : 1u << bits;
    const auto data = static_cast<uint32_t>(stride * static_cast<size_t>(pixels.rows));
    const auto start = static_cast<uint32_t>(kHeaderSize + 4 * colours);
    const auto perMetre = static_cast<uint32_t>(std::lround(dpi / kMetresPerInch));
    std::vector<uchar> to{'B', 'M'};
    put(to, start + data, 4);
    put(to, 0, 4);
    put(to, start, 4);
    put(to, 40, 4);
    put(to, static_cast<uint32_t>(pixels.cols), 4);
    put(to, static_cast<uint32_t>(pixels.rows), 4); // positive: the last row comes first
    put(to, 1, 2);
    put(to, static_cast<uint32_t>(bits), 2);
    put(to, 0, 4);
    put(to, data, 4);
    put(to, perMetre, 4);
    put(to, perMetre, 4);
    put(to, colours, 4);
    put(to, 0, 4);
    for (uint32_t i = 0; i < colours; ++i)
        put(to, i * 255 / (colours - 1) * 0x010101u, 4);
    return to;
}

// An uncompressed BMP as its headers tell it.
struct BmpLayout
{
    int width = 0, height = 0;
    int bits = 0; // 1, 4, 8 with colours; 24, 32 blue, green, red(, unused)
    bool topDown = false;
    size_t stride = 0;
    long start = 0;           // of the rows
    std::vector<uchar> table; // 4 bytes a colour: blue, green, red, unused
};

cv::Mat rowsOf(std::FILE* file, const BmpLayout& bmp)
{
    cv::Mat raw(bmp.height, bmp.width, bmp.bits == 32 ? CV_8UC4 : bmp.bits == 24 ? CV_8UC3 : CV_8UC1);
    std::vector<uchar> row(bmp.stride);
    if (std::fseek(file, bmp.start, SEEK_SET) != 0)
        throw PictureError("damaged BMP header");
    for (int y = 0; y < bmp.height; ++y) {
        if (std::fread(row.data(), 1, row.size(), file) != row.size())
            throw PictureError("the BMP file is shorter than its header says");
        uchar* to = raw.ptr(bmp.topDown ? y : bmp.height - 1 - y);
        if (bmp.bits >= 8) {
            std::copy_n(row.data(), static_cast<size_t>(bmp.width) * raw.elemSize(), to);
            continue;
        }
        const int perByte = 8 / bmp.bits;
        for (int x = 0; x < bmp.width; ++x)
            to[x] = (row[static_cast<size_t>(x / perByte)] >> (8 - bmp.bits * (x % perByte + 1))) &
                    ((1 << bmp.bits) - 1);
    }
    return raw;
}

// Colours by their numbers; grey when all of them are. Numbers beyond the table are black.
cv::Mat coloured(const cv::Mat& numbers, const std::vector<uchar>& table)
{
    cv::Mat lookup(1, 256, CV_8UC3, cv::Scalar::all(0));
    bool grey = true;
    for (size_t i = 0; i < 256 && 4 * i + 3 < table.size(); ++i) {
        const uchar blue = table[4 * i], green = table[4 * i + 1], red = table[4 * i + 2];
        lookup.at<cv::Vec3b>(static_cast<int>(i)) = {red, green, blue};
        grey = grey && red == green && green == blue;
    }
    cv::Mat out, planes = numbers;
    if (grey)
        cv::extractChannel(lookup, lookup, 0);
    else
        cv::cvtColor(numbers, planes, cv::COLOR_GRAY2BGR);
    cv::LUT(planes, lookup, out);
    return out;
}

} // namespace

void writeBmp(OutputFile& file, const cv::Mat& pixels, double dpi)
{
    const int bits = isTwoLevel(pixels) ? 1 : pixels.channels() == 1 ? 8 : 24;
    const size_t stride = (static_cast<size_t>(pixels.cols) * static_cast<size_t>(bits) + 31) / 32 * 4;
    if (static_cast<double>(stride) * pixels.rows > 4.2e9)
        throw PictureError("picture too large for BMP");
    const std::vector<uchar> head = header(pixels, bits, stride, dpi);
    bool good = file.write(head.data(), head.size());
    // Some hundred rows at a time: one write call per row is slow, a copy of the page is memory.
    const int rowsAtOnce = static_cast<int>(std::max<size_t>(1, (1 << 20) / stride));
    std::vector<uchar> block(stride * static_cast<size_t>(rowsAtOnce));
    for (int bottom = pixels.rows; bottom > 0 && good; bottom -= rowsAtOnce) {
        const int count = std::min(rowsAtOnce, bottom);
        for (int i = 0; i < count; ++i) {
            uchar* to = block.data() + stride * static_cast<size_t>(i);
            const uchar* from = pixels.ptr(bottom - 1 - i);
            if (bits == 1)
                packRow(from, pixels.cols, false, to);
            else if (bits == 8)
                std::copy_n(from, pixels.cols, to);
            else
                cv::cvtColor(pixels.row(bottom - 1 - i), cv::Mat(1, pixels.cols, CV_8UC3, to),
                             cv::COLOR_RGB2BGR);
        }
        good = file.write(block.data(), stride * static_cast<size_t>(count));
    }
    file.throwIfFailed();
}

ReadResult readBmp(std::FILE* file, double fileSize)
{
    uchar head[kHeaderSize];
    if (std::fread(head, 1, sizeof head, file) != sizeof head || get(head + 14, 4) < 40)
        throw PictureError("damaged BMP header");
    BmpLayout bmp;
    bmp.width = static_cast<int32_t>(get(head + 18, 4));
    const auto rows = static_cast<int32_t>(get(head + 22, 4));
    bmp.bits = static_cast<int>(get(head + 28, 2));
    const uint32_t compression = get(head + 30, 4), headerSize = get(head + 14, 4);
    checkSize(bmp.width, std::abs(static_cast<double>(rows)));
    const bool indexed = bmp.bits == 1 || bmp.bits == 4 || bmp.bits == 8;
    if ((!indexed && bmp.bits != 16 && bmp.bits != 24 && bmp.bits != 32) || compression > 3 ||
        headerSize > 1000)
        throw PictureError("damaged BMP header");
    bmp.height = std::abs(rows);
    bmp.topDown = rows < 0;
    bmp.stride = (static_cast<size_t>(bmp.width) * static_cast<size_t>(bmp.bits) + 31) / 32 * 4;
    bmp.start = static_cast<long>(get(head + 10, 4));
    if ((compression == 0 || compression == 3) &&
        static_cast<double>(bmp.start) + static_cast<double>(bmp.stride) * bmp.height > fileSize)
        throw PictureError("the BMP file is shorter than its header says");
    const double dpi = std::round(get(head + 38, 4) * kMetresPerInch * 10) / 10;
    if (compression != 0 || bmp.bits == 16) { // seldom met: run lengths, colours by masks
        std::rewind(file);
        return {readWithMagick(file, fileSize, "BMP").pixels, dpi};
    }
    if (indexed) {
        const uint32_t stored = get(head + 46, 4), most = 1u << bmp.bits;
        bmp.table.resize(4 * static_cast<size_t>(stored == 0 ? most : std::min(stored, most)));
        if (std::fseek(file, 14 + static_cast<long>(headerSize), SEEK_SET) != 0 ||
            std::fread(bmp.table.data(), 1, bmp.table.size(), file) != bmp.table.size())
            throw PictureError("damaged BMP header");
    }
    const cv::Mat raw = rowsOf(file, bmp);
    cv::Mat pixels;
    if (indexed)
        pixels = coloured(raw, bmp.table);
    else
        cv::cvtColor(raw, pixels, bmp.bits == 32 ? cv::COLOR_BGRA2RGB : cv::COLOR_BGR2RGB);
    return {pixels, dpi};
}

} // namespace imageconvert
