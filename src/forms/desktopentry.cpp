// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/desktopentry.h"

#include "forms/commandline.h"
#include "forms/dialogparts.h"
#include "imageconvert/launcher.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <algorithm>

namespace {

using Values = QHash<QString, QString>;

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(DesktopEntry)
};

QString unescaped(const QString& value)
{
    QString out;
    for (int i = 0; i < value.size(); ++i) {
        if (value[i] != QLatin1Char('\\') || i + 1 == value.size()) {
            out += value[i];
            continue;
        }
        switch (value[++i].toLatin1()) {
        case 's':
            out += QLatin1Char(' ');
            break;
        case 'n':
            out += QLatin1Char('\n');
            break;
        case 't':
            out += QLatin1Char('\t');
            break;
        case 'r':
            out += QLatin1Char('\r');
            break;
        case '\\':
            out += QLatin1Char('\\');
            break;
        default: // not ours: a quoting rule's
            out += QLatin1Char('\\');
            out += value[i];
        }
    }
    return out;
}

// The keys of the first group, which has to be this one.
Values readGroup(const QByteArray& content)
{
    Values values;
    bool inGroup = false;
    for (const QByteArray& raw : content.split('\n')) {
        const QString line = QString::fromUtf8(raw).trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            if (inGroup)
                break;
            inGroup = line == QLatin1String("[Desktop Entry]");
            continue;
        }
        const int equals = line.indexOf(QLatin1Char('='));
        if (!inGroup || equals <= 0 || line.startsWith(QLatin1Char('#')))
            continue;
        const QString key = line.left(equals).trimmed();
        if (!values.contains(key)) // the first one counts
            values.insert(key, unescaped(line.mid(equals + 1).trimmed()));
    }
    return values;
}

QString localised(const Values& values, const QString& key)
{
    const QString wanted = QLocale().name(); // "zh_CN"
    QStringList locales{wanted, wanted.section(QLatin1Char('_'), 0, 0)};
    if (QLocale().language() == QLocale::Chinese || QLocale().language() == QLocale::C)
        locales << QStringLiteral("zh_CN") << QStringLiteral("zh");
    for (const QString& locale : qAsConst(locales)) {
        const QString value = values.value(key + QLatin1Char('[') + locale + QLatin1Char(']'));
        if (!value.isEmpty())
            return value;
    }
    return values.value(key);
}

bool isOn(const Values& values, const char* key)
{
    return values.value(QLatin1String(key)) == QLatin1String("true");
}

bool hasReserved(const QString& word)
{
    return std::any_of(word.begin(), word.end(),
                       [](QChar c) { return QStringLiteral("'\\><~|&;$*?#()`").contains(c); });
}

// An unquoted argument with its codes replaced, as words of a stored line; false: a code that nobody knows.
bool expand(const QString& argument, const DesktopEntry& entry, const QString& file, QStringList& words)
{
    if (argument == QLatin1String("%i")) {
        if (!entry.application.icon.isEmpty())
            words << QStringLiteral("--icon") << commandline::quoted(entry.application.icon);
        return true;
    }
    QString out;
    bool literal = false; // holds a text in which "%" means nothing
    bool forFile = false;
    for (int i = 0; i < argument.size(); ++i) {
        if (argument[i] != QLatin1Char('%')) {
            out += argument[i];
            continue;
        }
        const QChar code = i + 1 < argument.size() ? argument[++i] : QLatin1Char('?');
        if (QStringLiteral("fFuU%").contains(code)) {
            forFile = true;
            out += QLatin1Char('%');
            out += code;
        } else if (code == QLatin1Char('c') || code == QLatin1Char('k')) {
            literal = true;
            out += code == QLatin1Char('c') ? entry.application.text : file;
        } else if (!QStringLiteral("dDnNvm").contains(code)) {
            return false;
        }
    }
    if (literal && forFile)
        return false;
    if (literal)
        words << commandline::literal(out);
    else if (!out.isEmpty())
        words << out;
    return true;
}

QString takeCommand(DesktopEntry& entry, const QString& line, const QString& file)
{
    if (dialogparts::hasControlCharacters(line))
        return Texts::tr("启动命令中有控制字符。");
    QString error;
    const auto arguments = imageconvert::splitCommand(line, error);
    if (!error.isEmpty())
        return Texts::tr("启动命令中的双引号没有成对出现。");
    if (arguments.isEmpty())
        return Texts::tr("没有启动命令。");
    QStringList words{commandline::quoted(arguments.first().text)};
    for (int i = 0; i < arguments.size(); ++i) {
        const imageconvert::Argument& argument = arguments[i];
        if (!argument.quoted && hasReserved(argument.text))
            return Texts::tr("启动命令中有未加引号的特殊字符。");
        if (i == 0)
            continue;
        if (argument.quoted)
            words << commandline::literal(argument.text);
        else if (!expand(argument.text, entry, file, words))
            return Texts::tr("启动命令中有未知的“%”代码。");
    }
    entry.application.command = words.join(QLatin1Char(' '));
    return commandline::problem(arguments.first().text, words.mid(1).join(QLatin1Char(' ')));
}

} // namespace

DesktopEntry readDesktopEntry(const QString& file)
{
    constexpr qint64 kMostBytes = 256 * 1024;
    DesktopEntry entry;
    entry.inMenu = false;
    QFile source(file);
    if (!QFileInfo(file).isFile() || source.size() > kMostBytes || !source.open(QIODevice::ReadOnly)) {
        entry.problem = Texts::tr("文件无法读取。");
        return entry;
    }
    const QByteArray content = source.readAll();
    const Values values = content.contains('\0') ? Values() : readGroup(content);
    entry.application.text = localised(values, QStringLiteral("Name")).simplified();
    entry.application.icon = values.value(QStringLiteral("Icon"));
    entry.comment = localised(values, QStringLiteral("Comment")).simplified();
    const QString needed = values.value(QStringLiteral("TryExec"));
    if (values.value(QStringLiteral("Type")) != QLatin1String("Application") ||
        entry.application.text.isEmpty()) {
        entry.problem = Texts::tr("文件不是应用程序的桌面条目。");
        return entry;
    }
    entry.inMenu = !isOn(values, "NoDisplay") && !isOn(values, "Hidden");
    entry.problem = takeCommand(entry, values.value(QStringLiteral("Exec")), file);
    if (entry.problem.isEmpty() && isOn(values, "Terminal"))
        entry.problem = Texts::tr("此程序在终端中运行，不能用来打开扫描的文件。");
    if (entry.problem.isEmpty() && !needed.isEmpty())
        entry.problem = commandline::problem(needed, QString());
    if (!entry.problem.isEmpty()) {
        qInfo().noquote() << "desktop entry" << file << "cannot be used:" << entry.problem;
        entry.application.command.clear();
    }
    return entry;
}
