// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/documentoptions.h"
#include "imageconvert/pagemeasures.h"

#include <QString>
#include <QStringList>
#include <memory>

struct _MagickWand;
typedef struct _MagickWand MagickWand;

// The image library: every per-page image operation of the program.
//
// A handle (`MagickWand*`) stands for one picture: 8-bit pixels with 1 or 3 channels, its resolution and its
// save options. Handles belong to the library and are freed by destroyImage(). Each operation takes a handle
// and returns the handle to use from then on; unless its comment says otherwise that is the same handle with
// new pixels. A null or unknown handle is returned as it came, and an operation that cannot work leaves the
// picture as it is; the reason is then in lastError().
//
// One object serves one thread at a time; different objects may be used in different threads at once.
// No operation throws.
class ImageConvertFunction
{
public:
    ImageConvertFunction();
    ~ImageConvertFunction(); // frees the handles that are still open
    ImageConvertFunction(const ImageConvertFunction&) = delete;
    ImageConvertFunction& operator=(const ImageConvertFunction&) = delete;

    // Loads a picture file (PNM with or without the empty line after the magic number, BMP, PNG, JPEG, TIFF,
    // and what ImageMagick reads). Null when it cannot be read.
    MagickWand* getImage(const char* path);
    // Frees a handle; null and unknown handles are ignored.
    void destroyImage(MagickWand* wand);

    MagickWand* imageGamma(MagickWand* wand, double gamma);
    // Both in percent, -100 to 100; 0 changes nothing.
    MagickWand* imageLightAndContrast(MagickWand* wand, double brightness, double contrast);
    // Cuts the picture to the sheet of paper in it, straightening a tilted sheet.
    MagickWand* imageAutoCrop(MagickWand* wand);
    // True when the page is blank. `darkness`: grey levels by which ink is darker than the paper around it;
    // `percent`: share of ink in the densest 10 x 10 mm window below which the page counts as blank.
    bool AutoDeleteBlankPage(MagickWand* wand, int darkness, double percent);
    // Removes specks of up to about `size` pixels (at 300 dpi) from a two-level picture.
    MagickWand* AutoDeleteNoise(MagickWand* wand, int size);
    MagickWand* imageBlur(MagickWand* wand, int level);        // level 1 or 2
    MagickWand* imageSharpen(MagickWand* wand, int level);     // level 1 or 2
    MagickWand* imageRotate(MagickWand* wand, double degrees); // clockwise; right angles are exact
    // Stretches the levels so that paper gets white and ink black; photographs stay what they are.
    MagickWand* imageAutoDense(MagickWand* wand);
    // Turns a page whose text lines lie askew (up to about 10 degrees) straight; unsure: left alone.
    MagickWand* imageDeskew(MagickWand* wand);
    // Whitens paper colour, stains and show-through. Strength 1 to 10, 0 none.
    MagickWand* imageDelBackground(MagickWand* wand, int strength);
    // Makes strokes darker and clearer. Strength 1 to 10, 0 none.
    MagickWand* imageCharacterEnhance(MagickWand* wand, int strength);
    // Official documents with a red header: clean white paper, black text, red kept red.
    MagickWand* imageRedFile(MagickWand* wand);
    // Resamples from `sourceDpi` to the target resolution and records the target as the picture's resolution.
    MagickWand* imageResolution(MagickWand* wand, double xdpi, double ydpi, int sourceDpi);
    // Cuts a piece of the given size out: from the top-left corner with leftUp 1, else from the middle.
    MagickWand* imageUserPS(MagickWand* wand, double widthCm, double heightCm, int leftUp, int dpi);
    // Cuts the page file into `count` pieces "crop1.bmp", ... (numbers zero-padded to equal width) in
    // `outDir`: side by side with direction 1, one above the other with 0. Older pieces are removed first.
    // Returns the number of pieces written; 0 when there is none.
    int imageCrop(const char* source, const char* outDir, int count, int direction);
    // Joins two page files into a new handle: side by side with direction 0, one above the other with 1;
    // the smaller one is centred on white. `wand` is freed when not null. Null when a file cannot be read.
    MagickWand* imageAppend(MagickWand* wand, const char* first, const char* second, int direction);
    // Paints a rim of `topMm` (top and bottom) and `leftMm` (left and right) millimetres: "In" inside the
    // frame, "Out" around it, which enlarges the picture.
    MagickWand* imageInBorder(MagickWand* wand, int red, int green, int blue, double topMm, double leftMm,
                              int dpi);
    MagickWand* imageOutBorder(MagickWand* wand, int red, int green, int blue, double topMm, double leftMm,
                               int dpi);
    MagickWand* imageRGBtoGray(MagickWand* wand);
    // Two-level picture (0 and 255); `threshold` 0 to 255 is the user's wish for the level after uneven
    // light has been taken out: higher gives more black.
    MagickWand* imageRGBtoWB(MagickWand* wand, int threshold);
    // Save option for `type` ("jpg", "tif", "png", "bmp"): JPEG quality "1" to "100", PNG level "0" to "9",
    // TIFF "lzw", "zip", "none" or "group4". Anything else keeps the default (85, 6, lzw; group4 for two
    // levels).
    MagickWand* imageCompress(MagickWand* wand, const QString& type, const QString& value);

