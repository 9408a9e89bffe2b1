// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/applicationlist.h"

#include "config/settingtable.h"

#include <algorithm>
#include <limits>

namespace {

int deletions = 0;

QString commandGroup(const QString& group)
{
    return group + QLatin1String("_exec");
}

QString iconGroup(const QString& group)
{
    return group + QLatin1String("_icon");
}

// Position of a key; keys that are no number come last.
qulonglong position(const QString& key)
{
    bool good = false;
    const qulonglong number = key.toULongLong(&good);
    return good ? number : std::numeric_limits<qulonglong>::max();
}

QString textOf(const QSettings& settings, const QString& key)
{
    const QVariant value = settings.value(key);
    // a hand-written text with commas and without quotes comes as a list
    return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(','))
                                                : value.toString();
}

} // namespace

std::vector<AppEntry> readApplications(QSettings& settings, const QString& group)
{
    std::vector<AppEntry> list;
    QStringList names;
    {
        const GroupScope scope(settings, group);
        names = settings.childKeys();
        std::stable_sort(names.begin(), names.end(),
                         [](const QString& a, const QString& b) { return position(a) < position(b); });
        for (const QString& name : names)
            list.push_back({textOf(settings, name), QString()});
    }
    const auto readColumn = [&](const QString& columnGroup, QString AppEntry::*column) {
        const GroupScope scope(settings, columnGroup);
        for (int i = 0; i < names.size(); ++i)
            list[std::size_t(i)].*column = textOf(settings, names[i]);
    };
    readColumn(commandGroup(group), &AppEntry::command);
    readColumn(iconGroup(group), &AppEntry::icon);
    return list;
}

void writeApplications(QSettings& settings, const QString& group, const std::vector<AppEntry>& list)
{
    const int stale = int(list.size()) + 2 * deletions;
    for (const QString& name : {group, commandGroup(group), iconGroup(group)}) {
        const GroupScope scope(settings, name);
        for (int i = 0; i < stale; ++i)
            settings.remove(QString::number(i));
    }
    for (std::size_t i = 0; i < list.size(); ++i) {
        const QString key = QLatin1Char('/') + QString::number(i);
        settings.setValue(group + key, list[i].text);
        if (!list[i].command.isEmpty())
            settings.setValue(commandGroup(group) + key, list[i].command);
        if (!list[i].icon.isEmpty())
            settings.setValue(iconGroup(group) + key, list[i].icon);
    }
}

void countDeletedApplication()
{
    ++deletions;
}

int deletedApplications()
{
    return deletions;
}

QString applicationCommand(const std::vector<AppEntry>& list, const QString& text)
{
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const AppEntry& e) { return e.text == text; });
    return found == list.end() ? QString() : found->command;
}
