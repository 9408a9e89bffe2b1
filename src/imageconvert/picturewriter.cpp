// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/picturewriter.h"

#include "imageconvert/outputfile.h"

#include <QString>
#include <algorithm>
#include <cmath>

namespace imageconvert {

void writePicture(const cv::Mat& pixels, const std::string& path, const std::string& type, double dpi,
                  const SaveOptions& options)
{
    const QString kind = QString::fromStdString(type).toLower();
    if (pixels.empty())
        throw PictureError("nothing to write to " + path);
    const double resolution = std::isfinite(dpi) && dpi >= 1 && dpi <= 30000 ? dpi : 300;
    enum class Kind
    {
        Jpeg,
        Tiff,
        Png,
        Bmp,
        None
    };
    const Kind chosen = kind == "jpg" || kind == "jpeg"   ? Kind::Jpeg
                        : kind == "tif" || kind == "tiff" ? Kind::Tiff
                        : kind == "png"                   ? Kind::Png
                        : kind == "bmp"                   ? Kind::Bmp
                                                          : Kind::None;
    if (chosen == Kind::None)
        throw PictureError("unknown file type \"" + type + "\" for " + path);
    OutputFile file(path);
    switch (chosen) {
    case Kind::Jpeg:
        writeJpeg(file, pixels, resolution, options.jpegQuality);
        break;
    case Kind::Tiff:
        writeTiff(file, pixels, resolution, options.tiff);
        break;
    case Kind::Png:
        writePng(file, pixels, resolution, options.pngLevel);
        break;
    case Kind::Bmp:
    case Kind::None:
        writeBmp(file, pixels, resolution);
        break;
    }
    file.commit();
}

void packRow(const uchar* row, int width, bool invert, uchar* packed)
{
    const unsigned flip = invert ? 0xFF : 0;
    for (int x = 0; x < width; x += 8) {
        unsigned bits = 0;
        const int count = std::min(8, width - x);
        for (int i = 0; i < count; ++i)
            bits |= static_cast<unsigned>(row[x + i] >> 7) << (7 - i);
        const unsigned used = (0xFF00u >> count) & 0xFF;
        packed[x / 8] = static_cast<uchar>((bits ^ flip) & used);
    }
}

} // namespace imageconvert