    // Writes exactly folder + name + "." + type with the resolution in it, under a temporary name first;
    // an existing file is replaced. False when writing failed: no file is left, an old one is kept.
    bool saveImage(MagickWand* wand, const QString& folder, const char* name, const char* type, double dpi);
    // Starts an application with the file folder + name + "." + type. `application` is a command line,
    // split by the desktop-entry rules (no shell); empty opens the desktop's default application.
    bool imageStartExe(const QString& folder, const char* name, const char* type, const char* application);

    // Writes the picture to `path`; the type is the extension (jpg, jpeg, tif, tiff, png, bmp). Resolution:
    // the picture's own or what setSourceDpi() said. Whole or not at all, as saveImage().
    bool writeImage(MagickWand* wand, const QString& path);

    // Documents of page pictures, one page per file, in the order of `pages`. All page files are looked at
    // before anything is written. One that is missing, empty, cut off or damaged fails the whole document
    // (lastErrorPage() names it): a document that lacks a page and looks whole would serve nobody. After a
    // failure nothing is left under the final name but an older file that stood there; page files are never
    // changed or removed. JPEG data goes in byte for byte. Memory does not grow with the number of pages.
    //
    // savePDF writes saveDir + "/" + baseName + "." + type, saveOFD saveDirWithSlash + baseName + ".ofd"; an
    // existing file is replaced. False, with the reason in lastError(), when pages is empty, the name is
    // not one of a file in that folder, or a file cannot be read or written.
    //
    // PDF page: pixels / resolution, made exactly A3, A4, A5, B5 (JIS), Letter or Legal when within 2 mm of
    // it.
    bool savePDF(const QStringList& pages, const QString& saveDir, const QString& baseName, const char* type,
                 const DocumentOptions& options = {});
    // OFD page: the paper of `paperCode` (see ofdpaper.h) when the scan is within 3 mm of it in either
    // direction, else pixels / resolution.
    bool saveOFD(const QStringList& pages, const QString& saveDirWithSlash, const QString& baseName,
                 int paperCode, const DocumentOptions& options = {});

    // Tells the resolution that a page was scanned at when its file does not (PNM); else the operations that
    // measure in millimetres (blank pages, specks) guess it from the size, as of an A4 or Legal page.
    void setSourceDpi(MagickWand* wand, double dpi);
    // Size and resolution of a picture, for reports and previews; zero for an unknown handle.
    int width(MagickWand* wand) const;
    int height(MagickWand* wand) const;
    double dpi(MagickWand* wand) const;
    // The resolution that millimetres are reckoned with: the known one, else the guess.
    double workingDpi(MagickWand* wand) const;
    // What auto-crop, deskew and the blank-page test measured on this page so far.
    PageMeasures measures(MagickWand* wand) const;

    // Why the last operation failed (English, for the log); empty after one that worked.
    QString lastError() const;
    // True when the last failure was a full disk or a file-size limit.
    bool lastErrorIsDiskFull() const;
    // The page file that made savePDF() or saveOFD() fail; empty when the failure was not about a page.
    QString lastErrorPage() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

// Owns a handle for the length of a scope.
class ImageHandle
{
public:
    ImageHandle(ImageConvertFunction& library, MagickWand* wand) : m_library(&library), m_wand(wand) {}
    ~ImageHandle() { reset(nullptr); }
    ImageHandle(const ImageHandle&) = delete;
    ImageHandle& operator=(const ImageHandle&) = delete;
    ImageHandle(ImageHandle&& other) noexcept : m_library(other.m_library), m_wand(other.release()) {}

    MagickWand* get() const { return m_wand; }
    explicit operator bool() const { return m_wand != nullptr; }
    MagickWand* release()
    {
        MagickWand* wand = m_wand;
        m_wand = nullptr;
        return wand;
    }
    // Continues with the handle that an operation returned; the former one is freed if it is another.
    void reset(MagickWand* wand)
    {
        if (m_wand && m_wand != wand)
            m_library->destroyImage(m_wand);
        m_wand = wand;
    }

private:
    ImageConvertFunction* m_library;
    MagickWand* m_wand;
};
