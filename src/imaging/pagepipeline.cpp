// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/pagepipeline.h"

#include "config/paths.h"
#include "imaging/orientation.h"
#include "output/naming.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <utility>

namespace {

// What a scan at up to 300 dpi or above it really delivered.
int sourceDpi(const PageOptions& options)
{
    return options.dpi <= 300 ? 300 : 600;
}

double fixedTurn(const PageOptions& options, bool oddPage)
{
    if (options.frontTurn.enabled && options.backTurn.enabled)
        return oddPage ? options.frontTurn.clockwiseDegrees : options.backTurn.clockwiseDegrees;
    return options.frontTurn.enabled ? options.frontTurn.clockwiseDegrees : options.backTurn.clockwiseDegrees;
}

void removePieces(const QString& folder)
{
    QDir dir(folder);
    for (const QString& name : dir.entryList({QStringLiteral("crop*.bmp")}, QDir::Files | QDir::NoSymLinks))
        dir.remove(name);
}

} // namespace

PagePipeline::PagePipeline(ImageConvertFunction& library, NameSource nextName)
    : m_library(library), m_nextName(std::move(nextName))
{
}

MagickWand* PagePipeline::basicProcess(MagickWand* wand, const PageOptions& options, bool oddPage)
{
    ImageHandle image(m_library, wand);
    image.reset(m_library.imageGamma(image.get(), options.gamma));
    image.reset(m_library.imageLightAndContrast(image.get(), options.brightness, options.contrast));
    if (options.autoCrop)
        image.reset(m_library.imageAutoCrop(image.get()));
    // With merging on, the sheet has been tested as a whole.
    if (options.deleteBlank && !options.merge && isBlank(image.get(), options))
        return nullptr;

    switch (options.filter) {
    case PageOptions::Blur:
        image.reset(m_library.imageBlur(image.get(), 1));
        break;
    case PageOptions::BlurMore:
        image.reset(m_library.imageBlur(image.get(), 2));
        break;
    case PageOptions::Sharpen:
        image.reset(m_library.imageSharpen(image.get(), 1));
        break;
    case PageOptions::SharpenMore:
        image.reset(m_library.imageSharpen(image.get(), 2));
        break;
    default:
        break;
    }
    turn(image, options, oddPage);
    if (options.autoDense)
        image.reset(m_library.imageAutoDense(image.get()));
    if (options.deskew)
        image.reset(m_library.imageDeskew(image.get()));
    if (options.deleteBackground)
        image.reset(m_library.imageDelBackground(image.get(), options.backgroundStrength));
    if (options.characterEnhance)
        image.reset(m_library.imageCharacterEnhance(image.get(), options.enhanceStrength));
    if (options.redFile)
        image.reset(m_library.imageRedFile(image.get()));
    fitResolution(image, options);
    cutCustomPaper(image, options);
    return image.release();
}

bool PagePipeline::isBlank(MagickWand* image, const PageOptions& options)
{
    const std::optional<BlankLimits> limits = blankLimits(options.blankLevel);
    return limits && m_library.AutoDeleteBlankPage(image, limits->darkness, limits->percent);
}

void PagePipeline::turn(ImageHandle& image, const PageOptions& options, bool oddPage)
{
    if (!options.frontTurn.enabled && !options.backTurn.enabled) {
        turnUpright(image, options);
        return;
    }
    const double degrees = fixedTurn(options, oddPage);
    if (degrees != 0)
        image.reset(m_library.imageRotate(image.get(), degrees));
}

void PagePipeline::turnUpright(ImageHandle& image, const PageOptions& options)
{
    const QString folder = paths::tempFolder();
    const QString probe = folder + QStringLiteral("autoRotate.bmp");
    if (!m_library.saveImage(image.get(), folder, "autoRotate", "bmp", options.dpi)) {
        qWarning().noquote() << "orientation: no probe file, page left as it is:" << m_library.lastError();
        return;
    }
    const QByteArray path = QFile::encodeName(probe);
    const double degrees = rotationAngle(getRealRotation(path.toStdString()));
    qDebug().noquote() << "rotate: " << degrees;
    if (ImageHandle reloaded = load(probe, options)) {
        image.reset(reloaded.release());
        image.reset(m_library.imageRotate(image.get(), degrees));
    } else {
        qWarning().noquote() << "orientation: probe file not readable, page left as it is:"
                             << m_library.lastError();
    }
    QFile::remove(probe);
}

void PagePipeline::fitResolution(ImageHandle& image, const PageOptions& options)
{
    if (options.customResolution)
        image.reset(m_library.imageResolution(image.get(), options.dpi, options.dpi, sourceDpi(options)));
    if (options.scannedFinerThan400)
        image.reset(m_library.imageResolution(image.get(), 400, 400, 600));
}

