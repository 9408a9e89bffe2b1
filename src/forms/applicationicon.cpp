// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/applicationicon.h"

#include <QFileInfo>
#include <QPainter>

namespace {

// Icons that fill a square: names beside them in a list stand in one line.
QIcon squared(const QIcon& icon)
{
    if (icon.isNull())
        return icon;
    QIcon all;
    for (const int side : {16, 32, 48}) {
        QPixmap square(side, side);
        square.fill(Qt::transparent);
        QPainter painter(&square);
        icon.paint(&painter, square.rect());
        all.addPixmap(square);
    }
    return all;
}

QIcon foundIcon(const QString& name)
{
    constexpr qint64 kMostBytes = 1 << 20; // the file comes from anywhere
    if (name.isEmpty())
        return {};
    const auto fromFile = [](const QString& path) {
        const QFileInfo info(path);
        const bool picture = QStringList{"png", "svg", "xpm"}.contains(info.suffix().toLower());
        return picture && info.isFile() && info.size() <= kMostBytes ? QIcon(path) : QIcon();
    };
    if (name.startsWith(QLatin1Char('/')))
        return fromFile(name);
    if (name.contains(QLatin1Char('/')))
        return {};
    const QIcon themed = QIcon::fromTheme(name);
    if (!themed.isNull())
        return themed;
    const QString pixmaps = QStringLiteral("/usr/share/pixmaps/") + name;
    for (const QString& end :
         {QString(), QStringLiteral(".png"), QStringLiteral(".svg"), QStringLiteral(".xpm")}) {
        const QIcon icon = fromFile(pixmaps + end);
        if (!icon.isNull())
            return icon;
    }
    return {};
}

} // namespace

QIcon applicationIcon(const QString& name)
{
    return squared(foundIcon(name));
}
