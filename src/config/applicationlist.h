// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSettings>
#include <QString>
#include <vector>

// The applications offered for opening scanned pages: display texts in one group ("Scan_app", "File_app"),
// the command lines and icons in the groups of the same name with "_exec" and "_icon" appended, under the
// same keys "0", "1", "2", ...
struct AppEntry
{
    QString text;
    QString command; // program and arguments; empty: the desktop's default application
    QString icon{};  // a name of the icon theme or an absolute path; may be empty

    bool operator==(const AppEntry& other) const
    {
        return text == other.text && command == other.command && icon == other.icon;
    }
};

// The list in the order of its numbers. `settings` has no group begun. Empty when the group is missing.
std::vector<AppEntry> readApplications(QSettings& settings, const QString& group);

// Writes the list under the positions 0, 1, 2, ... after removing the keys of all entries that may have stood
// there since the start: list size plus twice the entries deleted (they were counted in the old size as
// well).
void writeApplications(QSettings& settings, const QString& group, const std::vector<AppEntry>& list);

// Process-wide count of entries deleted since the start; the delete buttons increase it. GUI thread.
void countDeletedApplication();
int deletedApplications();

// The command line of the first entry with this text; empty when there is none.
QString applicationCommand(const std::vector<AppEntry>& list, const QString& text);