void PagePipeline::cutCustomPaper(ImageHandle& image, const PageOptions& options)
{
    const std::optional<PaperCut> cut = options.paper.on ? customCut(options.paper) : std::nullopt;
    if (cut)
        image.reset(m_library.imageUserPS(image.get(), cut->widthCm, cut->heightCm,
                                          options.paper.leftUp ? 1 : 0, options.dpi));
}

void PagePipeline::fillBorder(ImageHandle& image, const PageOptions& options)
{
    const PageOptions::Border& border = options.border;
    if (!border.on)
        return;
    image.reset(border.inside ? m_library.imageInBorder(image.get(), border.red, border.green, border.blue,
                                                        border.topMm, border.leftMm, options.dpi)
                              : m_library.imageOutBorder(image.get(), border.red, border.green, border.blue,
                                                         border.topMm, border.leftMm, options.dpi));
}

MagickWand* PagePipeline::convertColorMode(MagickWand* image, const PageOptions& options)
{
    switch (options.colorMode) {
    case ColorMode::Color:
        return image;
    case ColorMode::Grey:
        return m_library.imageRGBtoGray(image);
    case ColorMode::BlackAndWhite:
        return removeNoise(m_library.imageRGBtoWB(image, options.blackWhiteThreshold), options);
    }
    return image;
}

MagickWand* PagePipeline::removeNoise(MagickWand* image, const PageOptions& options)
{
    return options.noiseSize > 0 ? m_library.AutoDeleteNoise(image, options.noiseSize) : image;
}

void PagePipeline::finishAndSave(ImageHandle& image, const PageOptions& options, PageResult& result)
{
    fillBorder(image, options);
    image.reset(convertColorMode(image.get(), options));
    if (options.compression)
        image.reset(m_library.imageCompress(image.get(), options.saveType, *options.compression));
    saveAs(image, options, options.dpi, result);
}

bool PagePipeline::saveAs(ImageHandle& image, const PageOptions& options, double dpi, PageResult& result)
{
    const QString name =
        freeBaseName(options.folder, m_nextName(), options.saveType, options.replaceExisting);
    const QByteArray type = options.saveType.toLatin1();
    const QByteArray encodedName = QFile::encodeName(name);
    const QString path = options.folder + name + QLatin1Char('.') + options.saveType;
    if (!m_library.saveImage(image.get(), options.folder, encodedName.constData(), type.constData(), dpi)) {
        qWarning().noquote() << "cannot save" << path << ":" << m_library.lastError();
        result.problems << (m_library.lastErrorIsDiskFull() ? tr("无法保存 %1：磁盘空间不足").arg(path)
                                                            : tr("无法保存 %1：无法写入该文件夹").arg(path));
        return false;
    }
    result.files << path;
    if (options.startApplication)
        startApplication(name, options, result);
    return true;
}

void PagePipeline::startApplication(const QString& name, const PageOptions& options, PageResult& result)
{
    std::ofstream scratch(QFile::encodeName(paths::scratchText()).toStdString(), std::ios::trunc);
    if (!scratch)
        qWarning().noquote() << "cannot empty" << paths::scratchText();
    else if (m_textProbe)
        m_textProbe(paths::logoImage(), scratch);
    const QByteArray application = options.applicationCommand.toUtf8();
    if (m_library.imageStartExe(options.folder, QFile::encodeName(name).constData(),
                                options.saveType.toLatin1().constData(), application.constData()))
        return;
    qWarning().noquote() << "follow-up application:" << m_library.lastError();
    result.problems
        << tr("无法启动应用程序打开 %1").arg(options.folder + name + QLatin1Char('.') + options.saveType);
}

// The page files do not carry their resolution.
ImageHandle PagePipeline::load(const QString& file, const PageOptions& options)
{
    ImageHandle image(m_library, m_library.getImage(QFile::encodeName(file).constData()));
    if (image)
        m_library.setSourceDpi(image.get(), options.scanDpi);
    return image;
}

PageResult PagePipeline::processPage(const QString& pageFile, const PageOptions& options)
{
    PageResult result;
    if (options.split)
        processPieces(pageFile, options, result);
    else
        processWhole(pageFile, options, result);
    if (options.extraCopies && !options.preview && !result.files.isEmpty())
        saveExtraCopies(pageFile, options, result);
    return result;
}

void PagePipeline::processWhole(const QString& pageFile, const PageOptions& options, PageResult& result)
{
    ImageHandle image = load(pageFile, options);
    if (!image) {
        result.problems << unreadable(pageFile);
        return;
    }
    image.reset(basicProcess(image.release(), options, pageNumber(pageFile) % 2 == 1));
    result.blank = !image;
    if (image)
        finishAndSave(image, options, result);
    result.sourceDone = result.blank || !result.files.isEmpty();
}

