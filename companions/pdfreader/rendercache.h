// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QHash>
#include <QImage>
#include <QMetaType>
#include <QRect>
#include <QVector>

namespace reader {

// A part of a page at one size, in pixels of the screen (not logical ones).
struct TileKey
{
    int page = 0;
    QSize size; // of the whole page
    QRect area; // the part

    qint64 bytes() const { return 4LL * area.width() * area.height(); } // of the picture
    bool isWhole() const { return area.size() == size; }
    bool operator==(const TileKey& other) const
    {
        return page == other.page && size == other.size && area == other.area;
    }
};
uint qHash(const TileKey& key, uint seed = 0);

// The parts of a page that together cover what is seen of it: the page itself, or squares of a large one,
// because its picture would not fit.
QVector<TileKey> tilesOf(int page, QSize size, const QRect& seen);

struct Tile
{
    QImage image;  // null: the page cannot be shown
    QString fault; // for the user; empty when all is well
};

// Rendered tiles up to a bound of memory; the ones that were not used for longest go first. GUI thread.
class RenderCache
{
public:
    RenderCache();

    void setSeen(qint64 bytes); // of the tiles that are seen now; the bound is raised when they need more
    void insert(const TileKey& key, const Tile& tile);
    const Tile* find(const TileKey& key) const;
    const Tile* standIn(int page) const; // the whole page at another size; null when there is none
    QString faultOf(int page) const;
    void clear();

    qint64 bytes() const; // at most bound()
    qint64 bound() const;

    static constexpr qint64 kLeastBound = 128LL << 20;

private:
    QCache<TileKey, Tile> m_tiles; // cost: KiB
    QHash<int, TileKey> m_whole;
    QHash<int, QString> m_faults;
};

} // namespace reader

Q_DECLARE_METATYPE(reader::TileKey)
