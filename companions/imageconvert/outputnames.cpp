// SPDX-License-Identifier: GPL-3.0-or-later
#include "outputnames.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>

namespace companion {

namespace {

// The one name of a directory entry, however its folder is written. The entry itself need not exist.
QString entryOf(const QString& path)
{
    const QFileInfo info(path);
    const QString folder = QFileInfo(info.path()).canonicalFilePath();
    return (folder.isEmpty() ? info.absolutePath() : folder) + QLatin1Char('/') + info.fileName();
}

// An input is protected under the name that was given and under the one that a link leads to.
QSet<QString> inputEntries(const Request& request)
{
    QSet<QString> entries;
    for (const QString& file : request.files) {
        entries << entryOf(file);
        const QString target = QFileInfo(file).canonicalFilePath();
        if (!target.isEmpty())
            entries << target;
    }
    return entries;
}

QString baseNameOf(const QString& file)
{
    const QFileInfo info(file);
    return info.completeBaseName().isEmpty() ? info.fileName() : info.completeBaseName();
}

} // namespace

QStringList outputFiles(const Request& request, const QString& name)
{
    const QString start = QDir(request.outFolder).filePath(name);
    const QString end = QLatin1Char('.') + request.type;
    if (!request.split)
        return {start + end};
    QStringList files;
    for (int piece = 1; piece <= request.split->count; ++piece)
        files << start + QLatin1Char('-') + QString::number(piece) + end;
    return files;
}

std::vector<PlannedPage> planPages(const Request& request)
{
    QSet<QString> taken = inputEntries(request);
    if (!request.reportFile.isEmpty())
        taken << entryOf(request.reportFile);
    const auto isFree = [&](const QString& name) {
        for (const QString& file : outputFiles(request, name))
            if (taken.contains(entryOf(file)))
                return false;
        return true;
    };

    std::vector<PlannedPage> pages;
    QHash<QString, int> lastNumber;
    const int step = request.append ? 2 : 1;
    for (int i = 0; i + step <= request.files.size(); i += step) {
        const QString base = baseNameOf(request.files[i]);
        int& number = lastNumber[base]; // many pages of one name stay quick
        QString name = base;
        while (!isFree(name)) {
            number = number == 0 ? 2 : number + 1;
            name = base + QLatin1Char('_') + QString::number(number);
        }
        for (const QString& file : outputFiles(request, name))
            taken << entryOf(file);
        pages.push_back({request.files[i], step == 2 ? request.files[i + 1] : QString(), name});
    }
    return pages;
}

bool reportHitsInput(const Request& request)
{
    return !request.reportFile.isEmpty() && inputEntries(request).contains(entryOf(request.reportFile));
}

} // namespace companion
