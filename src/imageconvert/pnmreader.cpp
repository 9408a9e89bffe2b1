// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/picturereader.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <vector>

namespace imageconvert {

namespace {

struct Header
{
    int kind = 0; // 1 to 6, the digit of the magic number
    int width = 0, height = 0, maximum = 1;
    int samples() const { return kind == 3 || kind == 6 ? 3 : 1; }
};

// The next number; blanks, empty lines and comments before it are skipped. -1: there is none.
long number(std::FILE* file)
{
    int c = std::getc(file);
    while (c != EOF && (std::isspace(c) || c == '#')) {
        if (c == '#')
            while (c != EOF && c != '\n')
                c = std::getc(file);
        else
            c = std::getc(file);
    }
    if (c == EOF || !std::isdigit(c))
        return -1;
    long value = 0;
    for (; c != EOF && std::isdigit(c); c = std::getc(file)) {
        value = value * 10 + (c - '0');
        if (value > 100000000)
            return -1;
    }
    return value; // the one blank after it has been read, as the format wants before binary data
}

Header readHeader(std::FILE* file)
{
    Header header;
    std::getc(file);
    header.kind = std::getc(file) - '0';
    const long width = number(file), height = number(file);
    const long maximum = header.kind == 1 || header.kind == 4 ? 1 : number(file);
    if (width < 0 || height < 0 || maximum < 1 || maximum > 65535)
        throw PictureError("damaged PNM header");
    checkSize(static_cast<double>(width), static_cast<double>(height));
    header.width = static_cast<int>(width);
    header.height = static_cast<int>(height);
    header.maximum = static_cast<int>(maximum);
    return header;
}

void readExactly(std::FILE* file, void* to, size_t size)
{
    if (std::fread(to, 1, size, file) != size)
        throw PictureError("the PNM file is shorter than its header says");
}

uchar scaled(unsigned value, unsigned maximum)
{
    return static_cast<uchar>((std::min(value, maximum) * 255u + maximum / 2) / maximum);
}

void readText(std::FILE* file, const Header& header, cv::Mat& pixels)
{
    const bool bits = header.kind == 1;
    for (int y = 0; y < header.height; ++y) {
        uchar* row = pixels.ptr(y);
        for (int x = 0; x < header.width * header.samples(); ++x) {
            long value = -1;
            if (bits) { // digits may stand without a blank between them
                int c = std::getc(file);
                while (c != EOF && std::isspace(c))
                    c = std::getc(file);
                value = c == '0' ? 1 : c == '1' ? 0 : -1; // 1 is black
            } else {
                value = number(file);
            }
            if (value < 0)
                throw PictureError("the PNM file is shorter than its header says");
            row[x] = scaled(static_cast<unsigned>(value), static_cast<unsigned>(header.maximum));
        }
    }
}

void readBits(std::FILE* file, const Header& header, cv::Mat& pixels)
{
    std::vector<uchar> packed(static_cast<size_t>(header.width + 7) / 8);
    for (int y = 0; y < header.height; ++y) {
        readExactly(file, packed.data(), packed.size());
        uchar* row = pixels.ptr(y);
        for (int x = 0; x < header.width; ++x)
            row[x] = packed[static_cast<size_t>(x) / 8] >> (7 - x % 8) & 1 ? 0 : 255;
    }
}

void readBytes(std::FILE* file, const Header& header, cv::Mat& pixels)
{
    const size_t samples = static_cast<size_t>(header.width) * static_cast<size_t>(header.samples());
    const auto maximum = static_cast<unsigned>(header.maximum);
    if (maximum == 255) {
        readExactly(file, pixels.data, samples * static_cast<size_t>(header.height));
        return;
    }
    const size_t bytes = maximum > 255 ? 2 : 1;
    std::vector<uchar> raw(samples * bytes);
    for (int y = 0; y < header.height; ++y) {
        readExactly(file, raw.data(), raw.size());
        uchar* row = pixels.ptr(y);
        for (size_t i = 0; i < samples; ++i)
            row[i] = scaled(bytes == 2 ? static_cast<unsigned>(raw[2 * i] << 8 | raw[2 * i + 1]) : raw[i],
                            maximum);
    }
}

} // namespace

ReadResult readPnm(std::FILE* file, double fileSize)
{
    const Header header = readHeader(file);
    // The file must be long enough before memory is taken: a damaged header must not cost gigabytes.
    const double samples = static_cast<double>(header.width) * header.height * header.samples();
    const double bytes = header.kind == 4   ? std::ceil(header.width / 8.0) * header.height
                         : header.kind == 1 ? samples
                         : header.kind < 4  ? 2 * samples - 1
                                            : samples * (header.maximum > 255 ? 2 : 1);
    if (bytes > fileSize - static_cast<double>(std::ftell(file)))
        throw PictureError("the PNM file is shorter than its header says");
    cv::Mat pixels(header.height, header.width, header.samples() == 3 ? CV_8UC3 : CV_8UC1);
    if (header.kind < 4)
        readText(file, header, pixels);
    else if (header.kind == 4)
        readBits(file, header, pixels);
    else
        readBytes(file, header, pixels);
    return {pixels, 0};
}

} // namespace imageconvert
