// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/previewpicture.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

namespace {

// A4 at 1200 dpi has 139 million pixels; what is far beyond is a damaged header or not a page.
constexpr qint64 mostPixels = 400'000'000;
// Files up to this size are kept as they are, without another round of compression.
constexpr qint64 smallFile = 4 << 20;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(PreviewPicture)
};

QByteArray compressed(const QImage& image)
{
    const bool exact = image.depth() == 1 || image.hasAlphaChannel();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, exact ? "PNG" : "JPEG", exact ? -1 : 92);
    return bytes;
}

} // namespace

bool PreviewPicture::fail(const QString& reason)
{
    m_bytes.clear();
    m_originalSize = QSize();
    m_fault = reason;
    return false;
}

bool PreviewPicture::load(const QString& path, int longest)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning() << "preview:" << path << file.errorString();
        return fail(QFileInfo::exists(path) ? Texts::tr("文件无法读取") : Texts::tr("文件不存在"));
    }
    if (file.size() == 0)
        return fail(Texts::tr("文件是空的"));

    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    QSize size = reader.size();
    if (qint64(size.width()) * size.height() > mostPixels)
        return fail(Texts::tr("图像尺寸过大"));
    const QSize stored = size;
    if (qMax(size.width(), size.height()) > longest)
        reader.setScaledSize(size.scaled(longest, longest, Qt::KeepAspectRatio));
    QImage image = reader.read();
    if (image.isNull()) {
        qWarning() << "preview:" << path << reader.errorString();
        return fail(Texts::tr("文件已损坏或不是图像文件"));
    }
    if (!size.isValid())
        size = image.size();
    if (reader.transformation().testFlag(QImageIOHandler::TransformationRotate90))
        size.transpose();
    const bool reduced =
        qMax(image.width(), image.height()) > longest || (stored.isValid() && size != image.size());
    if (qMax(image.width(), image.height()) > longest)
        image = image.scaled(longest, longest, Qt::KeepAspectRatio, Qt::SmoothTransformation);

    m_fault.clear();
    m_originalSize = size;
    if (!reduced && file.size() <= smallFile && file.seek(0))
        m_bytes = file.readAll();
    else
        m_bytes = compressed(image);
    return true;
}

QImage PreviewPicture::decode() const
{
    QBuffer buffer;
    buffer.setData(m_bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    return reader.read();
}
