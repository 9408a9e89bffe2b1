// SPDX-License-Identifier: GPL-3.0-or-later
#include "picture.h"

#include <algorithm>
#include <cctype>
#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <jpeglib.h>
#include <memory>
#include <opencv2/imgproc.hpp>
#include <png.h>
#include <vector>

namespace vscan {

namespace {

constexpr double inchPerMetre = 39.3701;
constexpr int maxSide = 60000;           // pixels; A3 at 1200 dpi has 20000
constexpr int64_t maxPixels = 512 << 20; // and 280 million of them

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

// False for absurd sizes, before their memory is taken.
bool allocate(cv::Mat& pixels, int64_t width, int64_t height, bool colour)
{
    if (width < 1 || height < 1 || width > maxSide || height > maxSide || width * height > maxPixels)
        return false;
    pixels.create(static_cast<int>(height), static_cast<int>(width), colour ? CV_8UC3 : CV_8UC1);
    return true;
}

struct FileCloser
{
    void operator()(FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<FILE, FileCloser>;

// ---- PNM ----

// The next number of a header, over blanks and comments; -1 when there is none.
int headerNumber(FILE* file)
{
    int c = std::getc(file);
    while (std::isspace(c) || c == '#') {
        const bool comment = c == '#';
        while (comment && c != '\n' && c != EOF)
            c = std::getc(file);
        c = std::getc(file);
    }
    int value = -1;
    while (std::isdigit(c) && value < maxSide) {
        value = std::max(value, 0) * 10 + (c - '0');
        c = std::getc(file);
    }
    return std::isspace(c) ? value : -1; // a single blank ends the number
}

bool unpackBits(FILE* file, cv::Mat& pixels)
{
    Bytes line((static_cast<size_t>(pixels.cols) + 7) / 8);
    for (int y = 0; y < pixels.rows; ++y) {
        if (std::fread(line.data(), 1, line.size(), file) != line.size())
            return false;
        for (int x = 0; x < pixels.cols; ++x)
            pixels.at<uint8_t>(y, x) = line[static_cast<size_t>(x) / 8] & 0x80 >> x % 8 ? 0 : 255;
    }
    return true;
}

bool readSamples(FILE* file, int maximum, cv::Mat& pixels)
{
    const size_t width = maximum > 255 ? 2 : 1;
    const size_t samples = static_cast<size_t>(pixels.cols) * static_cast<size_t>(pixels.channels());
    Bytes line(samples * width);
    for (int y = 0; y < pixels.rows; ++y) {
        if (std::fread(line.data(), 1, line.size(), file) != line.size())
            return false;
        uint8_t* out = pixels.ptr(y);
        if (maximum == 255) {
            std::copy(line.begin(), line.end(), out);
            continue;
        }
        for (size_t i = 0; i < samples; ++i)
            out[i] = static_cast<uint8_t>(
                std::min<uint32_t>(255, bigEndian(line, i * width, static_cast<int>(width)) * 255 /
                                            static_cast<uint32_t>(maximum)));
    }
    return true;
}

bool readPnm(const std::string& path, cv::Mat& pixels)
{
    const File file(std::fopen(path.c_str(), "rbe"));
    if (!file || std::getc(file.get()) != 'P')
        return false;
    const int kind = std::getc(file.get());
    const int width = headerNumber(file.get());
    const int height = headerNumber(file.get());
    const int maximum = kind == '4' ? 1 : headerNumber(file.get());
    if (kind < '4' || kind > '6' || width < 1 || height < 1 || maximum < 1 || maximum > 65535)
        return false;
    std::error_code failure;
    const uintmax_t bits =
        static_cast<uintmax_t>(width) * static_cast<uintmax_t>(height) * (kind == '4' ? 1 : 8);
    if (std::filesystem::file_size(path, failure) < bits / 8 || !allocate(pixels, width, height, kind == '6'))
        return false;
    if (!(kind == '4' ? unpackBits(file.get(), pixels) : readSamples(file.get(), maximum, pixels)))
        return false;
    if (kind == '6')
        cv::cvtColor(pixels, pixels, cv::COLOR_RGB2BGR);
    return true;
}

// ---- PNG ----

struct PngImage : png_image
{
    PngImage() : png_image{} { version = PNG_IMAGE_VERSION; }
    ~PngImage() { png_image_free(this); }
    PngImage(const PngImage&) = delete;
    PngImage& operator=(const PngImage&) = delete;
};

bool readPng(const std::string& path, cv::Mat& pixels)
{
    PngImage image;
    if (!png_image_begin_read_from_file(&image, path.c_str()))
        return false;
    const bool colour = image.format & PNG_FORMAT_FLAG_COLOR;
    image.format = colour ? PNG_FORMAT_BGR : PNG_FORMAT_GRAY;
    if (!allocate(pixels, image.width, image.height, colour))
        return false;
    const png_color paper{255, 255, 255}; // below transparent parts
    return png_image_finish_read(&image, &paper, pixels.data, static_cast<png_int_32>(pixels.step), nullptr);
}

// ---- JPEG ----

struct JpegDecoder : jpeg_decompress_struct
{
    JpegDecoder() : jpeg_decompress_struct{} {}
    ~JpegDecoder() { jpeg_destroy_decompress(this); }
    JpegDecoder(const JpegDecoder&) = delete;
    JpegDecoder& operator=(const JpegDecoder&) = delete;

    jpeg_error_mgr errors{};
    std::jmp_buf leave{};
};

[[noreturn]] void leaveJpeg(j_common_ptr decoder)
{
    std::longjmp(static_cast<JpegDecoder*>(reinterpret_cast<j_decompress_ptr>(decoder))->leave, 1);
}

// Errors leave the library by longjmp to this function, which therefore owns nothing.
bool decodeJpeg(FILE* file, JpegDecoder& decoder, cv::Mat& pixels)
{
    decoder.err = jpeg_std_error(&decoder.errors);
    decoder.errors.error_exit = leaveJpeg;
    decoder.errors.output_message = [](j_common_ptr) {};
    if (setjmp(decoder.leave))
        return false;
    jpeg_create_decompress(&decoder);
    jpeg_stdio_src(&decoder, file);
    jpeg_read_header(&decoder, TRUE);
    decoder.out_color_space = decoder.num_components == 1 ? JCS_GRAYSCALE : JCS_EXT_BGR;
    jpeg_start_decompress(&decoder);
    if (!allocate(pixels, decoder.output_width, decoder.output_height, decoder.num_components != 1))
        return false;
    while (decoder.output_scanline < decoder.output_height) {
        JSAMPROW row = pixels.ptr(static_cast<int>(decoder.output_scanline));
        jpeg_read_scanlines(&decoder, &row, 1);
    }
    jpeg_finish_decompress(&decoder);
    return true;
}

bool readJpeg(const std::string& path, cv::Mat& pixels)
{
    const File file(std::fopen(path.c_str(), "rbe"));
    JpegDecoder decoder;
    return file && decodeJpeg(file.get(), decoder, pixels);
}

enum class Kind
{
    Unknown,
    Pnm,
    Png,
    Jpeg
};

Kind kindOf(const Bytes& head)
{
    if (head.size() < 4)
        return Kind::Unknown;
    if (head[0] == 0x89 && head[1] == 'P')
        return Kind::Png;
    if (head[0] == 0xFF && head[1] == 0xD8)
        return Kind::Jpeg;
    return head[0] == 'P' ? Kind::Pnm : Kind::Unknown;
}

Bytes headOf(const std::string& path)
{
    constexpr size_t headLength = 64 * 1024;
    std::ifstream stream(path, std::ios::binary);
    Bytes head(headLength);
    stream.read(reinterpret_cast<char*>(head.data()), headLength);
    head.resize(static_cast<size_t>(stream.gcount()));
    return head;
}

double statedDpi(const Bytes& head)
{
    const Kind kind = kindOf(head);
    const double dpi = kind == Kind::Png ? pngDpi(head) : kind == Kind::Jpeg ? jpegDpi(head) : 0;
    return dpi >= 20 && dpi <= 10000 ? dpi : 0;
}

} // namespace

double statedDpi(const std::string& path)
{
    return statedDpi(headOf(path));
}

// The decoders are called directly: OpenCV's reader of picture files loads a hundred more libraries, which
// would make each `vscan` command ten times slower.
bool readPicture(const std::string& path, double defaultDpi, Picture& picture, std::string& error)
{
    const Bytes head = headOf(path);
    bool good = false;
    picture.pixels.release();
    try {
        switch (kindOf(head)) {
        case Kind::Pnm:
            good = readPnm(path, picture.pixels);
            break;
        case Kind::Png:
            good = readPng(path, picture.pixels);
            break;
        case Kind::Jpeg:
            good = readJpeg(path, picture.pixels);
            break;
        case Kind::Unknown:
            break;
        }
    } catch (const cv::Exception&) { // no memory for it
    }
    if (!good) {
        error = path + ": " + (head.empty() ? "missing or empty" : "not a readable picture");
        return false;
    }
    const double stated = statedDpi(head);
    picture.dpi = stated > 0 ? stated : defaultDpi;
    return true;
}

} // namespace vscan
