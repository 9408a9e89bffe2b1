// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace imageconvert {

// A program with its arguments, or why there is none.
struct CommandLine
{
    QString program;
    QStringList arguments;
    QString error; // English, empty when the line is good
};

// A word of a command line without its quotes. `quoted` words hold no field codes.
struct Argument
{
    QString text;
    bool quoted = false;
};

// Splits a command line by the quoting rules of the Desktop Entry standard; `error` (English) is set when a
// quotation mark is not closed.
QList<Argument> splitCommand(const QString& line, QString& error);

// Splits a command line by the quoting rules of the Desktop Entry standard (section "The Exec key") and
// puts `file` in place of the field codes %f %F %u %U, or at the end when there is none. No shell is
// involved; an empty line opens the file with xdg-open.
CommandLine commandFor(const QString& line, const QString& file);

// Starts the command on its own; an empty result is success, else the reason (English).
QString startCommand(const CommandLine& command);

} // namespace imageconvert
