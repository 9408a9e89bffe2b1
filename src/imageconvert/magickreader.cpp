// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/picturereader.h"

#include <memory>
#include <mutex>
#include <vector>
#include <wand/MagickWand.h>

namespace imageconvert {

namespace {

// ImageMagick holds 8 bytes a pixel under the limits of its policy file and aborts the process when a picture
// outgrows them, so larger pictures do not reach it: 30 million are 240 MB, the stock memory limit is 256
// MiB.
constexpr double kMaxMagickPixels = 30e6;
constexpr double kMaxFileSize = 512e6;

struct WandCloser
{
    void operator()(MagickWand* wand) const { DestroyMagickWand(wand); }
};
using WandPtr = std::unique_ptr<MagickWand, WandCloser>;

void startMagick()
{
    static std::once_flag once;
    std::call_once(once, [] {
        MagickWandGenesis();
        MagickSetResourceLimit(ThreadResource, 1);
    });
}

WandPtr wandFor(const char* format)
{
    WandPtr wand(NewMagickWand());
    if (!wand || !MagickSetFormat(wand.get(), format))
        throw PictureError(std::string("no reader for ") + format);
    return wand;
}

double resolutionOf(MagickWand* wand)
{
    double x = 0, y = 0;
    if (!MagickGetImageResolution(wand, &x, &y) || x <= 1)
        return 0;
    return MagickGetImageUnits(wand) == PixelsPerCentimeterResolution ? x * 2.54 : x;
}

} // namespace

ReadResult readWithMagick(std::FILE* file, double fileSize, const char* format)
{
    startMagick();
    if (fileSize > kMaxFileSize)
        throw PictureError(std::string("the ") + format + " file is too large");
    std::vector<uchar> bytes(static_cast<size_t>(fileSize));
    if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size())
        throw PictureError("the file cannot be read to its end");
    WandPtr wand = wandFor(format);
    if (!MagickPingImageBlob(wand.get(), bytes.data(), bytes.size()))
        throw PictureError(std::string("damaged ") + format);
    const double width = static_cast<double>(MagickGetImageWidth(wand.get()));
    const double height = static_cast<double>(MagickGetImageHeight(wand.get()));
    checkSize(width, height);
    if (width * height > kMaxMagickPixels)
        throw PictureError(std::string("the ") + format + " picture is too large");
    wand = wandFor(format);
    if (!MagickReadImageBlob(wand.get(), bytes.data(), bytes.size()))
        throw PictureError(std::string("damaged ") + format);
    MagickSetFirstIterator(wand.get());
    MagickNextImage(wand.get());
    MagickSetImageAlphaChannel(wand.get(), RemoveAlphaChannel); // onto the background colour, white
    const size_t columns = MagickGetImageWidth(wand.get()), rows = MagickGetImageHeight(wand.get());
    checkSize(static_cast<double>(columns), static_cast<double>(rows));
    cv::Mat pixels(static_cast<int>(rows), static_cast<int>(columns), CV_8UC3);
    if (!MagickExportImagePixels(wand.get(), 0, 0, columns, rows, "RGB", CharPixel, pixels.data))
        throw PictureError(std::string("cannot convert ") + format);
    return {pixels, resolutionOf(wand.get())};
}

} // namespace imageconvert
