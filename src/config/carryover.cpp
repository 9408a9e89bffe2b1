// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/carryover.h"

#include "config/leftovers.h"
#include "config/paths.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

int carryOverPages()
{
    const QString prefix = paths::pagePrefix() + QStringLiteral("-0000-");
    QDir folder(paths::tempFolder());
    const QString parts = QFileInfo(paths::pagePrefix()).fileName() + QStringLiteral("*.part");
    for (const QString& part : folder.entryList({parts}, QDir::Files))
        folder.remove(part);

    const auto numberOf = [](const QString& page) {
        return QFileInfo(page).completeBaseName().right(4).toInt();
    };
    int offset = 0; // highest number that an earlier cancelled batch left
    QStringList fresh;
    for (const QString& page : pageFiles()) {
        if (page.startsWith(prefix))
            offset = qMax(offset, numberOf(page));
        else
            fresh << page;
    }
    offset += offset % 2; // odd numbers stay fronts
    for (const QString& page : fresh) {
        const QString target =
            QStringLiteral("%1%2.pnm").arg(prefix).arg(offset + numberOf(page), 4, 10, QLatin1Char('0'));
        if (!QFile::rename(page, target))
            qWarning().noquote() << "cannot rename" << page << "to" << target;
    }
    return pageFiles().size();
}
