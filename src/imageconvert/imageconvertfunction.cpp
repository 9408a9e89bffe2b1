// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/imageconvertfunction.h"

#include "imageconvert/background.h"
#include "imageconvert/binarise.h"
#include "imageconvert/blank.h"
#include "imageconvert/despeckle.h"
#include "imageconvert/documentjob.h"
#include "imageconvert/enhance.h"
#include "imageconvert/filters.h"
#include "imageconvert/geometry.h"
#include "imageconvert/launcher.h"
#include "imageconvert/levels.h"
#include "imageconvert/pageerror.h"
#include "imageconvert/paper.h"
#include "imageconvert/picture.h"
#include "imageconvert/picturereader.h"
#include "imageconvert/picturewriter.h"
#include "imageconvert/redheader.h"
#include "imageconvert/sheet.h"
#include "imageconvert/skew.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cmath>
#include <unordered_map>

using namespace imageconvert;

struct ImageConvertFunction::Private
{
    // Handles are numbers that are never used twice, so a freed one is unknown rather than another picture.
    std::unordered_map<MagickWand*, std::unique_ptr<Picture>> pictures;
    std::uintptr_t lastHandle = 0;
    QString error;
    bool diskFull = false;
    std::string errorPage;

    MagickWand* add(std::unique_ptr<Picture> picture)
    {
        lastHandle += 16;
        auto* handle = reinterpret_cast<MagickWand*>(lastHandle);
        pictures.emplace(handle, std::move(picture));
        return handle;
    }

    Picture* find(MagickWand* wand) const
    {
        const auto found = pictures.find(wand);
        return found == pictures.end() ? nullptr : found->second.get();
    }

    // Runs the work; what it throws becomes the last error. True when it went well.
    template <class Work>
    bool guarded(const char* operation, Work work)
    {
        error.clear();
        diskFull = false;
        errorPage.clear();
        const QString prefix = QString::fromLatin1(operation) + QStringLiteral(": ");
        try {
            work();
            return true;
        } catch (const PageError& e) {
            errorPage = e.page();
            diskFull = e.diskFull();
            error = prefix + QString::fromLocal8Bit(e.what());
        } catch (const PictureError& e) {
            diskFull = e.diskFull();
            error = prefix + QString::fromLocal8Bit(e.what());
        } catch (const std::bad_alloc&) {
            error = prefix + QStringLiteral("not enough memory");
        } catch (const cv::Exception& e) {
            error = prefix + (e.code == cv::Error::StsNoMem ? QStringLiteral("not enough memory")
                                                            : QString::fromLocal8Bit(e.what()));
        } catch (const std::exception& e) {
            error = prefix + QString::fromLocal8Bit(e.what());
        } catch (...) {
            error = prefix + QStringLiteral("unknown error");
        }
        return false;
    }

    // An operation on a picture; the handle stays the same.
    template <class Work>
    MagickWand* edit(MagickWand* wand, const char* operation, Work work)
    {
        Picture* const picture = find(wand);
        const bool done = guarded(operation, [&] {
            if (!picture)
                throw PictureError("no picture with this handle");
            work(*picture);
        });
        if (!done && picture && !picture->file.empty())
            error += QStringLiteral(" (%1)").arg(QFile::decodeName(picture->file.c_str()));
        return wand;
    }
};

namespace {

std::unique_ptr<Picture> load(const char* path)
{
    if (!path || !*path)
        throw PictureError("no file name");
    ReadResult read = readPicture(path);
    auto picture = std::make_unique<Picture>(std::move(read.pixels), read.dpi);
    picture->file = path;
    return picture;
}

int pixelsOf(double millimetres, int dpi)
{
    const double pixels = std::round(millimetres / 25.4 * dpi);
    return pixels >= 0 && pixels < kMaxSide ? static_cast<int>(pixels) : 0;
}

std::string pathOf(const QString& folder, const char* name, const char* type)
{
    if (!name || !*name || !type)
        throw PictureError("no file name");
    return QFile::encodeName(folder).toStdString() + name + "." + type;
}

// The box around what is kept of a picture of this size; all of it when there is no sheet.
QRect boundsOf(const Sheet& sheet, const cv::Size& size)
{
    const cv::Rect all(cv::Point(0, 0), size);
    const cv::RotatedRect outline(sheet.centre, sheet.size, static_cast<float>(sheet.angleDeg));
    const cv::Rect kept = sheet.found ? outline.boundingRect() & all : all;
    return {kept.x, kept.y, kept.width, kept.height};
}

void removePieces(QDir folder)
{
    const QStringList old = folder.entryList({QStringLiteral("crop*.bmp")}, QDir::Files | QDir::NoSymLinks);
    for (const QString& name : old)
        folder.remove(name);
}

} // namespace

