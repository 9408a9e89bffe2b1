// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/thumbnails.h"

#include <QFileInfo>
#include <QImageReader>
#include <QMutexLocker>
#include <algorithm>

namespace {

constexpr int kCacheBytes = 24 << 20;
constexpr int kMostWishes = 400; // more than any window shows

// JPEG is reduced while it is read; others are in memory as a whole for a moment.
bool isTooLarge(const QImageReader& reader)
{
    constexpr qint64 kMostPixels = 64'000'000;
    const QSize size = reader.size();
    return reader.format() != "jpeg" && qint64(size.width()) * size.height() > kMostPixels;
}

QImage thumbnail(const QString& path, int side)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!reader.canRead() || isTooLarge(reader))
        return {};
    if (qMax(size.width(), size.height()) > side)
        reader.setScaledSize(size.scaled(side, side, Qt::KeepAspectRatio).expandedTo({1, 1}));
    const QImage image = reader.read();
    return image.width() > side || image.height() > side
               ? image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation)
               : image;
}

bool isPicture(const QString& path)
{
    static const QList<QByteArray> formats = QImageReader::supportedImageFormats();
    const QByteArray suffix = QFileInfo(path).suffix().toLower().toLatin1();
    return suffix != "pdf" && formats.contains(suffix);
}

} // namespace

Thumbnails::Thumbnails(int side, QObject* parent) : QObject(parent), m_side(side), m_made(kCacheBytes)
{
    m_pool.setMaxThreadCount(1);
}

Thumbnails::~Thumbnails()
{
    m_stopped = true;
    m_pool.waitForDone();
}

QPixmap Thumbnails::picture(const QString& path, const QDateTime& modified)
{
    const QString key = path + QLatin1Char('\n') + QString::number(modified.toMSecsSinceEpoch());
    if (const QPixmap* made = m_made.object(key))
        return *made;
    if (!isPicture(path))
        return {};
    const QMutexLocker lock(&m_mutex);
    if (m_making.contains(key))
        return {};
    m_wishes.erase(std::remove_if(m_wishes.begin(), m_wishes.end(),
                                  [&key](const Wish& wish) { return wish.key == key; }),
                   m_wishes.end());
    m_wishes.push_back({path, key});
    if (m_wishes.size() > kMostWishes)
        m_wishes.removeFirst();
    if (!m_working) {
        m_working = true;
        m_pool.start([this] { work(); });
    }
    return {};
}

void Thumbnails::drop()
{
    const QMutexLocker lock(&m_mutex);
    m_wishes.clear();
}

bool Thumbnails::takeWish(Wish& wish)
{
    const QMutexLocker lock(&m_mutex);
    m_working = !m_wishes.isEmpty() && !m_stopped;
    if (m_working) {
        wish = m_wishes.takeLast();
        m_making.insert(wish.key);
    }
    return m_working;
}

void Thumbnails::work()
{
    Wish wish;
    while (takeWish(wish)) {
        const QImage image = thumbnail(wish.path, m_side);
        const auto keep = [this, image, wish] {
            const QMutexLocker lock(&m_mutex);
            m_making.remove(wish.key);
            m_made.insert(wish.key, new QPixmap(QPixmap::fromImage(image)),
                          qMax(64, int(image.sizeInBytes())));
        };
        const auto tell = [this, keep, wish, good = !image.isNull()] {
            keep();
            if (good)
                emit ready(wish.path);
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    }
}
