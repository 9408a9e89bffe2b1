// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/exif.h"
#include "imageconvert/outputfile.h"
#include "imageconvert/picturereader.h"
#include "imageconvert/picturewriter.h"

#include <cmath>
#include <memory>
#include <tiffio.h>
#include <vector>

namespace imageconvert {

namespace {

struct TiffCloser
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using TiffPtr = std::unique_ptr<TIFF, TiffCloser>;

// libtiff prints to the error stream unless told otherwise; the reason goes into lastError instead.
void quietHandlers()
{
    static const bool done = [] {
        TIFFSetWarningHandler(nullptr);
        TIFFSetErrorHandler(nullptr);
        return true;
    }();
    static_cast<void>(done);
}

OutputFile& fileOf(thandle_t handle)
{
    return *static_cast<OutputFile*>(handle);
}
tmsize_t onRead(thandle_t handle, void* data, tmsize_t size)
{
    return fileOf(handle).read(data, static_cast<size_t>(size));
}
tmsize_t onWrite(thandle_t handle, void* data, tmsize_t size)
{
    return fileOf(handle).write(data, static_cast<size_t>(size)) ? size : -1;
}
toff_t onSeek(thandle_t handle, toff_t offset, int whence)
{
    return static_cast<toff_t>(fileOf(handle).seek(static_cast<off_t>(offset), whence));
}
int onClose(thandle_t)
{
    return 0;
}
toff_t onSize(thandle_t handle)
{
    const off_t here = fileOf(handle).seek(0, SEEK_CUR);
    const off_t end = fileOf(handle).seek(0, SEEK_END);
    fileOf(handle).seek(here, SEEK_SET);
    return static_cast<toff_t>(end);
}

int compressionOf(SaveOptions::Tiff wanted, bool bits)
{
    switch (wanted) {
    case SaveOptions::Tiff::Zip:
        return COMPRESSION_ADOBE_DEFLATE;
    case SaveOptions::Tiff::None:
        return COMPRESSION_NONE;
    case SaveOptions::Tiff::Lzw:
        return COMPRESSION_LZW;
    case SaveOptions::Tiff::Group4:
    case SaveOptions::Tiff::Default:
        break;
    }
    return bits ? COMPRESSION_CCITTFAX4 : COMPRESSION_LZW;
}

void setFields(TIFF* tiff, const cv::Mat& pixels, double dpi, SaveOptions::Tiff wanted, bool bits)
{
    const int compression = compressionOf(wanted, bits);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(pixels.cols));
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(pixels.rows));
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, bits ? 1 : 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, pixels.channels());
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC,
                 bits                     ? PHOTOMETRIC_MINISWHITE
                 : pixels.channels() == 1 ? PHOTOMETRIC_MINISBLACK
                                          : PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, compression);
    if (!bits && (compression == COMPRESSION_LZW || compression == COMPRESSION_ADOBE_DEFLATE))
        TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    // Fax data in one strip is what all readers take; else strips of about 256 KB.
    const int perStrip =
        bits ? pixels.rows : std::max(1, (1 << 18) / std::max(1, pixels.cols * pixels.channels()));
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, static_cast<uint32_t>(std::min(perStrip, pixels.rows)));
    TIFFSetField(tiff, TIFFTAG_XRESOLUTION, dpi);
    TIFFSetField(tiff, TIFFTAG_YRESOLUTION, dpi);
    TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
}

double resolutionOf(TIFF* tiff)
{
    float value = 0;
    uint16_t unit = RESUNIT_INCH;
    if (!TIFFGetField(tiff, TIFFTAG_XRESOLUTION, &value))
        return 0;
    TIFFGetFieldDefaulted(tiff, TIFFTAG_RESOLUTIONUNIT, &unit);
    return unit == RESUNIT_INCH         ? value
           : unit == RESUNIT_CENTIMETER ? std::round(value * 2.54 * 100) / 100
                                        : 0;
}

// Red, green, blue over white out of libtiff's premultiplied 32-bit pixels, or the grey of them.
cv::Mat overWhite(const cv::Mat& packed, bool grey)
{
    cv::Mat out(packed.size(), grey ? CV_8UC1 : CV_8UC3);
    for (int y = 0; y < packed.rows; ++y) {
        const auto* from = reinterpret_cast<const uint32_t*>(packed.ptr(y));
        uchar* to = out.ptr(y);
        for (int x = 0; x < packed.cols; ++x) {
            const unsigned rest = 255 - TIFFGetA(from[x]);
            *to++ = cv::saturate_cast<uchar>(TIFFGetR(from[x]) + rest);
            if (!grey) {
                *to++ = cv::saturate_cast<uchar>(TIFFGetG(from[x]) + rest);
                *to++ = cv::saturate_cast<uchar>(TIFFGetB(from[x]) + rest);
            }
        }
    }
    return out;
}

} // namespace

void writeTiff(OutputFile& file, const cv::Mat& pixels, double dpi, SaveOptions::Tiff compression)
{
    quietHandlers();
    const bool bits = isTwoLevel(pixels);
    TiffPtr tiff(
        TIFFClientOpen("page", "w", &file, onRead, onWrite, onSeek, onClose, onSize, nullptr, nullptr));
    if (!tiff)
        throw PictureError("cannot start a TIFF");
    setFields(tiff.get(), pixels, dpi, compression, bits);
    // Room for a whole row: libtiff's predictor works in the buffer that it is given.
    std::vector<uchar> row(bits ? static_cast<size_t>(pixels.cols + 7) / 8
                                : static_cast<size_t>(pixels.cols) * pixels.elemSize());
    bool good = true;
    for (int y = 0; y < pixels.rows && good; ++y) {
        if (bits)
            packRow(pixels.ptr(y), pixels.cols, true, row.data());
        else
            std::copy_n(pixels.ptr(y), row.size(), row.data());
        good = TIFFWriteScanline(tiff.get(), row.data(), static_cast<uint32_t>(y), 0) == 1;
    }
    good = good && TIFFFlush(tiff.get()) == 1;
    tiff.reset();
    file.throwIfFailed();
    if (!good)
        throw PictureError("cannot write TIFF");
}

ReadResult readTiff(const std::string& path)
{
    quietHandlers();
    const TiffPtr tiff(
        TIFFOpen(path.c_str(), "rm")); // "m": no memory map, so a file that shrinks is no crash
    if (!tiff)
        throw PictureError("damaged TIFF");
    uint32_t width = 0, height = 0;
    uint16_t photometric = PHOTOMETRIC_RGB, samples = 1, orientation = ORIENTATION_TOPLEFT;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height);
    TIFFGetField(tiff.get(), TIFFTAG_PHOTOMETRIC, &photometric);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_ORIENTATION, &orientation);
    checkSize(width, height);
    cv::Mat packed(static_cast<int>(height), static_cast<int>(width), CV_8UC4);
    if (!TIFFReadRGBAImageOriented(tiff.get(), width, height, packed.ptr<uint32_t>(), orientation, 1))
        throw PictureError("damaged TIFF or one of an unknown kind");
    const bool grey = photometric == PHOTOMETRIC_MINISBLACK || photometric == PHOTOMETRIC_MINISWHITE;
    // Read as stored and turned here: libtiff does not turn by right angles.
    return {upright(overWhite(packed, grey), orientation), resolutionOf(tiff.get())};
}

} // namespace imageconvert