ImageConvertFunction::ImageConvertFunction() : d(std::make_unique<Private>()) {}
ImageConvertFunction::~ImageConvertFunction() = default;

MagickWand* ImageConvertFunction::getImage(const char* path)
{
    MagickWand* handle = nullptr;
    d->guarded("getImage", [&] { handle = d->add(load(path)); });
    return handle;
}

void ImageConvertFunction::destroyImage(MagickWand* wand)
{
    d->pictures.erase(wand);
}

MagickWand* ImageConvertFunction::imageGamma(MagickWand* wand, double gamma)
{
    return d->edit(wand, "imageGamma", [=](Picture& p) { p.addTone(gammaTone(gamma)); });
}

MagickWand* ImageConvertFunction::imageLightAndContrast(MagickWand* wand, double brightness, double contrast)
{
    return d->edit(wand, "imageLightAndContrast",
                   [=](Picture& p) { p.addTone(lightAndContrastTone(brightness, contrast)); });
}

MagickWand* ImageConvertFunction::imageAutoCrop(MagickWand* wand)
{
    return d->edit(wand, "imageAutoCrop", [](Picture& p) {
        const Sheet sheet = detectSheet(p.reduced()).scaled(p.reduced().factor);
        p.measures.cropBox = boundsOf(sheet, p.untoned().size());
        p.measures.skewDeg = p.measures.skewDeg.value_or(0) + (sheet.found ? sheet.angleDeg : 0);
        if (sheet.found)
            p.setUntoned(cutSheet(p.untoned(), sheet, paperColour(p.reduced().colour)));
    });
}

bool ImageConvertFunction::AutoDeleteBlankPage(MagickWand* wand, int darkness, double percent)
{
    bool blank = false;
    d->edit(wand, "AutoDeleteBlankPage", [&](Picture& p) {
        const BlankResult result = detectBlank(p.untoned(), p.reduced(), {darkness, percent});
        blank = result.blank;
        p.measures.blankPercent = result.percent;
    });
    return blank;
}

MagickWand* ImageConvertFunction::AutoDeleteNoise(MagickWand* wand, int size)
{
    return d->edit(wand, "AutoDeleteNoise", [=](Picture& p) {
        if (isTwoLevel(p.pixels()))
            p.setPixels(despeckled(p.pixels(), size, p.workingDpi()));
    });
}

MagickWand* ImageConvertFunction::imageBlur(MagickWand* wand, int level)
{
    return d->edit(wand, "imageBlur",
                   [=](Picture& p) { p.setPixels(blurred(p.pixels(), level, p.workingDpi())); });
}

MagickWand* ImageConvertFunction::imageSharpen(MagickWand* wand, int level)
{
    return d->edit(wand, "imageSharpen",
                   [=](Picture& p) { p.setPixels(sharpened(p.pixels(), level, p.workingDpi())); });
}

MagickWand* ImageConvertFunction::imageRotate(MagickWand* wand, double degrees)
{
    return d->edit(wand, "imageRotate", [=](Picture& p) {
        if (degrees != 0)
            p.setUntoned(rotated(p.untoned(), degrees, cv::Scalar::all(255)));
    });
}

MagickWand* ImageConvertFunction::imageAutoDense(MagickWand* wand)
{
    return d->edit(wand, "imageAutoDense", [](Picture& p) {
        cv::Mat small = p.reduced().colour.clone();
        p.addTone(levelsTone(detectLevels(p.pendingTone().applied(small)), small.channels()));
    });
}

MagickWand* ImageConvertFunction::imageDeskew(MagickWand* wand)
{
    return d->edit(wand, "imageDeskew", [](Picture& p) {
        const SkewResult skew = detectSkew(p.reduced().grey, p.reduced().dpi);
        p.measures.skewDeg = p.measures.skewDeg.value_or(0) + (skew.sure ? skew.angleDeg : 0);
        if (skew.sure)
            p.setUntoned(straightened(p.untoned(), skew.angleDeg, paperColour(p.reduced().colour)));
    });
}

MagickWand* ImageConvertFunction::imageDelBackground(MagickWand* wand, int strength)
{
    return d->edit(wand, "imageDelBackground", [=](Picture& p) {
        p.setPixels(withoutBackground(p.pixels(), {strength, p.workingDpi()}));
    });
}

MagickWand* ImageConvertFunction::imageCharacterEnhance(MagickWand* wand, int strength)
{
    return d->edit(wand, "imageCharacterEnhance", [=](Picture& p) {
        p.setPixels(enhancedCharacters(p.pixels(), strength, p.workingDpi()));
    });
}

