// SPDX-License-Identifier: GPL-3.0-or-later
#include "rendercache.h"

#include <algorithm>

namespace reader {
namespace {

constexpr qint64 kLargestWhole = 9'000'000; // pixels; an A4 page at 275 dpi
constexpr int kSide = 2048;

} // namespace

uint qHash(const TileKey& key, uint seed)
{
    return ::qHash(key.page, seed) ^ ::qHash(key.size.width() * 31 + key.area.x()) ^
           ::qHash(key.size.height() * 17 + key.area.y() + 7);
}

QVector<TileKey> tilesOf(int page, QSize size, const QRect& seen)
{
    const QRect whole({0, 0}, size);
    if (qint64(size.width()) * size.height() <= kLargestWhole)
        return {{page, size, whole}};
    QVector<TileKey> tiles;
    const QRect part = seen & whole;
    for (int y = part.top() / kSide * kSide; y <= part.bottom(); y += kSide)
        for (int x = part.left() / kSide * kSide; x <= part.right(); x += kSide)
            tiles << TileKey{page, size, QRect(x, y, kSide, kSide) & whole};
    return tiles;
}

RenderCache::RenderCache() : m_tiles(int(kLeastBound >> 10)) {}

// Without room for all of them the visible tiles would push each other out for ever.
void RenderCache::setSeen(qint64 bytes)
{
    m_tiles.setMaxCost(int(std::max(kLeastBound, bytes + bytes / 4) >> 10));
}

void RenderCache::insert(const TileKey& key, const Tile& tile)
{
    if (key.isWhole())
        m_whole.insert(key.page, key);
    if (!tile.fault.isEmpty())
        m_faults.insert(key.page, tile.fault);
    m_tiles.insert(key, new Tile(tile), int(tile.image.sizeInBytes() >> 10) + 1);
}

const Tile* RenderCache::find(const TileKey& key) const
{
    return m_tiles.object(key);
}

const Tile* RenderCache::standIn(int page) const
{
    const auto key = m_whole.constFind(page);
    return key == m_whole.constEnd() ? nullptr : m_tiles.object(*key);
}

QString RenderCache::faultOf(int page) const
{
    return m_faults.value(page);
}

void RenderCache::clear()
{
    m_tiles.clear();
    m_whole.clear();
    m_faults.clear();
}

qint64 RenderCache::bytes() const
{
    return qint64(m_tiles.totalCost()) << 10;
}

qint64 RenderCache::bound() const
{
    return qint64(m_tiles.maxCost()) << 10;
}

} // namespace reader
