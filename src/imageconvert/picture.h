// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/pagemeasures.h"
#include "imageconvert/pictureerror.h"
#include "imageconvert/tone.h"

#include <memory>
#include <opencv2/core.hpp>
#include <string>

namespace imageconvert {

// What the user chose for the file types; see ImageConvertFunction::imageCompress.
struct SaveOptions
{
    enum class Tiff
    {
        Default,
        Lzw,
        Zip,
        None,
        Group4
    };
    int jpegQuality = 85;
    int pngLevel = 6;
    Tiff tiff = Tiff::Default;
};

// A small copy of a picture for the detectors: about 75 dpi, averaged, before any tone change.
struct Reduced
{
    cv::Mat colour; // 8 bit, 1 or 3 channels as the picture
    cv::Mat grey;   // 8 bit
    int factor = 1; // full-size pixels per reduced pixel
    double dpi = 75;
};

// One picture: 8 bit, 1 channel (grey) or 3 (red, green, blue in this order).
//
// Tone changes (gamma, brightness, levels) are gathered in one table and applied when the pixels are needed:
// one pass instead of three, and the detectors see the scan before light paper and a light bed run together.
class Picture
{
public:
    explicit Picture(cv::Mat pixels, double dpi = 0) : m_pixels(std::move(pixels)), m_dpi(dpi) {}

    const cv::Mat& pixels();                            // with all tone changes applied
    const cv::Mat& untoned() const { return m_pixels; } // without the pending ones, same geometry
    const Tone& pendingTone() const { return m_tone; }
    void addTone(const Tone& tone) { m_tone = m_tone.then(tone); }

    void setPixels(cv::Mat pixels);  // new content, tone settled
    void setUntoned(cv::Mat pixels); // new geometry, the pending tone still applies

    const Reduced& reduced(); // made on first use, kept until content or geometry changes

    double dpi() const { return m_dpi; } // 0: not known
    void setDpi(double dpi);
    double workingDpi() const; // the known resolution, else one guessed from the size

    SaveOptions save;
    PageMeasures measures;
    std::string file; // where it was read from, for messages; may be empty

private:
    cv::Mat m_pixels;
    Tone m_tone;
    double m_dpi;
    std::unique_ptr<Reduced> m_reduced;
};

// Resolution at which a picture of this size would be a page: the lowest usual one that makes the long side
// no longer than a Legal sheet.
double guessDpi(const cv::Size& size);

cv::Mat toGrey(const cv::Mat& pixels);
// True for a grey picture that holds 0 and 255 only.
bool isTwoLevel(const cv::Mat& pixels);
// Throws when a picture of this size must not be made (0, or over kMaxPixels).
void checkSize(double width, double height);
constexpr double kMaxPixels = 420e6; // 20000 x 20000 and A3 at 1200 dpi are below
constexpr double kMaxSide = 65500;   // the largest side of a JPEG

} // namespace imageconvert
