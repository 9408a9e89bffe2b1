// SPDX-License-Identifier: GPL-3.0-or-later
#include "operations.h"

#include "imaging/orientation.h"
#include "imaging/pageoptions.h"

#include <QFile>
#include <cmath>

namespace companion {

namespace {

using Values = std::vector<double>;

int whole(double value)
{
    return static_cast<int>(std::lround(value));
}

// The plain operations: a method of the library with no value, an int or a double.
template <MagickWand* (ImageConvertFunction::*method)(MagickWand*)>
void plain(PageWork& page, const Values&)
{
    page.image.reset((page.library.*method)(page.image.get()));
}

template <MagickWand* (ImageConvertFunction::*method)(MagickWand*, int)>
void withLevel(PageWork& page, const Values& values)
{
    page.image.reset((page.library.*method)(page.image.get(), whole(values[0])));
}

template <MagickWand* (ImageConvertFunction::*method)(MagickWand*, double)>
void withNumber(PageWork& page, const Values& values)
{
    page.image.reset((page.library.*method)(page.image.get(), values[0]));
}

int dpiOf(PageWork& page)
{
    return whole(page.library.workingDpi(page.image.get()));
}

template <MagickWand* (ImageConvertFunction::*method)(MagickWand*, int, int, int, double, double, int)>
void border(PageWork& page, const Values& values)
{
    page.image.reset((page.library.*method)(page.image.get(), whole(values[0]), whole(values[1]),
                                            whole(values[2]), values[3], values[4], dpiOf(page)));
}

void lightAndContrast(PageWork& page, const Values& values)
{
    page.image.reset(page.library.imageLightAndContrast(page.image.get(), values[0], values[1]));
}

void blank(PageWork& page, const Values& values)
{
    if (const std::optional<BlankLimits> limits = blankLimits(whole(values[0])))
        page.report.blank =
            page.library.AutoDeleteBlankPage(page.image.get(), limits->darkness, limits->percent);
}

// As the program does it: the detector reads a picture file.
void orient(PageWork& page, const Values&)
{
    const QString folder = page.scratch.path() + QLatin1Char('/');
    const QString probe = folder + QStringLiteral("orient.bmp");
    if (!page.library.saveImage(page.image.get(), folder, "orient", "bmp", 0))
        return; // reported by the caller, as every failure of the library
    const Orientation found = detectOrientation(QFile::encodeName(probe).toStdString());
    QFile::remove(probe);
    page.report.turn = whole(rotationAngle(found.code));
    page.report.confidence = found.confidence;
    page.image.reset(page.library.imageRotate(page.image.get(), rotationAngle(found.code)));
}

void resolution(PageWork& page, const Values& values)
{
    page.image.reset(page.library.imageResolution(page.image.get(), values[0], values[0], whole(values[1])));
}

void paper(PageWork& page, const Values& values)
{
    page.image.reset(
        page.library.imageUserPS(page.image.get(), values[0], values[1], whole(values[2]), dpiOf(page)));
}

constexpr ValueRange kSwitch{0, 1};
constexpr ValueRange kStrength{0, 10};
constexpr ValueRange kPercent{-100, 100, false};
constexpr ValueRange kColour{0, 255};
constexpr ValueRange kMillimetres{0, 500, false};
constexpr ValueRange kCentimetres{0.1, 200, false};
constexpr ValueRange kDpi{1, 9600};

} // namespace

const std::vector<OperationKind>& operationKinds()
{
    using Library = ImageConvertFunction;
    static const std::vector<ValueRange> borderRanges{kColour, kColour, kColour, kMillimetres, kMillimetres};
    static const std::vector<OperationKind> kinds{
        {"append", "DIRECTION", {kSwitch}, nullptr},
        {"gamma", "G", {{0.1, 10, false}}, withNumber<&Library::imageGamma>},
        {"light-contrast", "B,C", {kPercent, kPercent}, lightAndContrast},
        {"auto-crop", "", {}, plain<&Library::imageAutoCrop>},
        {"blank", "LEVEL", {{1, 15}}, blank},
        {"blur", "1|2", {{1, 2}}, withLevel<&Library::imageBlur>},
        {"sharpen", "1|2", {{1, 2}}, withLevel<&Library::imageSharpen>},
        {"rotate", "DEGREES", {{-360, 360, false}}, withNumber<&Library::imageRotate>},
        {"orient", "", {}, orient},
        {"auto-dense", "", {}, plain<&Library::imageAutoDense>},
        {"deskew", "", {}, plain<&Library::imageDeskew>},
        {"del-background", "N", {kStrength}, withLevel<&Library::imageDelBackground>},
        {"enhance", "N", {kStrength}, withLevel<&Library::imageCharacterEnhance>},
        {"red-file", "", {}, plain<&Library::imageRedFile>},
        {"resolution", "X,SOURCE", {{1, 9600, false}, kDpi}, resolution},
        {"paper", "W,H,LEFTUP", {kCentimetres, kCentimetres, kSwitch}, paper},
        {"in-border", "R,G,B,TOP,LEFT", borderRanges, border<&Library::imageInBorder>},
        {"out-border", "R,G,B,TOP,LEFT", borderRanges, border<&Library::imageOutBorder>},
        {"gray", "", {}, plain<&Library::imageRGBtoGray>},
        {"wb", "THRESHOLD", {kColour}, withLevel<&Library::imageRGBtoWB>},
        {"denoise", "N", {{1, 100}}, withLevel<&Library::AutoDeleteNoise>},
        {"split", "COUNT,DIRECTION", {{1, 100}, kSwitch}, nullptr},
    };
    return kinds;
}

} // namespace companion
