// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "config/applicationlist.h"

#include <QString>

// An application of the desktop's menu, as its ".desktop" file describes it.
struct DesktopEntry
{
    AppEntry application; // name in the user's language, command line, icon
    QString comment;
    bool inMenu = true;
    // Why it cannot be used to open files, in Chinese: not an application, nothing to start, a command line
    // against the standard, a shell, a terminal program, a program that is not installed.
    QString problem;
};

// Reads a file by the rules of the Desktop Entry standard. In the command line %i, %c and %k are replaced,
// the codes for the file (%f %F %u %U) stay for the start, deprecated ones go. Any thread.
DesktopEntry readDesktopEntry(const QString& file);