MagickWand* ImageConvertFunction::imageRedFile(MagickWand* wand)
{
    return d->edit(wand, "imageRedFile",
                   [](Picture& p) { p.setPixels(asRedHeaderDocument(p.pixels(), p.workingDpi())); });
}

MagickWand* ImageConvertFunction::imageResolution(MagickWand* wand, double xdpi, double ydpi, int sourceDpi)
{
    return d->edit(wand, "imageResolution", [=](Picture& p) {
        if (!(xdpi >= 1 && ydpi >= 1 && xdpi <= 9600 && ydpi <= 9600) || sourceDpi < 1)
            throw PictureError("resolution out of range");
        p.setUntoned(resampled(p.untoned(), xdpi / sourceDpi, ydpi / sourceDpi));
        p.setDpi(xdpi);
    });
}

MagickWand* ImageConvertFunction::imageUserPS(MagickWand* wand, double widthCm, double heightCm, int leftUp,
                                              int dpi)
{
    return d->edit(wand, "imageUserPS", [=](Picture& p) {
        const cv::Size size(pixelsOf(widthCm * 10, dpi), pixelsOf(heightCm * 10, dpi));
        if (size.width < 1 || size.height < 1)
            throw PictureError("paper size out of range");
        p.setUntoned(cutOut(p.untoned(), size, leftUp == 1));
    });
}

int ImageConvertFunction::imageCrop(const char* source, const char* outDir, int count, int direction)
{
    int written = 0;
    const QString folder = QFile::decodeName(outDir ? outDir : "");
    const bool good = d->guarded("imageCrop", [&] {
        if (folder.isEmpty() || !QFileInfo(folder).isDir())
            throw PictureError("no folder for the pieces");
        removePieces(QDir(folder));
        const std::unique_ptr<Picture> page = load(source);
        const std::vector<cv::Rect> rects = splitRects(page->untoned().size(), count, direction == 1);
        const int digits = static_cast<int>(std::to_string(rects.size()).size());
        for (const cv::Rect& rect : rects) {
            const QString name = QStringLiteral("/crop%1.bmp").arg(written + 1, digits, 10, QLatin1Char('0'));
            writePicture(page->untoned()(rect), QFile::encodeName(folder + name).toStdString(), "bmp",
                         page->workingDpi(), page->save);
            ++written;
        }
    });
    if (!good && written > 0) { // half a page would look like a whole one
        removePieces(QDir(folder));
        written = 0;
    }
    return written;
}

MagickWand* ImageConvertFunction::imageAppend(MagickWand* wand, const char* first, const char* second,
                                              int direction)
{
    destroyImage(wand);
    MagickWand* handle = nullptr;
    d->guarded("imageAppend", [&] {
        const std::unique_ptr<Picture> a = load(first), b = load(second);
        auto picture =
            std::make_unique<Picture>(joined(a->untoned(), b->untoned(), direction == 0), a->dpi());
        // The joined size says nothing about the resolution, the single page does.
        if (picture->dpi() <= 0)
            picture->setDpi(a->workingDpi());
        handle = d->add(std::move(picture));
    });
    return handle;
}

MagickWand* ImageConvertFunction::imageInBorder(MagickWand* wand, int red, int green, int blue, double topMm,
                                                double leftMm, int dpi)
{
    return d->edit(wand, "imageInBorder", [=](Picture& p) {
        p.setPixels(withBorder(
            p.pixels(), {cv::Scalar(red, green, blue), pixelsOf(topMm, dpi), pixelsOf(leftMm, dpi), true}));
    });
}

MagickWand* ImageConvertFunction::imageOutBorder(MagickWand* wand, int red, int green, int blue, double topMm,
                                                 double leftMm, int dpi)
{
    return d->edit(wand, "imageOutBorder", [=](Picture& p) {
        p.setPixels(withBorder(
            p.pixels(), {cv::Scalar(red, green, blue), pixelsOf(topMm, dpi), pixelsOf(leftMm, dpi), false}));
    });
}

MagickWand* ImageConvertFunction::imageRGBtoGray(MagickWand* wand)
{
    return d->edit(wand, "imageRGBtoGray", [](Picture& p) {
        if (p.untoned().channels() != 1)
            p.setPixels(toGrey(p.pixels()));
    });
}

MagickWand* ImageConvertFunction::imageRGBtoWB(MagickWand* wand, int threshold)
{
    return d->edit(wand, "imageRGBtoWB", [=](Picture& p) {
        p.setPixels(twoLevels(toGrey(p.pixels()), {threshold, p.workingDpi()}));
    });
}

