// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's named page operations: each collects options and calls the room that does the work.
#include "app/widget.h"

#include "config/settingsfile.h"
#include "forms/scanpagelogic.h"
#include "imaging/backgroundrun.h"
#include "imaging/orientation.h"
#include "imaging/pageoptions.h"
#include "ocr/ocrpanel.h"
#include "output/compression.h"
#include "output/naming.h"
#include "recognition/projection.h"

#include <QFile>
#include <QThread>

// Names come from the GUI thread, which alone writes the settings files, also when the page's work runs in a
// worker.
PagePipeline Widget::pipeline()
{
    PagePipeline pipeline(m_library, [this] {
        if (QThread::currentThread() == thread())
            return getImageName();
        QString name;
        QMetaObject::invokeMethod(
            this, [&] { name = getImageName(); }, Qt::BlockingQueuedConnection);
        return name;
    });
    pipeline.setTextProbe(&ocrpanel::handleTxtOcrTest);
    return pipeline;
}

MagickWand* Widget::imageBasicProcess(MagickWand* image)
{
    return pipeline().basicProcess(image, workControls().pageOptions(m_preview), true);
}

PageResult Widget::imageProcess(const char* pageFile)
{
    const PageOptions options = workControls().pageOptions(m_preview);
    PageResult result;
    runWithEvents([&] { result = pipeline().processPage(QFile::decodeName(pageFile), options); });
    return result;
}

PageResult Widget::imageAppendProcess(const char* frontFile, const char* backFile)
{
    const PageOptions options = workControls().pageOptions(m_preview);
    PageResult result;
    runWithEvents([&] {
        result = pipeline().processSheet(QFile::decodeName(frontFile), QFile::decodeName(backFile), options);
    });
    return result;
}

bool Widget::delBlankImage(MagickWand* image, QSettings& settings)
{
    PageOptions options;
    readPipelineSettings(options, settings,
                         {workControls().groups.paperSize, workControls().groups.deNoise, {}}, false);
    return pipeline().isBlank(image, options);
}

MagickWand* Widget::scanImageColorModeTransform(MagickWand* image)
{
    return pipeline().convertColorMode(image, workControls().pageOptions(m_preview));
}

MagickWand* Widget::widgetImageRGBtoWB(MagickWand* image)
{
    return m_library.imageRGBtoWB(image, workControls().pageOptions(m_preview).blackWhiteThreshold);
}

MagickWand* Widget::delWBNoise(MagickWand* image)
{
    return pipeline().removeNoise(image, workControls().pageOptions(m_preview));
}

MagickWand* Widget::setImageCompress(MagickWand* image, const QString& saveType, QSettings& settings)
{
    const ScanPageLogic& logic = *workControls().logic;
    const auto mode = static_cast<ColorMode>(logic.colorMode());
    const std::optional<QString> value = compressionValue(settings, mode, logic.fileFormat());
    return value ? m_library.imageCompress(image, saveType, *value) : image;
}

QString Widget::getImageName()
{
    return takeImageName(workControls().groups.scan, m_preview);
}

const char* Widget::getSaveType() const
{
    return saveTypeWord(workControls().logic->fileFormat());
}

int Widget::getRealRotation(const std::string& path) const
{
    return ::getRealRotation(path);
}

int Widget::getRotation(const cv::Mat& image) const
{
    return ::getRotation(image);
}

std::vector<cv::Rect> Widget::getRowRects(const cv::Mat& image) const
{
    return ::getRowRects(image);
}

std::vector<cv::Rect> Widget::getBlockRects(const cv::Mat& rowImage, int rowTop) const
{
    return ::getBlockRects(rowImage, rowTop);
}
