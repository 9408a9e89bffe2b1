// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/effect.h"

#include "imaging/pageoptions.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <opencv2/imgcodecs.hpp>

namespace {

ImageHandle load(ImageConvertFunction& library, const QString& picture, double dpi)
{
    ImageHandle image(library, library.getImage(QFile::encodeName(picture).constData()));
    if (image)
        library.setSourceDpi(image.get(), dpi);
    else
        qWarning().noquote() << "preview: cannot read" << picture << library.lastError();
    return image;
}

// The size of the file that the effect makes of a picture; 0: none.
qint64 bytesOf(const QString& picture, double dpi, const Effect& effect, const QString& result)
{
    return renderEffect(picture, dpi, effect, result) ? QFileInfo(result).size() : 0;
}

// The detail's share of the reduced page as a file.
bool writeShare(const SamplePage& sample, const QString& file)
{
    try {
        const cv::Mat page = cv::imread(QFile::encodeName(sample.page).toStdString(), cv::IMREAD_COLOR);
        if (page.empty() || sample.size.isEmpty())
            return false;
        const double scale = double(page.cols) / sample.size.width();
        const QRect& place = sample.place;
        const cv::Rect share(qRound(place.x() * scale), qRound(place.y() * scale),
                             qMax(1, qRound(place.width() * scale)), qMax(1, qRound(place.height() * scale)));
        const cv::Rect inside = share & cv::Rect(0, 0, page.cols, page.rows);
        return !inside.empty() && cv::imwrite(QFile::encodeName(file).toStdString(), page(inside));
    } catch (const cv::Exception& error) {
        qWarning() << "preview: no share of the page:" << error.what();
    }
    return false;
}

} // namespace

bool renderEffect(const QString& picture, double dpi, const Effect& effect, const QString& result)
{
    ImageConvertFunction library;
    ImageHandle image = load(library, picture, dpi);
    if (!image)
        return false;
    image.reset(effect(library, image.release()));
    if (library.writeImage(image.get(), result))
        return true;
    qWarning().noquote() << "preview: cannot write" << result << library.lastError();
    return false;
}

qint64 estimatedBytes(const SamplePage& sample, qint64 detailBytes, const Effect& effect, const QString& type,
                      const QString& folder)
{
    const QString share = folder + QStringLiteral("share.bmp");
    const QString result = folder + QStringLiteral("measured.") + type;
    if (!writeShare(sample, share))
        return 0;
    const qint64 page = bytesOf(sample.page, sample.pageDpi(), effect, result);
    const qint64 part = bytesOf(share, sample.pageDpi(), effect, result);
    return part > 0 ? qRound64(double(detailBytes) * double(page) / double(part)) : 0;
}

bool countsAsBlank(const SamplePage& sample, int level)
{
    const std::optional<BlankLimits> limits = blankLimits(level);
    ImageConvertFunction library;
    ImageHandle image = load(library, sample.page, sample.pageDpi());
    return limits && image && library.AutoDeleteBlankPage(image.get(), limits->darkness, limits->percent);
}
