// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/pagefile.h"

#include "imageconvert/jpegscan.h"
#include "imageconvert/picture.h"
#include "imageconvert/picturereader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace imageconvert {

namespace {

constexpr double kMmPerInch = 25.4;

class FileDescriptor
{
public:
    explicit FileDescriptor(const std::string& path)
        : m_fd(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
    {
    }
    ~FileDescriptor()
    {
        if (m_fd >= 0)
            close(m_fd);
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    int get() const { return m_fd; }

private:
    int m_fd;
};

std::string wholeFile(const std::string& path)
{
    const FileDescriptor file(path);
    struct stat info = {};
    if (file.get() < 0 || fstat(file.get(), &info) != 0)
        throw PictureError(std::strerror(errno));
    if (!S_ISREG(info.st_mode))
        throw PictureError("not a file");
    std::string bytes(static_cast<size_t>(info.st_size), '\0');
    size_t have = 0;
    while (have < bytes.size()) {
        const ssize_t got = read(file.get(), &bytes[have], bytes.size() - have);
        if (got < 0 && errno != EINTR)
            throw PictureError(std::strerror(errno));
        if (got == 0)
            throw PictureError("the file shrinks while it is read");
        have += got > 0 ? static_cast<size_t>(got) : 0;
    }
    return bytes;
}

bool takeJpeg(const std::string& bytes, PageFile& page)
{
    const JpegInfo info = scanJpeg(bytes);
    if (!info.passable)
        return false;
    page.kind = PageFile::Kind::Jpeg;
    page.size = {info.width, info.height};
    page.channels = info.components;
    page.invertedInks = info.components == 4 && info.adobe;
    page.orientation = info.orientation;
    page.xDpi = info.xDpi;
    page.yDpi = info.yDpi;
    return true;
}

void takePng(const std::string& bytes, PageFile& page)
{
    page.png = scanPng(bytes);
    page.twoLevel = page.png.depth == 1 && page.png.colourType == 0 && !page.png.transparent;
    page.kind = page.twoLevel && !page.png.interlaced ? PageFile::Kind::PngBits : PageFile::Kind::Png;
    page.size = {page.png.width, page.png.height};
    page.channels = page.png.colourType == 0 || page.png.colourType == 4 ? 1 : 3;
    page.xDpi = page.png.xDpi;
    page.yDpi = page.png.yDpi;
}

void takeDecoded(PageFile& page)
{
    const ReadResult read = readPicture(page.path);
    page.size = read.pixels.size();
    page.channels = read.pixels.channels();
    page.twoLevel = isTwoLevel(read.pixels);
    page.xDpi = page.yDpi = read.dpi;
}

bool plausible(double dpi)
{
    return dpi >= 10 && dpi <= 20000;
}

} // namespace

PageFile inspectPage(const std::string& path)
{
    PageFile page;
    page.path = path;
    try {
        const std::string bytes = wholeFile(path);
        page.bytes = static_cast<off_t>(bytes.size());
        if (bytes.empty())
            throw PictureError("the file is empty");
        if (bytes.compare(0, 2, "\xff\xd8") == 0 && takeJpeg(bytes, page))
            return page;
        if (bytes.compare(0, 4, "\x89PNG") == 0) {
            takePng(bytes, page);
            return page;
        }
    } catch (const PictureError& error) {
        throw PictureError("cannot read " + path + ": " + error.what());
    }
    takeDecoded(page);
    return page;
}

std::string readBytes(const PageFile& page)
{
    std::string bytes;
    try {
        bytes = wholeFile(page.path);
    } catch (const PictureError& error) {
        throw PictureError("cannot read " + page.path + ": " + error.what());
    }
    if (static_cast<off_t>(bytes.size()) != page.bytes)
        throw PictureError("cannot read " + page.path + ": the file changed meanwhile");
    return bytes;
}

cv::Mat decodedPixels(const PageFile& page)
{
    cv::Mat pixels = readPicture(page.path).pixels;
    const cv::Size turned(page.size.height, page.size.width);
    if (pixels.size() != (page.onItsSide() ? turned : page.size) ||
        pixels.channels() != std::min(3, page.channels))
        throw PictureError("cannot read " + page.path + ": the file changed meanwhile");
    return pixels;
}

cv::Size2d physicalSize(const PageFile& page, double sourceDpi)
{
    double x = page.xDpi, y = page.yDpi;
    if (!plausible(x) || !plausible(y))
        x = y = plausible(sourceDpi) ? sourceDpi : guessDpi(page.size);
    const double width = page.size.width / x * kMmPerInch, height = page.size.height / y * kMmPerInch;
    return page.onItsSide() ? cv::Size2d(height, width) : cv::Size2d(width, height);
}

} // namespace imageconvert
