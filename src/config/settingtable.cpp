// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/settingtable.h"

#include <QDebug>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

namespace {

// Path of a key for the log.
QString fullName(const QSettings& settings, const char* key)
{
    const QString group = settings.group();
    return group.isEmpty() ? QString(key) : group + QLatin1Char('/') + key;
}

// What the file holds as text. A hand-written "a, b" without quotes comes as a list.
std::optional<QString> storedText(const QVariant& value)
{
    if (value.type() == QVariant::StringList)
        return value.toStringList().join(QLatin1Char(','));
    if (!value.canConvert<QString>())
        return std::nullopt;
    return value.toString();
}

std::optional<bool> parseBool(const QString& text)
{
    const QString word = text.trimmed().toLower();
    if (word == QLatin1String("true") || word == QLatin1String("1"))
        return true;
    if (word == QLatin1String("false") || word == QLatin1String("0"))
        return false;
    return std::nullopt;
}

// The value with its proper type, or an invalid variant.
QVariant parse(const QString& text, const Setting& setting)
{
    bool good = false;
    QVariant value;
    double number = 0;
    switch (setting.type) {
    case SettingType::Text:
        return text;
    case SettingType::Bool: {
        const auto on = parseBool(text);
        return on ? QVariant(*on) : QVariant();
    }
    case SettingType::Int:
        value = text.trimmed().toInt(&good);
        number = value.toInt();
        break;
    case SettingType::Double:
        value = number = text.trimmed().toDouble(&good);
        break;
    }
    const bool inRange = std::isfinite(number) && number >= setting.min && number <= setting.max;
    return good && inRange ? value : QVariant();
}

QVariant nothing(SettingType type)
{
    switch (type) {
    case SettingType::Bool:
        return false;
    case SettingType::Int:
        return 0;
    case SettingType::Double:
        return 0.0;
    case SettingType::Text:
        break;
    }
    return QString();
}

QVariant read(const QSettings& settings, const char* key, SettingType type)
{
    const Setting* setting = table(settings.group()).find(key);
    if (setting && setting->type == type)
        return readSetting(settings, *setting);
    if (setting)
        qWarning().noquote() << "setting" << fullName(settings, key) << "is asked for with another type";
    else
        qWarning().noquote() << "setting" << fullName(settings, key) << "stands in no table";
    Setting loose;
    loose.key = key;
    loose.type = type;
    loose.factory = nothing(type);
    return readSetting(settings, loose);
}

} // namespace

const Setting* SettingTable::find(const char* key) const
{
    const auto found = std::find_if(settings.begin(), settings.end(),
                                    [key](const Setting& s) { return std::strcmp(s.key, key) == 0; });
    return found == settings.end() ? nullptr : &*found;
}

const SettingTable& table(const QString& group)
{
    static const SettingTable none;
    const auto& all = settingTables();
    const auto found =
        std::find_if(all.begin(), all.end(), [&group](const SettingTable& t) { return t.group == group; });
    return found == all.end() ? none : *found;
}

QVariant readSetting(const QSettings& settings, const Setting& setting)
{
    const QVariant stored = settings.value(setting.key);
    if (!stored.isValid())
        return nothing(setting.type);
    const auto text = storedText(stored);
    const QVariant value = text ? parse(*text, setting) : QVariant();
    if (value.isValid())
        return value;
    qWarning().noquote() << "setting" << fullName(settings, setting.key) << "has the bad value"
                         << (text ? '"' + text->left(80) + '"' : QString(stored.typeName())) << "- using"
                         << setting.factory.toString();
    return setting.factory;
}

bool readBool(const QSettings& settings, const char* key)
{
    return read(settings, key, SettingType::Bool).toBool();
}

int readInt(const QSettings& settings, const char* key)
{
    return read(settings, key, SettingType::Int).toInt();
}

double readDouble(const QSettings& settings, const char* key)
{
    return read(settings, key, SettingType::Double).toDouble();
}

QString readText(const QSettings& settings, const char* key)
{
    return read(settings, key, SettingType::Text).toString();
}

GroupScope::GroupScope(QSettings& settings, const QString& group)
    : m_settings(settings), m_begun(!group.isEmpty())
{
    if (m_begun)
        m_settings.beginGroup(group);
}

GroupScope::~GroupScope()
{
    if (m_begun)
        m_settings.endGroup();
}

void writeFactoryValues(QSettings& settings, const SettingTable& table)
{
    const GroupScope scope(settings, table.group);
    for (const Setting& setting : table.settings)
        settings.setValue(setting.key, setting.factory);
}
