// SPDX-License-Identifier: GPL-3.0-or-later
#include "picture.h"

#include <cstdint>
#include <fstream>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace vscan {

namespace {

constexpr double inchPerMetre = 39.3701;

using Bytes = std::vector<uint8_t>;

uint32_t bigEndian(const Bytes& bytes, size_t at, int count)
{
    uint32_t value = 0;
    for (int i = 0; i < count; ++i)
        value = value << 8 | bytes[at + static_cast<size_t>(i)];
    return value;
}

// pHYs stands before the first IDAT chunk.
double pngDpi(const Bytes& file)
{
    for (size_t at = 8; at + 12 <= file.size();) {
        const size_t length = bigEndian(file, at, 4);
        const std::string type(file.begin() + static_cast<long>(at) + 4,
                               file.begin() + static_cast<long>(at) + 8);
        if (type == "IDAT")
            break;
        if (type == "pHYs" && length >= 9 && at + 17 <= file.size() && file[at + 16] == 1)
            return bigEndian(file, at + 8, 4) / inchPerMetre;
        at += 12 + length;
    }
    return 0;
}

// Density in the JFIF segment: unit 1 dots per inch, 2 dots per centimetre.
double jpegDpi(const Bytes& file)
{
    for (size_t at = 2; at + 18 <= file.size() && file[at] == 0xFF && file[at + 1] != 0xDA;) {
        if (file[at + 1] == 0xE0 && file[at + 4] == 'J' && file[at + 5] == 'F') {
            const double density = bigEndian(file, at + 12, 2);
            return file[at + 11] == 1 ? density : file[at + 11] == 2 ? density * 2.54 : 0;
        }
        at += 2 + bigEndian(file, at + 2, 2);
    }
    return 0;
}

// Eight bits, grey or BGR, transparency on white paper.
cv::Mat toPaper(cv::Mat pixels)
{
    if (pixels.depth() == CV_16U)
        pixels.convertTo(pixels, CV_8U, 1.0 / 257);
    if (pixels.channels() != 4)
        return pixels;
    std::vector<cv::Mat> planes;
    cv::split(pixels, planes);
    cv::Mat paper;
    cv::cvtColor(pixels, paper, cv::COLOR_BGRA2BGR);
    cv::Mat alpha;
    cv::merge(std::vector<cv::Mat>(3, planes[3]), alpha);
    const cv::Mat onWhite = ~alpha;
    cv::multiply(paper, alpha, paper, 1.0 / 255);
    return paper + onWhite;
}

} // namespace

double statedDpi(const std::string& path)
{
    constexpr size_t headLength = 64 * 1024;
    std::ifstream stream(path, std::ios::binary);
    Bytes head(headLength);
    stream.read(reinterpret_cast<char*>(head.data()), headLength);
    head.resize(static_cast<size_t>(stream.gcount()));
    double dpi = 0;
    if (head.size() > 8 && head[0] == 0x89 && head[1] == 'P')
        dpi = pngDpi(head);
    else if (head.size() > 4 && head[0] == 0xFF && head[1] == 0xD8)
        dpi = jpegDpi(head);
    return dpi >= 20 && dpi <= 10000 ? dpi : 0;
}

bool readPicture(const std::string& path, double defaultDpi, Picture& picture, std::string& error)
{
    try {
        picture.pixels = toPaper(cv::imread(path, cv::IMREAD_UNCHANGED));
    } catch (const cv::Exception& failure) {
        picture.pixels.release();
        error = path + ": " + failure.what();
        return false;
    }
    const int type = picture.pixels.type();
    if (picture.pixels.empty() || (type != CV_8UC1 && type != CV_8UC3)) {
        error = path + ": not a readable picture";
        return false;
    }
    const double stated = statedDpi(path);
    picture.dpi = stated > 0 ? stated : defaultDpi;
    return true;
}

} // namespace vscan
