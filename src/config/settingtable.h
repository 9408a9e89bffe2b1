// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSettings>
#include <QVariant>
#include <limits>
#include <vector>

#include "config/keys.h"

enum class SettingType
{
    Bool, // "true" or "false" in the file
    Int,
    Double,
    Text,
};

struct Setting
{
    const char* key;
    SettingType type;
    QVariant factory;
    // Allowed numbers, both ends included. A combo index has no upper end here: the control that shows it
    // selects its last item for an index beyond its items.
    double min = std::numeric_limits<double>::lowest();
    double max = std::numeric_limits<double>::max();
    bool inFactoryFile = true; // written by initializeIni() when its group is
};

// One INI group: its keys in the order in which they are documented and written.
struct SettingTable
{
    QString group; // empty: top level
    bool inPathFile = false;
    std::vector<Setting> settings;

    const Setting* find(const char* key) const; // null: no such key
};

// All groups with a fixed set of keys (the application lists have none: applicationlist.h).
const std::vector<SettingTable>& settingTables();
// The table of a group; an empty one for a group that has none.
const SettingTable& table(const QString& group);

// Reading, relative to the group that is begun in `settings`. A missing key reads as 0, false or empty; a
// value of the wrong type or out of range reads as the key's factory value and is logged with group and key.
QVariant readSetting(const QSettings& settings, const Setting& setting);
// The same for a key of the table of the group that is begun. A key that the table lacks is logged and reads
// by the asked type without limits.
bool readBool(const QSettings& settings, const char* key);
int readInt(const QSettings& settings, const char* key);
double readDouble(const QSettings& settings, const char* key);
QString readText(const QSettings& settings, const char* key);

// Begins a group for the life of the object.
class GroupScope
{
public:
    GroupScope(QSettings& settings, const QString& group);
    ~GroupScope();
    GroupScope(const GroupScope&) = delete;
    GroupScope& operator=(const GroupScope&) = delete;

private:
    QSettings& m_settings;
    bool m_begun;
};

// Writes the factory values of one group (nothing is begun in `settings`).
void writeFactoryValues(QSettings& settings, const SettingTable& table);
