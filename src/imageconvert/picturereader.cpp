// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/picturereader.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <sys/stat.h>

namespace imageconvert {

namespace {

struct FileCloser
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};

struct Signature
{
    size_t offset;
    const char* bytes;
    size_t length;
    const char* format;
};

// Rare kinds that ImageMagick reads. A list, not "whatever it knows": some of its formats are scripts.
constexpr Signature kRareKinds[] = {
    {0, "GIF8", 4, "GIF"},           {8, "WEBP", 4, "WEBP"},
    {0, "\0\0\0\x0cjP  ", 8, "JP2"}, {0, "\xff\x4f\xff\x51", 4, "J2K"},
    {0, "8BPS", 4, "PSD"},           {0, "\x01\xda", 2, "SGI"},
    {0, "\x0a\x05\x01", 3, "PCX"},   {4, "ftypheic", 8, "HEIC"},
    {4, "ftypmif1", 8, "HEIC"},
};

bool startsWith(const uchar* head, size_t size, const Signature& s)
{
    return size >= s.offset + s.length && std::memcmp(head + s.offset, s.bytes, s.length) == 0;
}

ReadResult readOpen(std::FILE* file, const std::string& path, double fileSize)
{
    uchar head[16] = {};
    const size_t size = std::fread(head, 1, sizeof head, file);
    std::rewind(file);
    if (size < 4)
        throw PictureError(size == 0 ? "the file is empty" : "the file is too short for a picture");
    if (head[0] == 'P' && head[1] >= '1' && head[1] <= '6')
        return readPnm(file, fileSize);
    if (head[0] == 0xff && head[1] == 0xd8)
        return readJpeg(file);
    if (std::memcmp(head, "\x89PNG", 4) == 0)
        return readPng(file);
    if (std::memcmp(head, "II*", 3) == 0 || std::memcmp(head, "MM\0*", 4) == 0 ||
        std::memcmp(head, "II+", 3) == 0)
        return readTiff(path);
    if (head[0] == 'B' && head[1] == 'M')
        return readBmp(file, fileSize);
    for (const Signature& kind : kRareKinds)
        if (startsWith(head, size, kind))
            return readWithMagick(file, fileSize, kind.format);
    throw PictureError("not a known kind of picture");
}

} // namespace

ReadResult readPicture(const std::string& path)
{
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rbe"));
    struct stat info = {};
    if (!file || fstat(fileno(file.get()), &info) != 0)
        throw PictureError("cannot open " + path + ": " + std::strerror(errno));
    if (!S_ISREG(info.st_mode))
        throw PictureError("cannot read " + path + ": not a file");
    try {
        return readOpen(file.get(), path, static_cast<double>(info.st_size));
    } catch (const PictureError& error) {
        throw PictureError("cannot read " + path + ": " + error.what());
    } catch (const std::bad_alloc&) {
        throw PictureError("cannot read " + path + ": not enough memory");
    } catch (const cv::Exception& error) {
        const bool memory = error.code == cv::Error::StsNoMem;
        throw PictureError("cannot read " + path + ": " + (memory ? "not enough memory" : error.err));
    }
}

} // namespace imageconvert
