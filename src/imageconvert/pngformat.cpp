// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/outputfile.h"
#include "imageconvert/picturereader.h"
#include "imageconvert/picturewriter.h"

#include <cmath>
#include <csetjmp>
#include <cstring>
#include <png.h>
#include <vector>

namespace imageconvert {

namespace {

constexpr double kMetresPerInch = 0.0254;

void onWrite(png_structp png, png_bytep data, png_size_t size)
{
    if (!static_cast<ByteSink*>(png_get_io_ptr(png))->write(data, size))
        png_error(png, "write failed");
}

void onFlush(png_structp) {}
void onWarning(png_structp, png_const_charp) {}
[[noreturn]] void onError(png_structp png, png_const_charp)
{
    png_longjmp(png, 1); // without the library's line on the error stream
}

struct PngWriter
{
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    ~PngWriter() { png_destroy_write_struct(&png, &info); }
};

bool compress(const PngWriter& to, ByteSink& file, const cv::Mat& pixels, double dpi, int level,
              std::vector<uchar>& packed)
{
    if (setjmp(png_jmpbuf(to.png)))
        return false;
    const bool bits = !packed.empty();
    png_set_write_fn(to.png, &file, onWrite, onFlush);
    png_set_compression_level(to.png, level);
    const auto perMetre = static_cast<png_uint_32>(std::lround(dpi / kMetresPerInch));
    png_set_IHDR(to.png, to.info, static_cast<png_uint_32>(pixels.cols),
                 static_cast<png_uint_32>(pixels.rows), bits ? 1 : 8,
                 pixels.channels() == 1 ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (perMetre > 0)
        png_set_pHYs(to.png, to.info, perMetre, perMetre, PNG_RESOLUTION_METER);
    // Trying all filters on each row costs three times the time for a few percent on scans.
    png_set_filter(to.png, 0, bits || level == 0 ? PNG_FILTER_NONE : PNG_FILTER_SUB);
    png_write_info(to.png, to.info);
    for (int y = 0; y < pixels.rows; ++y) {
        if (bits)
            packRow(pixels.ptr(y), pixels.cols, false, packed.data());
        png_write_row(to.png, bits ? packed.data() : pixels.ptr(y));
    }
    png_write_end(to.png, to.info);
    return true;
}

// The resolution stands in a chunk before the pixel data, which the simple reading interface does not show.
double resolutionOf(std::FILE* file)
{
    uchar head[17];
    long at = 8;
    for (int chunk = 0; chunk < 64 && std::fseek(file, at, SEEK_SET) == 0; ++chunk) {
        if (std::fread(head, 1, sizeof head, file) != sizeof head || std::memcmp(head + 4, "IDAT", 4) == 0)
            return 0;
        const png_uint_32 size = png_get_uint_32(head);
        if (std::memcmp(head + 4, "pHYs", 4) == 0)
            return size == 9 && head[16] == 1 ? png_get_uint_32(head + 8) * kMetresPerInch : 0;
        if (size > 0x7fffffff)
            return 0;
        at += 12 + static_cast<long>(size);
    }
    return 0;
}

struct PngImage
{
    png_image image{};
    ~PngImage() { png_image_free(&image); }
};

} // namespace

void writePng(ByteSink& file, const cv::Mat& pixels, double dpi, int level)
{
    const PngWriter to;
    if (!to.info)
        throw PictureError("no memory for writing PNG");
    std::vector<uchar> packed(isTwoLevel(pixels) ? static_cast<size_t>(pixels.cols + 7) / 8 : 0);
    if (!compress(to, file, pixels, dpi, level, packed)) {
        file.throwIfFailed();
        throw PictureError("cannot write PNG");
    }
}

ReadResult readPng(std::FILE* file)
{
    double dpi = std::round(resolutionOf(file) * 100) / 100;
    if (std::abs(dpi - std::round(dpi)) < 0.03)
        dpi = std::round(dpi); // whole resolutions come back whole from dots per metre
    std::rewind(file);
    PngImage png;
    png.image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_stdio(&png.image, file))
        throw PictureError(std::string("damaged PNG: ") + png.image.message);
    checkSize(png.image.width, png.image.height);
    png.image.flags |= PNG_IMAGE_FLAG_16BIT_sRGB; // 16-bit files without a gamma are not linear
    const bool colour = png.image.format & PNG_FORMAT_FLAG_COLOR;
    png.image.format = colour ? PNG_FORMAT_RGB : PNG_FORMAT_GRAY;
    cv::Mat pixels(static_cast<int>(png.image.height), static_cast<int>(png.image.width),
                   colour ? CV_8UC3 : CV_8UC1);
    const png_color white{255, 255, 255};
    if (!png_image_finish_read(&png.image, &white, pixels.data, static_cast<png_int_32>(pixels.step),
                               nullptr))
        throw PictureError(std::string("damaged PNG: ") + png.image.message);
    return {pixels, dpi};
}

} // namespace imageconvert
