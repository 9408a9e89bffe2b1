// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/settingscompare.h"

#include "config/settingtable.h"

#include <cstring>

namespace {

bool isKey(const Setting& setting, const char* key)
{
    return std::strcmp(setting.key, key) == 0;
}

// One process writes numbers and reads texts: both sides as text, lists (a text with commas) joined.
QString textOf(const QSettings& settings, const QString& key)
{
    const QVariant value = settings.value(key);
    return value.type() == QVariant::StringList ? value.toStringList().join(QLatin1Char(','))
                                                : value.toString();
}

// In the functions' groups the naming rules come last; what stands before them has a control.
bool sameGroup(const SettingTable& table, const QSettings& one, const QSettings& other)
{
    bool hasControls = table.find(keys::scanType) != nullptr;
    for (const Setting& setting : table.settings) {
        if (isKey(setting, keys::dateAndtime))
            hasControls = false;
        const QString key = table.group + QLatin1Char('/') + QLatin1String(setting.key);
        if (hasControls || isKey(setting, keys::start) || !one.contains(key) || !other.contains(key))
            continue;
        if (textOf(one, key) != textOf(other, key))
            return false;
    }
    return true;
}

} // namespace

bool sameBehindTheDialogs(const QSettings& main, const QSettings& path, const QSettings& otherMain,
                          const QSettings& otherPath)
{
    for (const SettingTable& table : settingTables()) {
        if (table.group.isEmpty()) // the window's own state
            continue;
        if (!sameGroup(table, table.inPathFile ? path : main, table.inPathFile ? otherPath : otherMain))
            return false;
    }
    return true;
}
