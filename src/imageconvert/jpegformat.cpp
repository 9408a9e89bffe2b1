// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/exif.h"
#include "imageconvert/outputfile.h"
#include "imageconvert/picturereader.h"
#include "imageconvert/picturewriter.h"

#include <cmath>
#include <csetjmp>
#include <cstdio>
#include <jerror.h>
#include <jpeglib.h>
#include <vector>

namespace imageconvert {

namespace {

// libjpeg reports a fatal error by a function that must not return. The jump passes over no object with a
// destructor: all of those live in the callers of the functions that set the jump point.
struct JpegErrors
{
    jpeg_error_mgr base;
    std::jmp_buf jump;
    char text[JMSG_LENGTH_MAX] = "";
    bool truncated = false;
};

void onError(j_common_ptr info)
{
    auto* errors = reinterpret_cast<JpegErrors*>(info->err);
    info->err->format_message(info, errors->text);
    std::longjmp(errors->jump, 1);
}

void onMessage(j_common_ptr info, int level)
{
    if (level < 0 && info->err->msg_code == JWRN_JPEG_EOF)
        reinterpret_cast<JpegErrors*>(info->err)->truncated = true;
}

jpeg_error_mgr* prepare(JpegErrors& errors)
{
    jpeg_std_error(&errors.base);
    errors.base.error_exit = onError;
    errors.base.emit_message = onMessage;
    return &errors.base;
}

struct FileDestination
{
    jpeg_destination_mgr base;
    ByteSink* file = nullptr;
    JOCTET buffer[1 << 16];
};

void startOutput(j_compress_ptr info)
{
    auto* to = reinterpret_cast<FileDestination*>(info->dest);
    to->base.next_output_byte = to->buffer;
    to->base.free_in_buffer = sizeof to->buffer;
}

boolean flushOutput(j_compress_ptr info)
{
    auto* to = reinterpret_cast<FileDestination*>(info->dest);
    if (!to->file->write(to->buffer, sizeof to->buffer))
        ERREXIT(info, JERR_FILE_WRITE);
    startOutput(info);
    return TRUE;
}

void endOutput(j_compress_ptr info)
{
    auto* to = reinterpret_cast<FileDestination*>(info->dest);
    if (!to->file->write(to->buffer, sizeof to->buffer - to->base.free_in_buffer))
        ERREXIT(info, JERR_FILE_WRITE);
}

bool compress(jpeg_compress_struct& info, JpegErrors& errors, FileDestination& to, const cv::Mat& pixels,
              double dpi, int quality)
{
    if (setjmp(errors.jump))
        return false;
    jpeg_create_compress(&info);
    to.base.init_destination = startOutput;
    to.base.empty_output_buffer = flushOutput;
    to.base.term_destination = endOutput;
    info.dest = &to.base;
    info.image_width = static_cast<JDIMENSION>(pixels.cols);
    info.image_height = static_cast<JDIMENSION>(pixels.rows);
    info.input_components = pixels.channels();
    info.in_color_space = pixels.channels() == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, quality, TRUE);
    if (dpi > 0) {
        info.density_unit = 1;
        info.X_density = info.Y_density = static_cast<UINT16>(std::lround(dpi));
    }
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < info.image_height) {
        auto* row = const_cast<JSAMPROW>(pixels.ptr(static_cast<int>(info.next_scanline)));
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    return true;
}

bool readHeader(jpeg_decompress_struct& info, JpegErrors& errors, std::FILE* file)
{
    if (setjmp(errors.jump))
        return false;
    jpeg_create_decompress(&info);
    jpeg_stdio_src(&info, file);
    jpeg_save_markers(&info, JPEG_APP0 + 1, 0xFFFF); // where cameras put the orientation
    return jpeg_read_header(&info, TRUE) == JPEG_HEADER_OK;
}

bool decompress(jpeg_decompress_struct& info, JpegErrors& errors, cv::Mat& pixels)
{
    if (setjmp(errors.jump))
        return false;
    jpeg_start_decompress(&info);
    while (info.output_scanline < info.output_height) {
        JSAMPROW row = pixels.ptr(static_cast<int>(info.output_scanline));
        jpeg_read_scanlines(&info, &row, 1);
    }
    jpeg_finish_decompress(&info);
    return true;
}

// Four inks to red, green, blue; files of the usual editor hold them inverted and say so in a marker.
cv::Mat fromInks(const cv::Mat& inks, bool inverted)
{
    cv::Mat rgb(inks.size(), CV_8UC3);
    for (int y = 0; y < inks.rows; ++y) {
        const uchar* from = inks.ptr(y);
        uchar* to = rgb.ptr(y);
        for (int x = 0; x < inks.cols; ++x, from += 4, to += 3)
            for (int c = 0; c < 3; ++c) {
                const int ink = inverted ? from[c] : 255 - from[c];
                const int black = inverted ? from[3] : 255 - from[3];
                to[c] = static_cast<uchar>((ink * black + 127) / 255);
            }
    }
    return rgb;
}

int orientationOf(const jpeg_decompress_struct& info)
{
    for (const jpeg_marker_struct* marker = info.marker_list; marker; marker = marker->next) {
        const int orientation = exifOrientation(marker->data, marker->data_length);
        if (orientation != 1)
            return orientation;
    }
    return 1;
}

struct Decompressor
{
    jpeg_decompress_struct info{};
    ~Decompressor() { jpeg_destroy_decompress(&info); }
};

struct Compressor
{
    jpeg_compress_struct info{};
    ~Compressor() { jpeg_destroy_compress(&info); }
};

} // namespace

void writeJpeg(ByteSink& file, const cv::Mat& pixels, double dpi, int quality)
{
    auto to = std::make_unique<FileDestination>();
    to->file = &file;
    JpegErrors errors;
    Compressor jpeg;
    jpeg.info.err = prepare(errors);
    if (!compress(jpeg.info, errors, *to, pixels, dpi, quality)) {
        file.throwIfFailed();
        throw PictureError(std::string("cannot write JPEG: ") + errors.text);
    }
}

ReadResult readJpeg(std::FILE* file)
{
    JpegErrors errors;
    Decompressor jpeg;
    jpeg_decompress_struct& info = jpeg.info;
    info.err = prepare(errors);
    if (!readHeader(info, errors, file))
        throw PictureError(std::string("damaged JPEG: ") + errors.text);
    checkSize(info.image_width, info.image_height);
    const int orientation = orientationOf(info); // the markers go when the picture is done
    const bool inks = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
    info.out_color_space = inks ? JCS_CMYK : info.num_components == 1 ? JCS_GRAYSCALE : JCS_RGB;
    const int type = inks ? CV_8UC4 : info.num_components == 1 ? CV_8UC1 : CV_8UC3;
    cv::Mat pixels(static_cast<int>(info.image_height), static_cast<int>(info.image_width), type);
    const bool done = decompress(info, errors, pixels);
    if (!done || errors.truncated)
        throw PictureError(std::string("damaged JPEG: ") + (done ? "the file ends too early" : errors.text));
    const double dpi = info.density_unit == 1   ? info.X_density
                       : info.density_unit == 2 ? info.X_density * 2.54
                                                : 0;
    if (inks)
        pixels = fromInks(pixels, info.saw_Adobe_marker);
    return {upright(pixels, orientation), dpi};
}

} // namespace imageconvert
