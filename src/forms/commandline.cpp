// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/commandline.h"

#include "forms/dialogparts.h"
#include "imageconvert/launcher.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <algorithm>

namespace commandline {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(commandline)
};

bool isRunnable(const QString& program)
{
    if (program.contains(QLatin1Char('/'))) {
        const QFileInfo info(program);
        return info.isAbsolute() && info.isFile() && info.isExecutable();
    }
    return !QStandardPaths::findExecutable(program).isEmpty();
}

} // namespace

QString quoted(const QString& word)
{
    static const QRegularExpression reserved(QStringLiteral(R"([\s"'\\><~|&;$*?#()`])"));
    return !word.isEmpty() && !word.contains(reserved) ? word : literal(word);
}

QString literal(QString word)
{
    static const QRegularExpression escaped(QStringLiteral(R"((["`$\\]))"));
    word.replace(escaped, QStringLiteral(R"(\\1)"));
    return QLatin1Char('"') + word + QLatin1Char('"');
}

QString join(const QStringList& words)
{
    QStringList line;
    for (const QString& word : words)
        line << quoted(word);
    return line.join(QLatin1Char(' '));
}

Parts split(const QString& line)
{
    Parts parts;
    bool inQuotes = false;
    int i = 0;
    for (; i < line.size() && (inQuotes || !line.at(i).isSpace()); ++i) {
        const bool escapes = inQuotes && line.at(i) == QLatin1Char('\\') && i + 1 < line.size() &&
                             QStringLiteral("\"`$\\").contains(line.at(i + 1));
        if (escapes)
            parts.program += line.at(++i);
        else if (line.at(i) == QLatin1Char('"'))
            inQuotes = !inQuotes;
        else
            parts.program += line.at(i);
    }
    parts.arguments = line.mid(i).trimmed();
    return parts;
}

bool handsTextToShell(const QStringList& words)
{
    static const QStringList shells{"sh",   "bash", "dash", "ash",  "zsh",    "ksh",
                                    "mksh", "csh",  "tcsh", "fish", "busybox"};
    auto word = words.begin();
    const auto isAssignment = [](const QString& w) { return w.indexOf(QLatin1Char('=')) > 0; };
    while (word != words.end() &&
           (QFileInfo(*word).fileName() == QLatin1String("env") ||
            (word != words.begin() && (isAssignment(*word) || word->startsWith(QLatin1Char('-'))))))
        ++word;
    if (word == words.end() || !shells.contains(QFileInfo(*word).fileName()))
        return false;
    return std::any_of(word + 1, words.end(), [](const QString& w) {
        return w.startsWith(QLatin1Char('-')) && !w.startsWith(QLatin1String("--")) &&
               w.contains(QLatin1Char('c'));
    });
}

QString problem(const QString& program, const QString& arguments)
{
    if (dialogparts::hasControlCharacters(program) || dialogparts::hasControlCharacters(arguments))
        return Texts::tr("程序和参数中不能有控制字符。");
    if (program.isEmpty())
        return arguments.trimmed().isEmpty() ? QString() : Texts::tr("有参数时必须指定程序。");
    QString error;
    QStringList words{program};
    for (const imageconvert::Argument& argument : imageconvert::splitCommand(arguments, error))
        words << argument.text;
    if (!error.isEmpty())
        return Texts::tr("参数中的双引号没有成对出现。");
    if (handsTextToShell(words))
        return Texts::tr("不能通过命令解释器（sh -c）启动，请直接指定程序。");
    if (!isRunnable(program))
        return Texts::tr("找不到程序“%1”，或者它不能运行。").arg(program);
    return {};
}

} // namespace commandline
