// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/leftovers.h"

#include "config/installroot.h"
#include "config/keys.h"
#include "config/ofdparts.h"
#include "config/paths.h"
#include "config/settingsfile.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <cerrno>
#include <csignal>
#include <unistd.h>

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

bool isGone(const QString& process)
{
    return kill(process.toInt(), 0) != 0 && errno == ESRCH;
}

bool isOwn(const QFileInfo& file)
{
    return file.ownerId() == geteuid() && !file.isSymLink();
}

void removeHalfFiles(const QString& folder)
{
    static const QRegularExpression name(QStringLiteral("^\\.page-([1-9][0-9]{0,8})-[0-9]+\\.part$"));
    const auto files =
        QDir(folder).entryInfoList({QStringLiteral(".page-*.part")}, QDir::Files | QDir::Hidden);
    for (const QFileInfo& file : files) {
        const QRegularExpressionMatch match = name.match(file.fileName());
        if (match.hasMatch() && isOwn(file) && isGone(match.captured(1)))
            QFile::remove(file.filePath());
    }
}

QStringList saveFolders()
{
    const auto settings = openPathSettings();
    QStringList folders{defaultSaveFolder()};
    for (const QString& key : settings->allKeys()) {
        if (key.endsWith(QLatin1Char('/') + QLatin1String(keys::savepath)))
            folders << settings->value(key).toString();
    }
    folders.removeAll(QString());
    folders.removeDuplicates();
    return folders;
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

void sweepAbandonedFiles()
{
    removeHalfFiles(paths::tempFolder());
    const QDir temp(paths::tempFolder());
    for (const QFileInfo& folder : temp.entryInfoList({QStringLiteral("searchable-*")}, QDir::Dirs)) {
        if (isOwn(folder))
            QDir(folder.filePath()).removeRecursively();
    }
    for (const QString& folder : saveFolders()) {
        removeHalfFiles(folder);
        const QFileInfo mark(QDir(folder).filePath(QLatin1String(ofdparts::kMark)));
        if (mark.isFile() && isOwn(mark))
            removeOfdParts(folder + QLatin1Char('/'));
    }
}

void removeOfdParts(const QString& folder)
{
    const QString entry = folder + ofdparts::kEntry;
    const bool entryGone = !QFileInfo::exists(entry) || QFile::remove(entry);
    const QString tree = folder + ofdparts::kTree;
    const bool treeGone = !QFileInfo(tree).isSymLink() && QDir(tree).removeRecursively();
    if (entryGone && treeGone) // else the rest stays marked
        QFile::remove(folder + ofdparts::kMark);
}