MagickWand* ImageConvertFunction::imageCompress(MagickWand* wand, const QString& type, const QString& value)
{
    return d->edit(wand, "imageCompress", [&](Picture& p) {
        bool number = false;
        const int level = value.trimmed().toInt(&number);
        const QString kind = type.toLower(), word = value.trimmed().toLower();
        if (kind.startsWith(QLatin1String("jp")) && number && level >= 1 && level <= 100)
            p.save.jpegQuality = level;
        else if (kind == QLatin1String("png") && number && level >= 0 && level <= 9)
            p.save.pngLevel = level;
        else if (kind.startsWith(QLatin1String("tif")))
            p.save.tiff = word == QLatin1String("lzw")      ? SaveOptions::Tiff::Lzw
                          : word == QLatin1String("zip")    ? SaveOptions::Tiff::Zip
                          : word == QLatin1String("none")   ? SaveOptions::Tiff::None
                          : word == QLatin1String("group4") ? SaveOptions::Tiff::Group4
                                                            : p.save.tiff;
    });
}

bool ImageConvertFunction::saveImage(MagickWand* wand, const QString& folder, const char* name,
                                     const char* type, double dpi)
{
    bool saved = false;
    d->edit(wand, "saveImage", [&](Picture& p) {
        writePicture(p.pixels(), pathOf(folder, name, type), type, dpi > 0 ? dpi : p.workingDpi(), p.save);
        saved = true;
    });
    return saved;
}

bool ImageConvertFunction::writeImage(MagickWand* wand, const QString& path)
{
    bool written = false;
    d->edit(wand, "writeImage", [&](Picture& p) {
        writePicture(p.pixels(), QFile::encodeName(path).toStdString(),
                     QFileInfo(path).suffix().toStdString(), p.workingDpi(), p.save);
        written = true;
    });
    return written;
}

bool ImageConvertFunction::savePDF(const QStringList& pages, const QString& saveDir, const QString& baseName,
                                   const char* type, const DocumentOptions& options)
{
    return d->guarded("savePDF", [&] {
        writePdf(documentJob(pages, saveDir, baseName, QString::fromUtf8(type), options));
    });
}

bool ImageConvertFunction::saveOFD(const QStringList& pages, const QString& saveDirWithSlash,
                                   const QString& baseName, int paperCode, const DocumentOptions& options)
{
    return d->guarded("saveOFD", [&] {
        writeOfd(documentJob(pages, saveDirWithSlash, baseName, QStringLiteral("ofd"), options), paperCode);
    });
}

bool ImageConvertFunction::imageStartExe(const QString& folder, const char* name, const char* type,
                                         const char* application)
{
    return d->guarded("imageStartExe", [&] {
        const QString file = QFile::decodeName(pathOf(folder, name, type).c_str());
        if (!QFileInfo::exists(file))
            throw PictureError("there is no file " + file.toStdString());
        const QString failure =
            startCommand(commandFor(QString::fromUtf8(application ? application : ""), file));
        if (!failure.isEmpty())
            throw PictureError(failure.toStdString());
    });
}

void ImageConvertFunction::setSourceDpi(MagickWand* wand, double dpi)
{
    d->edit(wand, "setSourceDpi", [=](Picture& p) {
        if (!(dpi >= 1 && dpi <= 9600))
            throw PictureError("resolution out of range");
        p.setDpi(dpi);
    });
}

int ImageConvertFunction::width(MagickWand* wand) const
{
    const Picture* picture = d->find(wand);
    return picture ? picture->untoned().cols : 0;
}

int ImageConvertFunction::height(MagickWand* wand) const
{
    const Picture* picture = d->find(wand);
    return picture ? picture->untoned().rows : 0;
}

double ImageConvertFunction::dpi(MagickWand* wand) const
{
    const Picture* picture = d->find(wand);
    return picture ? picture->dpi() : 0;
}

double ImageConvertFunction::workingDpi(MagickWand* wand) const
{
    const Picture* picture = d->find(wand);
    return picture ? picture->workingDpi() : 0;
}

PageMeasures ImageConvertFunction::measures(MagickWand* wand) const
{
    const Picture* picture = d->find(wand);
    return picture ? picture->measures : PageMeasures();
}

QString ImageConvertFunction::lastError() const
{
    return d->error;
}

bool ImageConvertFunction::lastErrorIsDiskFull() const
{
    return d->diskFull;
}

QString ImageConvertFunction::lastErrorPage() const
{
    return QFile::decodeName(d->errorPage.c_str());
}
