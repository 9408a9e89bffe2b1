// SPDX-License-Identifier: GPL-3.0-or-later
#include "output/naming.h"

#include "config/settingsfile.h"
#include "config/settingtable.h"

#include <QDebug>
#include <QFileInfo>
#include <QLocale>
#include <QStringList>
#include <limits>
#include <optional>

namespace {

std::optional<qlonglong> counterValue(const QString& start)
{
    bool good = false;
    const qlonglong value = start.trimmed().toLongLong(&good);
    if (!good || value > std::numeric_limits<qlonglong>::max() - std::numeric_limits<int>::max())
        return std::nullopt;
    return value;
}

QString systemStamp(const QDateTime& now)
{
    return QLocale::c().toString(now, QStringLiteral("yyyy-MM-dd-hh:mm:ss")) + QLatin1Char('-') +
           QString::number(now.time().msec());
}

QString userStamp(const NamingRules& rules, const QDateTime& now)
{
    const int dateFields[] = {now.date().year(), now.date().month(), now.date().day()};
    const QTime time = now.time();
    QStringList fields;
    for (const int field : rules.order)
        fields += QString::number(dateFields[qBound(0, field, 2)]);
    const int hour12 = time.hour() % 12 == 0 ? 12 : time.hour() % 12;
    fields += QString::number(rules.hours24 ? time.hour() : hour12);
    fields += QString::number(time.minute());
    fields += QString::number(time.second());
    if (!rules.hours24)
        fields.last() += QLatin1String(time.hour() < 12 ? "AM" : "PM");
    static const QString separators[] = {QString(), QStringLiteral("-"), QStringLiteral(".")};
    // the millisecond is joined by "-" whatever the separator
    return fields.join(separators[qBound(0, rules.separator, 2)]) + QLatin1Char('-') +
           QString::number(time.msec());
}

// The counter as it stands, or padded with zeros when it is a number.
QString paddedCounter(const NamingRules& rules)
{
    const auto value = counterValue(rules.start);
    return value && *value >= 0 ? rules.start.trimmed().rightJustified(rules.digits, QLatin1Char('0'))
                                : rules.start;
}

// `text` without its last characters, so that it has at most `maxBytes` bytes of UTF-8.
QString cutToBytes(QString text, int maxBytes)
{
    while (text.toUtf8().size() > maxBytes) {
        const int over = text.toUtf8().size() - maxBytes;
        text.chop(qMax(1, over / 4)); // a UTF-16 unit has at most three bytes: never too much
        if (!text.isEmpty() && text.at(text.size() - 1).isHighSurrogate())
            text.chop(1);
    }
    return text;
}

} // namespace

NamingRules readNamingRules(const QSettings& group)
{
    NamingRules rules;
    rules.stamp = readBool(group, keys::dateAndtime);
    rules.systemStamp = readBool(group, keys::system);
    rules.order[0] = readInt(group, keys::year);
    rules.order[1] = readInt(group, keys::month);
    rules.order[2] = readInt(group, keys::date);
    rules.separator = readInt(group, keys::separator);
    rules.hours24 = !group.contains(keys::timeType) || readBool(group, keys::timeType);
    rules.userDefined = readBool(group, keys::usrDefine);
    rules.prefix = readText(group, keys::name);
    rules.start = readText(group, keys::start);
    rules.digits = readInt(group, keys::length);
    rules.cover = readBool(group, keys::cover);
    rules.askBefore = readBool(group, keys::messgBox);
    rules.askAfter = readBool(group, keys::showConfirmBox);
    rules.finishStartApp = readBool(group, keys::finishStarApp);
    rules.appName = readText(group, keys::appName);
    return rules;
}

QString imageName(const NamingRules& rules, const QDateTime& now, bool preview)
{
    QString name;
    if (rules.stamp)
        name += rules.systemStamp ? systemStamp(now) : userStamp(rules, now);
    if (rules.userDefined) {
        name += rules.prefix + paddedCounter(rules);
        if (preview)
            name += systemStamp(now);
    }
    return name;
}

QString counterAfter(const QString& start, int names)
{
    return QString::number(counterValue(start).value_or(0) + names);
}

QString nextCounter(const QString& start)
{
    return counterAfter(start, 1);
}

QString takeImageName(const QString& group, bool preview, const QDateTime& now)
{
    const auto settings = openMainSettings();
    const GroupScope scope(*settings, group);
    const NamingRules rules = readNamingRules(*settings);
    if (rules.userDefined && !preview) {
        settings->setValue(keys::start, nextCounter(rules.start));
        // without the stored counter names repeat; the free suffix still keeps every file
        saveSettings(*settings);
    }
    return imageName(rules, now, preview);
}

QString safeBaseName(const QString& base, int maxBytes)
{
    QString name = base;
    for (QChar& c : name) {
        if (c == QLatin1Char('/') || c.category() == QChar::Other_Control)
            c = QLatin1Char('_');
    }
    if (name.trimmed().isEmpty())
        name = QStringLiteral("image");
    return cutToBytes(name, maxBytes);
}

QString freeBaseName(const QString& folder, const QString& base, const QString& typeWord, bool cover)
{
    constexpr int maxBytes = 240;
    const QString wanted = safeBaseName(base, maxBytes);
    const auto taken = [&](const QString& name) {
        const QFileInfo file(folder + QLatin1Char('/') + name + QLatin1Char('.') + typeWord);
        return file.exists() || file.isSymLink();
    };
    QString name = wanted;
    for (int n = 1; !cover && taken(name); ++n) {
        const QString suffix = QLatin1Char('-') + QString::number(n);
        name = cutToBytes(wanted, maxBytes - suffix.size()) + suffix;
    }
    return name;
}
