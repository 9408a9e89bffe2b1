// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/leftovers.h"

#include "config/paths.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QStringList tempFiles(const QStringList& patterns)
{
    const QDir folder(paths::tempFolder());
    QStringList files;
    for (const QString& name : folder.entryList(patterns, QDir::Files | QDir::NoSymLinks, QDir::Name))
        files += folder.filePath(name);
    return files;
}

QStringList leftovers()
{
    return tempFiles({"zarnqwd*.pnm", "*.part", "crop*.bmp"});
}

// A new folder for this moment, ending in "/"; empty when it cannot be made.
QString makeKeptFolder(const QDateTime& now)
{
    const QString base = paths::keptFolder() + now.toString("yyyyMMdd-hhmmss");
    QString path = base;
    for (int n = 1; QFile::exists(path); ++n)
        path = base + QLatin1Char('-') + QString::number(n);
    if (QDir().mkpath(path))
        return path + QLatin1Char('/');
    qWarning().noquote() << "cannot make the folder" << path << "for the pages of an interrupted batch";
    return {};
}

} // namespace

QStringList pageFiles()
{
    return tempFiles({"zarnqwd*.pnm"});
}

QString keepLeftovers(const QDateTime& now)
{
    const QStringList files = leftovers();
    const QString folder = files.isEmpty() ? QString() : makeKeptFolder(now);
    if (folder.isEmpty())
        return {};
    for (const QString& file : files) {
        if (!QFile::rename(file, folder + QFileInfo(file).fileName()))
            qWarning().noquote() << "cannot move" << file << "to" << folder;
    }
    return QDir().rmdir(folder) ? QString() : folder; // only an empty one goes
}

void clearTempTexts()
{
    const QDir folder(paths::tempTextFolder());
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QFileInfo& entry : folder.entryInfoList(everything)) {
        const bool isFolder = entry.isDir() && !entry.isSymLink();
        const QString path = entry.filePath();
        if (!(isFolder ? QDir(path).removeRecursively() : QFile::remove(path)))
            qWarning().noquote() << "cannot remove" << path;
    }
}
