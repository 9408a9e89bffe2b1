// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/documentpages.h"

#include "config/paths.h"
#include "imaging/backgroundrun.h"
#include "output/naming.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QStringList stalePages()
{
    const QStringList patterns{QStringLiteral("page-*.jpg"), QStringLiteral("page-*.png"),
                               QStringLiteral("turned-*.bmp")};
    return QDir(paths::tempFolder()).entryList(patterns, QDir::Files | QDir::NoSymLinks);
}

} // namespace

QStringList filesOf(const QVector<DocumentPage>& pages)
{
    QStringList files;
    for (const DocumentPage& page : pages)
        files << page.file;
    return files;
}

QStringList sourcesOf(const QVector<DocumentPage>& pages)
{
    QStringList sources;
    for (const DocumentPage& page : pages)
        sources << page.sources;
    return sources;
}

QStringList scansOf(const QVector<DocumentPage>& pages, const QStringList& files)
{
    QStringList scans;
    bool wanted = false; // pages of one source share the entry at the last of them
    for (const DocumentPage& page : pages) {
        wanted = wanted || files.contains(page.file);
        if (page.sources.isEmpty())
            continue;
        if (wanted)
            scans << page.sources;
        wanted = false;
    }
    return scans;
}

QString keepFailedPages(const QStringList& files, const QString& baseName)
{
    const QString wanted = paths::tempFolder() + QStringLiteral("failed-") + safeBaseName(baseName, 200);
    QString folder = wanted;
    for (int n = 1; QFileInfo::exists(folder); ++n)
        folder = wanted + QLatin1Char('-') + QString::number(n);
    if (!QDir().mkpath(folder)) {
        qWarning().noquote() << "cannot make" << folder;
        return QDir::cleanPath(paths::tempFolder());
    }
    for (const QString& file : files) {
        if (!QFile::rename(file, folder + QLatin1Char('/') + QFileInfo(file).fileName()))
            qWarning().noquote() << "cannot move" << file << "to" << folder;
    }
    return folder;
}

void removeFiles(const QStringList& files)
{
    if (files.isEmpty())
        return;
    runWithEvents([&] {
        for (const QString& file : files)
            QFile::remove(file);
    });
}

void removeStalePages()
{
    QDir folder(paths::tempFolder());
    for (const QString& name : stalePages())
        folder.remove(name);
}

QString pageBaseName(int number)
{
    return QStringLiteral("page-%1").arg(number, 4, 10, QLatin1Char('0'));
}
