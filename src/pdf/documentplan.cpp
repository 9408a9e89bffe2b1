// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/documentplan.h"

#include "config/paths.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace {

QStringList stalePages()
{
    const QStringList patterns{QStringLiteral("page-*.jpg"), QStringLiteral("page-*.png"),
                               QStringLiteral("turned-*.bmp")};
    return QDir(paths::tempFolder()).entryList(patterns, QDir::Files | QDir::NoSymLinks);
}

} // namespace

const char* documentType(int formatIndex)
{
    switch (static_cast<DocumentFormat>(formatIndex)) {
    case DocumentFormat::Pdf:
    case DocumentFormat::SearchablePdf:
        return "pdf";
    case DocumentFormat::Ofd:
    case DocumentFormat::SearchableOfd:
        return "ofd";
    }
    return nullptr;
}

bool isSearchable(int formatIndex)
{
    return formatIndex >= static_cast<int>(DocumentFormat::SearchablePdf);
}

QVector<QVector<DocumentPage>> groupPages(const QVector<DocumentPage>& pages, bool split, int splitCount)
{
    constexpr int kDefaultChunk = 2;
    if (pages.isEmpty())
        return {};
    if (!split || splitCount >= pages.size())
        return {pages};
    const int chunk = splitCount > 0 ? splitCount : kDefaultChunk;
    QVector<QVector<DocumentPage>> documents;
    for (int first = 0; first < pages.size(); first += chunk)
        documents << pages.mid(first, chunk);
    return documents;
}

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

DocumentNames::DocumentNames(const QString& group) : m_group(group)
{
    const auto settings = openMainSettings();
    const GroupScope scope(*settings, group);
    m_rules = readNamingRules(*settings);
}

QString DocumentNames::baseName(int index) const
{
    if (!m_rules.userDefined)
        return takeImageName(m_group, false);
    NamingRules rules = m_rules;
    rules.stamp = false;
    rules.start = counterAfter(m_rules.start, index);
    return imageName(rules, {}, false);
}

QString DocumentNames::next(int index, const QString& folder, const QString& type)
{
    const QString wanted = safeBaseName(baseName(index));
    const auto pathOf = [&](const QString& name) {
        return folder + QLatin1Char('/') + name + QLatin1Char('.') + type;
    };
    const bool mayReplace = m_rules.cover && !m_used.contains(pathOf(wanted));
    QString name = freeBaseName(folder, wanted, type, mayReplace);
    // The document before may have failed, so that its name looks free.
    for (int n = 1; m_used.contains(pathOf(name)); ++n)
        name = freeBaseName(folder, wanted + QLatin1Char('-') + QString::number(n), type, false);
    m_used.insert(pathOf(name));
    return name;
}

void DocumentNames::advance(int documents) const
{
    if (!m_rules.userDefined || documents == 0)
        return;
    const auto settings = openMainSettings();
    const GroupScope scope(*settings, m_group);
    settings->setValue(keys::start, counterAfter(m_rules.start, documents));
    saveSettings(*settings);
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
