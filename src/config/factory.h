// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Writes the factory values of the top-level keys and of "Scan_Scan" and empties the application list
// "Scan_app". Other groups and keys stay. False when the file cannot be written.
bool initializeIni();

// Called once at start, before anything is read. At the first start (the main file is missing, damaged, or
// was never completed) writes the factory file, the factory values of all other groups beside it, and
// function 0 on both pages; values that somebody has put into the file beforehand win. At every start: a
// missing save folder entry of the path file gets the default folder, and the template "default-template" is
// made when it does not exist. False (and logged) when something could not be written; the program can run
// on.
bool ensureFactorySettings();

// Makes a pair of settings files what the first start writes. False (and logged) when one cannot be written.
bool writeFactorySettings(const QString& mainFile, const QString& pathFile);

// The same for the files of "default-template"; the live files stay.
bool restoreDefaultTemplate();
