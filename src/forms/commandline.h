// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

// Command lines of follow-up applications as the lists store them: words by the quoting rules of the Desktop
// Entry standard, split again when the program is started (imageconvert/launcher.h). No shell is involved.
namespace commandline {

struct Parts
{
    QString program;
    QString arguments; // as they stand
};

// One word, quoted when it holds reserved characters.
QString quoted(const QString& word);
// One word in quotes: "%" means nothing in it.
QString literal(QString word);
// The words as one line.
QString join(const QStringList& words);
// Takes the first word off a line; the reverse of join().
Parts split(const QString& line);

// Why this command cannot be stored, in Chinese; empty when it can. `program` is a name in the search path or
// an absolute path.
QString problem(const QString& program, const QString& arguments);

// Whether the words hand a text to a shell ("sh -c ...", also behind "env").
bool handsTextToShell(const QStringList& words);

} // namespace commandline