void PagePipeline::processPieces(const QString& pageFile, const PageOptions& options, PageResult& result)
{
    const QString folder = paths::tempFolder();
    const int direction = options.horizontal ? 1 : 0;
    m_library.imageCrop(QFile::encodeName(pageFile).constData(), QFile::encodeName(folder).constData(),
                        options.splitCount, direction);
    const QStringList pieces =
        QDir(folder).entryList({QStringLiteral("crop*.bmp")}, QDir::Files | QDir::NoSymLinks, QDir::Name);
    if (pieces.isEmpty()) {
        qWarning().noquote() << "page not split:" << pageFile << m_library.lastError();
        result.problems << tr("%1 无法拆分，原始页面已保留").arg(QFileInfo(pageFile).fileName());
        return;
    }
    int blanks = 0;
    for (const QString& piece : pieces) {
        ImageHandle image = load(folder + piece, options);
        if (!image) {
            result.problems << unreadable(folder + piece);
            continue;
        }
        image.reset(basicProcess(image.release(), options, pageNumber(pageFile) % 2 == 1));
        if (!image) {
            ++blanks;
            continue;
        }
        finishAndSave(image, options, result);
    }
    removePieces(folder);
    result.blank = blanks == pieces.size();
    result.sourceDone = result.files.size() + blanks == pieces.size();
}

PageResult PagePipeline::processSheet(const QString& frontFile, const QString& backFile,
                                      const PageOptions& options)
{
    PageResult result;
    if (options.deleteBlank && sheetIsBlank(frontFile, backFile, options)) {
        result.blank = true;
        result.sourceDone = true;
        return result;
    }
    ImageHandle image(m_library, m_library.imageAppend(nullptr, QFile::encodeName(frontFile).constData(),
                                                       QFile::encodeName(backFile).constData(),
                                                       options.horizontal ? 0 : 1));
    if (!image) {
        qWarning().noquote() << "sheet not joined:" << m_library.lastError();
        result.problems << tr("无法合并 %1 和 %2，原始页面已保留")
                               .arg(QFileInfo(frontFile).fileName(), QFileInfo(backFile).fileName());
        return result;
    }
    m_library.setSourceDpi(image.get(), options.scanDpi);
    image.reset(basicProcess(image.release(), options, pageNumber(frontFile) % 2 == 1));
    finishAndSave(image, options, result);
    result.sourceDone = !result.files.isEmpty();
    return result;
}

bool PagePipeline::sheetIsBlank(const QString& frontFile, const QString& backFile, const PageOptions& options)
{
    for (const QString& file : {frontFile, backFile}) {
        ImageHandle image = load(file, options);
        if (!image)
            return false; // the join will report it
        image.reset(m_library.imageGamma(image.get(), options.gamma));
        image.reset(m_library.imageLightAndContrast(image.get(), options.brightness, options.contrast));
        if (options.autoCrop)
            image.reset(m_library.imageAutoCrop(image.get()));
        if (!isBlank(image.get(), options))
            return false;
    }
    return true;
}

void PagePipeline::saveExtraCopies(const QString& pageFile, const PageOptions& options, PageResult& result)
{
    if (options.colorMode == ColorMode::Color)
        saveExtraCopy(pageFile, options, true, result);
    if (options.colorMode != ColorMode::BlackAndWhite)
        saveExtraCopy(pageFile, options, false, result);
}

void PagePipeline::saveExtraCopy(const QString& pageFile, const PageOptions& options, bool grey,
                                 PageResult& result)
{
    ImageHandle image = load(pageFile, options);
    if (!image) {
        result.problems << unreadable(pageFile);
        return;
    }
    image.reset(basicProcess(image.release(), options, pageNumber(pageFile) % 2 == 1));
    if (!image)
        return;
    const int dpi = grey ? options.greyCopyDpi : options.blackWhiteCopyDpi;
    if (dpi != options.dpi)
        image.reset(m_library.imageResolution(image.get(), dpi, dpi, sourceDpi(options)));
    image.reset(grey ? m_library.imageRGBtoGray(image.get())
                     : m_library.imageRGBtoWB(image.get(), PageOptions::kNeutralThreshold));
    saveAs(image, options, dpi, result);
}

QString PagePipeline::unreadable(const QString& file) const
{
    qWarning().noquote() << "cannot read" << file << ":" << m_library.lastError();
    return tr("无法读取页面文件 %1，文件已保留").arg(QFileInfo(file).fileName());
}

int pageNumber(const QString& pageFile)
{
    static const QRegularExpression digits(QStringLiteral("(\\d+)\\.[^./]*$"));
    return digits.match(pageFile).captured(1).toInt();
}
