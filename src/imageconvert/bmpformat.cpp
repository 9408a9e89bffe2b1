// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/outputfile.h"
#include "imageconvert/picturereader.h"
#include "imageconvert/picturewriter.h"

#include <cmath>
#include <cstdlib>
#include <opencv2/imgcodecs.hpp>
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

ReadResult readBmp(std::FILE* file, const std::string& path, double fileSize)
{
    uchar head[kHeaderSize];
    if (std::fread(head, 1, sizeof head, file) != sizeof head || get(head + 14, 4) < 40)
        throw PictureError("damaged BMP header");
    const auto width = static_cast<int32_t>(get(head + 18, 4));
    const double height = std::abs(static_cast<double>(static_cast<int32_t>(get(head + 22, 4))));
    const uint32_t bits = get(head + 28, 2), compression = get(head + 30, 4);
    checkSize(width, height);
    const bool knownBits = bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    if (!knownBits || compression > 3 || get(head + 14, 4) > 1000)
        throw PictureError("damaged BMP header");
    const double stride = std::floor((static_cast<double>(width) * bits + 31) / 32) * 4;
    if ((compression == 0 || compression == 3) && get(head + 10, 4) + stride * height > fileSize)
        throw PictureError("the BMP file is shorter than its header says");
    cv::Mat read = cv::imread(path, cv::IMREAD_UNCHANGED);
    if (read.empty() || read.depth() != CV_8U)
        throw PictureError("damaged BMP");
    cv::Mat pixels = read;
    if (read.channels() == 4)
        cv::cvtColor(read, pixels, cv::COLOR_BGRA2RGB);
    else if (read.channels() == 3)
        cv::cvtColor(read, pixels, cv::COLOR_BGR2RGB);
    return {pixels, std::round(get(head + 38, 4) * kMetresPerInch * 10) / 10};
}

} // namespace imageconvert
