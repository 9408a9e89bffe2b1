// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Scan-mode templates: named copies of both settings files in scanModeFile/. Copying and removing is done by
// shell commands, one after another, with the name as it stands; so every operation first checks the name and
// runs nothing, logs and returns false for one that is not safe. GUI thread; synchronous.

inline constexpr char defaultTemplate[] = "default-template";

// Whether a template may be called so: 1 to 64 characters, no leading ".", no blanks, control characters, "/"
// or characters that mean something to a shell. ("_" is allowed, though the list cuts the name there.)
bool isSafeTemplateName(const QString& name);

// The names in the template folder in the order of the listing: each "..._path.conf" up to its first "_"
// (leading ones dropped), so that names can occur twice.
QStringList templateNames();

// The template's two files; the name is not checked.
QString templateMainFile(const QString& name);
QString templatePathFile(const QString& name);

// Whether both files of the template exist.
bool templateComplete(const QString& name);

// The same with a look into the files. Damaged: what they hold cannot be settings (settingsFault()).
enum class TemplateState
{
    Good,
    Missing,
    Damaged
};
TemplateState templateState(const QString& name);

// Makes the template's files copies of the live files. Nothing is touched when a live file is
// missing or the disk is full.
bool storeTemplate(const QString& name);

// Replaces the live files by the template's. Where a file of the template is missing the live file is gone
// afterwards (false): ask first, with templateState(). A copy that fails otherwise leaves the live files.
bool loadTemplate(const QString& name);

// Makes the template's files from these contents, each whole or not at all; no command is run.
bool putTemplate(const QString& name, const QByteArray& main, const QByteArray& path);

// Removes the template's files. "default-template" is refused.
bool removeTemplate(const QString& name);
