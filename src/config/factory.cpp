// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"

#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "config/templates.h"

#include <QDebug>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <algorithm>

namespace {

void writeFactoryFile(QSettings& settings)
{
    for (const char* group : {groups::topLevel, groups::scanScan}) {
        const GroupScope scope(settings, group);
        for (const Setting& setting : table(group).settings) {
            if (setting.inFactoryFile)
                settings.setValue(setting.key, setting.factory);
        }
    }
    settings.remove(groups::scanApp);
    settings.remove(QString(groups::scanApp) + "_exec");
}

// The naming keys of "Scan_Scan" have no entry in the factory file but are wanted at the first start.
void writeNamingValues(QSettings& settings)
{
    const GroupScope scope(settings, groups::scanScan);
    const auto& all = table(groups::scanScan).settings;
    const auto isFirst = [](const Setting& s) { return qstrcmp(s.key, keys::dateAndtime) == 0; };
    for (auto it = std::find_if(all.begin(), all.end(), isFirst); it != all.end(); ++it)
        settings.setValue(it->key, it->factory);
}

// Only the factory file writes the description line, and always.
bool wasCompleted(const QSettings& settings)
{
    return settings.contains(keys::scanDescirbe);
}

// What the first start writes.
void writeAllFactoryValues(QSettings& settings)
{
    for (const SettingTable& group : settingTables()) {
        if (!group.inPathFile && !group.group.isEmpty() && group.group != QLatin1String(groups::scanScan))
            writeFactoryValues(settings, group);
    }
    writeFactoryFile(settings);
    writeNamingValues(settings);
    settings.setValue(keys::ScanModel, 0);
    settings.setValue(keys::FileModel, 0);
}

bool firstStart()
{
    const auto settings = openMainSettings();
    if (wasCompleted(*settings))
        return true;
    qInfo() << "first start: writing the factory settings";
    QHash<QString, QVariant> present;
    for (const QString& key : settings->allKeys())
        present.insert(key, settings->value(key));
    writeAllFactoryValues(*settings);
    for (auto it = present.cbegin(); it != present.cend(); ++it)
        settings->setValue(it.key(), it.value());
    return saveSettings(*settings);
}

void completePaths(QSettings& settings)
{
    for (const SettingTable& group : settingTables()) {
        if (!group.inPathFile)
            continue;
        const GroupScope scope(settings, group.group);
        for (const Setting& setting : group.settings) {
            if (!settings.contains(setting.key))
                settings.setValue(setting.key, setting.factory);
        }
    }
}

} // namespace

bool writeFactorySettings(const QString& mainFile, const QString& pathFile)
{
    const auto main = openSettings(mainFile);
    const auto path = openSettings(pathFile);
    main->clear();
    path->clear();
    writeAllFactoryValues(*main);
    completePaths(*path);
    return saveSettings(*main) && saveSettings(*path);
}

bool initializeIni()
{
    const auto settings = openMainSettings();
    writeFactoryFile(*settings);
    return saveSettings(*settings);
}

bool ensureFactorySettings()
{
    bool good = firstStart();
    const auto path = openPathSettings();
    completePaths(*path);
    good = saveSettings(*path) && good;
    if (!templateComplete(defaultTemplate))
        good = storeTemplate(defaultTemplate) && good;
    return good;
}

bool restoreDefaultTemplate()
{
    const QTemporaryDir folder;
    const QStringList files{folder.filePath(QStringLiteral("main")), folder.filePath(QStringLiteral("path"))};
    if (!writeFactorySettings(files[0], files[1]))
        return false;
    QByteArray contents[2];
    for (int i = 0; i < 2; ++i) {
        QFile file(files[i]);
        if (file.open(QIODevice::ReadOnly))
            contents[i] = file.readAll();
    }
    return putTemplate(QLatin1String(defaultTemplate), contents[0], contents[1]);
}
