// SPDX-License-Identifier: GPL-3.0-or-later
#include "page.h"

#include "picture.h"

#include <algorithm>
#include <cmath>
#include <fcntl.h>
#include <opencv2/imgproc.hpp>
#include <sys/mman.h>

namespace vscan {

namespace {

constexpr int bandRows = 256;
constexpr int bedLevel = 48;
constexpr double rimMm = 3; // width of the edge fill

// A sheet as it lies on the glass, in pixels of the delivered resolution.
struct Placement
{
    cv::Mat sheet;         // pixels, turned; smaller than `size` when they are to be enlarged
    cv::Size size;         // of the whole sheet after turning
    cv::Size frame;        // of the delivered picture after turning
    cv::Rect visible;      // part of the frame that the sheet covers
    cv::Point sheetOffset; // sheet pixel = frame pixel + sheetOffset
};

bool loadSide(const Side& side, double defaultDpi, Picture& picture, std::string& error)
{
    const std::string& file = side.picture.empty() ? side.sizeFrom : side.picture;
    if (file.empty()) {
        const SizeMm a4 = paperSize(Paper::A4);
        const int dpi = static_cast<int>(std::lround(defaultDpi));
        picture.dpi = defaultDpi;
        picture.pixels = cv::Mat(toPixels(a4.height, dpi), toPixels(a4.width, dpi), CV_8UC1, cv::Scalar(255));
        return true;
    }
    if (!readPicture(file, defaultDpi, picture, error))
        return false;
    if (side.picture.empty())
        picture.pixels = cv::Mat(picture.pixels.size(), CV_8UC1, cv::Scalar(255));
    return true;
}

cv::Size turned(cv::Size size, Rotation rotation)
{
    const bool quarter = rotation == Rotation::Left90 || rotation == Rotation::Right90;
    return quarter ? cv::Size(size.height, size.width) : size;
}

// Where the part `part` at the top-left corner of `whole` lies after turning.
cv::Rect turnedCorner(cv::Size part, cv::Size whole, Rotation rotation)
{
    const cv::Size after = turned(whole, rotation);
    const cv::Size size = turned(part, rotation);
    const bool right = rotation == Rotation::Right90 || rotation == Rotation::Half;
    const bool bottom = rotation == Rotation::Left90 || rotation == Rotation::Half;
    return {cv::Point(right ? after.width - size.width : 0, bottom ? after.height - size.height : 0), size};
}

void turn(cv::Mat& pixels, Rotation rotation)
{
    constexpr cv::RotateFlags flags[] = {cv::ROTATE_90_COUNTERCLOCKWISE, cv::ROTATE_90_COUNTERCLOCKWISE,
                                         cv::ROTATE_90_CLOCKWISE, cv::ROTATE_180};
    if (rotation != Rotation::None)
        cv::rotate(pixels, pixels, flags[static_cast<int>(rotation)]);
}

Placement place(Picture& picture, const Settings& settings)
{
    const double scale = settings.dpi() / picture.dpi;
    const cv::Size sheet(std::max(1, static_cast<int>(std::lround(picture.pixels.cols * scale))),
                         std::max(1, static_cast<int>(std::lround(picture.pixels.rows * scale))));
    if (sheet.width < picture.pixels.cols || sheet.height < picture.pixels.rows)
        cv::resize(picture.pixels, picture.pixels, sheet, 0, 0, cv::INTER_AREA);
    const SizeMm area = paperSize(settings.paper());
    const cv::Size frame =
        area.width > 0 ? cv::Size(toPixels(area.width, settings.dpi()), toPixels(area.height, settings.dpi()))
                       : sheet;
    const cv::Size visible(std::min(sheet.width, frame.width), std::min(sheet.height, frame.height));
    const Rotation rotation = settings.rotation();
    turn(picture.pixels, rotation);
    Placement placement{picture.pixels,
                        turned(sheet, rotation),
                        turned(frame, rotation),
                        turnedCorner(visible, frame, rotation),
                        {}};
    placement.sheetOffset = turnedCorner(visible, sheet, rotation).tl() - placement.visible.tl();
    return placement;
}

// The bed: dark grey with a little grain, the same on every page.
void paintBed(cv::Mat& band, int firstRow)
{
    const int channels = band.channels();
    for (int y = 0; y < band.rows; ++y) {
        uchar* pixel = band.ptr(y);
        uint32_t grain = static_cast<uint32_t>(firstRow + y) * 2654435761U + 1;
        for (int x = 0; x < band.cols; ++x) {
            grain = grain * 1664525U + 1013904223U;
            const uchar level = static_cast<uchar>(bedLevel - 3 + (grain >> 24) % 7);
            for (int c = 0; c < channels; ++c)
                *pixel++ = level;
        }
    }
}

// Rows firstRow... of the delivered picture, still in the sheet's own colours.
void fillBand(const Placement& placement, int firstRow, cv::Mat& band)
{
    const cv::Rect bandRect(0, firstRow, band.cols, band.rows);
    const cv::Rect covered = bandRect & placement.visible;
    if (covered != bandRect)
        paintBed(band, firstRow);
    if (covered.empty())
        return;
    cv::Mat target = band(covered - cv::Point(0, firstRow));
    const cv::Point origin = covered.tl() + placement.sheetOffset;
    if (placement.sheet.size() == placement.size) {
        placement.sheet(cv::Rect(origin, covered.size())).copyTo(target);
        return;
    }
    const double fx = static_cast<double>(placement.sheet.cols) / placement.size.width;
    const double fy = static_cast<double>(placement.sheet.rows) / placement.size.height;
    const cv::Matx23d toSheet(fx, 0, (origin.x + 0.5) * fx - 0.5, 0, fy, (origin.y + 0.5) * fy - 0.5);
    cv::warpAffine(placement.sheet, target, toSheet, target.size(), cv::INTER_LINEAR | cv::WARP_INVERSE_MAP,
                   cv::BORDER_REPLICATE);
}

void paintRim(const Settings& settings, cv::Size frame, int firstRow, cv::Mat& band)
{
    if (settings.edgeFill() == EdgeFill::None)
        return;
    const cv::Scalar colour = cv::Scalar::all(settings.edgeFill() == EdgeFill::White ? 255 : 0);
    const int rim = toPixels(rimMm, settings.dpi());
    const cv::Rect bandRect(0, firstRow, band.cols, band.rows);
    for (const cv::Rect& side : {cv::Rect(0, 0, frame.width, rim), cv::Rect(0, 0, rim, frame.height),
                                 cv::Rect(0, frame.height - rim, frame.width, rim),
                                 cv::Rect(frame.width - rim, 0, rim, frame.height)}) {
        const cv::Rect part = side & bandRect;
        if (!part.empty())
            band(part - cv::Point(0, firstRow)).setTo(colour);
    }
}

cv::Mat packBits(const cv::Mat& grey, int bytesPerLine)
{
    cv::Mat bits(grey.rows, bytesPerLine, CV_8UC1, cv::Scalar(0));
    for (int y = 0; y < grey.rows; ++y) {
        const uchar* pixel = grey.ptr(y);
        uchar* out = bits.ptr(y);
        for (int x = 0; x < grey.cols; ++x) {
            if (pixel[x] < 128)
                out[x / 8] = static_cast<uchar>(out[x / 8] | 0x80 >> x % 8);
        }
    }
    return bits;
}

cv::Mat toFrame(const cv::Mat& band, ColourMode mode, int bytesPerLine)
{
    cv::Mat converted;
    if (mode == ColourMode::Colour) {
        cv::cvtColor(band, converted, band.channels() == 3 ? cv::COLOR_BGR2RGB : cv::COLOR_GRAY2RGB);
        return converted;
    }
    if (band.channels() == 3)
        cv::cvtColor(band, converted, cv::COLOR_BGR2GRAY);
    else
        converted = band;
    return mode == ColourMode::Grey ? converted : packBits(converted, bytesPerLine);
}

bool writeAll(int fd, const cv::Mat& data)
{
    const uchar* at = data.data;
    size_t left = data.total() * data.elemSize();
    while (left > 0) {
        const ssize_t written = write(fd, at, left);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        at += written;
        left -= static_cast<size_t>(written);
    }
    return true;
}

StartReply shapeOf(cv::Size frame, ColourMode mode)
{
    StartReply shape;
    shape.width = frame.width;
    shape.height = frame.height;
    shape.colour = mode == ColourMode::Colour;
    shape.depth = mode == ColourMode::BlackWhite ? 1 : 8;
    shape.bytesPerLine = shape.colour       ? frame.width * 3
                         : shape.depth == 1 ? (frame.width + 7) / 8
                                            : frame.width;
    return shape;
}

bool renderBands(const Placement& placement, const Settings& settings, const StartReply& shape, int fd)
{
    for (int row = 0; row < shape.height; row += bandRows) {
        cv::Mat band(std::min(bandRows, shape.height - row), shape.width, placement.sheet.type());
        fillBand(placement, row, band);
        paintRim(settings, placement.frame, row, band);
        if (!writeAll(fd, toFrame(band, settings.colour(), shape.bytesPerLine)))
            return false;
    }
    return true;
}

} // namespace

bool renderPage(const Side& side, const Settings& settings, double defaultDpi, Fd& data, StartReply& shape,
                std::string& error)
{
    try {
        Picture picture;
        if (!loadSide(side, defaultDpi, picture, error))
            return false;
        const Placement placement = place(picture, settings);
        shape = shapeOf(placement.frame, settings.colour());
        data = Fd(memfd_create("vscan-page", MFD_CLOEXEC));
        if (data && renderBands(placement, settings, shape, data.get()))
            return true;
        error = std::string("no memory for the page: ") + std::strerror(errno);
    } catch (const cv::Exception& failure) {
        error = failure.what();
    } catch (const std::bad_alloc&) {
        error = "no memory for the page";
    }
    return false;
}

} // namespace vscan
