// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/launcher.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>

namespace imageconvert {

namespace {

// The argument with its field codes replaced; `used` is set when the file was put in. Codes for icon, name
// and place of the entry and the deprecated ones are dropped.
QString expand(const QString& text, const QString& file, bool& used)
{
    QString out;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] != QLatin1Char('%') || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const char code = text[++i].toLatin1();
        if (code == '%') {
            out += QLatin1Char('%');
        } else if (code == 'f' || code == 'F') {
            out += file;
            used = true;
        } else if (code == 'u' || code == 'U') {
            out += QString::fromLatin1(QUrl::fromLocalFile(file).toEncoded());
            used = true;
        }
    }
    return out;
}

} // namespace

QList<Argument> splitCommand(const QString& line, QString& error)
{
    QList<Argument> arguments;
    Argument current;
    bool inside = false, started = false;
    for (int i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (inside && c == QLatin1Char('\\') && i + 1 < line.size() &&
            QStringLiteral("\"`$\\").contains(line[i + 1])) {
            current.text += line[++i];
        } else if (c == QLatin1Char('"')) {
            inside = !inside;
            started = current.quoted = true;
        } else if (!inside && c.isSpace()) {
            if (started)
                arguments << current;
            current = Argument();
            started = false;
        } else {
            current.text += c;
            started = true;
        }
    }
    if (started)
        arguments << current;
    if (inside)
        error = QStringLiteral("the quotation mark in \"%1\" is not closed").arg(line);
    return arguments;
}

CommandLine commandFor(const QString& line, const QString& file)
{
    CommandLine command;
    if (std::any_of(line.begin(), line.end(), [](QChar c) { return c.category() == QChar::Other_Control; })) {
        command.error = QStringLiteral("control characters in the command line");
        return command;
    }
    const QList<Argument> parts = splitCommand(line, command.error);
    if (!command.error.isEmpty())
        return command;
    if (parts.isEmpty()) {
        command.program = QStringLiteral("xdg-open");
        command.arguments << file;
        return command;
    }
    command.program = parts.first().text;
    bool used = false;
    for (int i = 1; i < parts.size(); ++i) {
        const QString text = parts[i].quoted ? parts[i].text : expand(parts[i].text, file, used);
        if (parts[i].quoted || !text.isEmpty())
            command.arguments << text;
    }
    if (!used)
        command.arguments << file;
    return command;
}

QString startCommand(const CommandLine& command)
{
    if (!command.error.isEmpty())
        return command.error;
    const QString program = QStandardPaths::findExecutable(command.program);
    if (program.isEmpty() || !QFileInfo(program).isFile())
        return QStringLiteral("there is no program \"%1\"").arg(command.program);
    if (!QProcess::startDetached(program, command.arguments))
        return QStringLiteral("\"%1\" cannot be started").arg(program);
    return QString();
}

} // namespace imageconvert
