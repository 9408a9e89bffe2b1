// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/pageencoder.h"

#include "imageconvert/outputfile.h"
#include "imageconvert/picture.h"
#include "imageconvert/picturewriter.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <tiffio.h>
#include <utility>
#include <vector>
#include <zlib.h>

namespace imageconvert {

namespace {

// A TIFF in memory, for libtiff.
struct MemoryFile
{
    std::string bytes;
    size_t at = 0;
};

MemoryFile& fileOf(thandle_t handle)
{
    return *static_cast<MemoryFile*>(handle);
}
tmsize_t onRead(thandle_t, void*, tmsize_t)
{
    return 0;
}
tmsize_t onWrite(thandle_t handle, void* data, tmsize_t size)
{
    MemoryFile& file = fileOf(handle);
    const auto length = static_cast<size_t>(size);
    if (file.bytes.size() < file.at + length)
        file.bytes.resize(file.at + length);
    std::memcpy(&file.bytes[file.at], data, length);
    file.at += length;
    return size;
}
toff_t onSeek(thandle_t handle, toff_t offset, int whence)
{
    MemoryFile& file = fileOf(handle);
    const size_t from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? file.at : file.bytes.size();
    return file.at = from + offset;
}
int onClose(thandle_t)
{
    return 0;
}
toff_t onSize(thandle_t handle)
{
    return fileOf(handle).bytes.size();
}

struct TiffCloser
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};

bool writeRows(TIFF* tiff, const cv::Mat& pixels)
{
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<uint32_t>(pixels.cols));
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, static_cast<uint32_t>(pixels.rows));
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, static_cast<uint32_t>(pixels.rows));
    std::vector<uchar> row(static_cast<size_t>(pixels.cols + 7) / 8);
    for (int y = 0; y < pixels.rows; ++y) {
        packRow(pixels.ptr(y), pixels.cols, true, row.data());
        if (TIFFWriteScanline(tiff, row.data(), static_cast<uint32_t>(y), 0) != 1)
            return false;
    }
    return TIFFFlushData(tiff) == 1;
}

} // namespace

std::string groupFourData(const cv::Mat& pixels)
{
    MemoryFile file;
    const std::unique_ptr<TIFF, TiffCloser> tiff(
        TIFFClientOpen("page", "w", &file, onRead, onWrite, onSeek, onClose, onSize, nullptr, nullptr));
    if (!tiff || !writeRows(tiff.get(), pixels))
        throw PictureError("cannot encode a page as Group 4");
    uint64_t* offsets = nullptr;
    uint64_t* lengths = nullptr;
    if (!TIFFGetField(tiff.get(), TIFFTAG_STRIPOFFSETS, &offsets) ||
        !TIFFGetField(tiff.get(), TIFFTAG_STRIPBYTECOUNTS, &lengths) || !offsets || !lengths)
        throw PictureError("cannot encode a page as Group 4");
    return file.bytes.substr(offsets[0], lengths[0]);
}

std::string predictedData(const cv::Mat& pixels)
{
    const size_t step = pixels.elemSize(), width = static_cast<size_t>(pixels.cols) * step;
    std::vector<uchar> row(width + 1);
    row[0] = 1; // each byte less the one to its left: smooth on scans, and quick
    std::string out;
    std::vector<char> buffer(1 << 16);
    z_stream stream = {};
    if (deflateInit(&stream, Z_DEFAULT_COMPRESSION) != Z_OK)
        throw PictureError("no memory for compressing");
    const std::unique_ptr<z_stream, int (*)(z_stream*)> end(&stream, deflateEnd);
    for (int y = 0; y < pixels.rows; ++y) {
        const uchar* from = pixels.ptr(y);
        std::copy_n(from, std::min(step, width), row.begin() + 1);
        for (size_t x = step; x < width; ++x)
            row[x + 1] = static_cast<uchar>(from[x] - from[x - step]);
        stream.next_in = row.data();
        stream.avail_in = static_cast<uInt>(row.size());
        const int flush = y + 1 == pixels.rows ? Z_FINISH : Z_NO_FLUSH;
        do {
            stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
            stream.avail_out = static_cast<uInt>(buffer.size());
            deflate(&stream, flush);
            out.append(buffer.data(), buffer.size() - stream.avail_out);
        } while (stream.avail_out == 0);
    }
    return out;
}

std::string jpegData(const cv::Mat& pixels, int quality)
{
    ByteString jpeg;
    writeJpeg(jpeg, pixels, 0, quality);
    return std::move(jpeg.bytes);
}

std::string pngData(const cv::Mat& pixels)
{
    ByteString png;
    writePng(png, pixels, 0, SaveOptions().pngLevel);
    return std::move(png.bytes);
}

} // namespace imageconvert
