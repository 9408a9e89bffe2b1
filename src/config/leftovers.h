// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

// The page files in the temporary folder.

// Full paths of the scanned pages "zarnqwd*.pnm" in name order; no symbolic links.
QStringList pageFiles();

// Moves what an interrupted batch left (pages, unfinished ".part" files, split pieces "crop*.bmp") to
// tempfiles/kept/yyyyMMdd-hhmmss/ and returns that folder, ending in "/"; empty when there was nothing. A
// file that cannot be moved is logged and stays.
QString keepLeftovers(const QDateTime& now = QDateTime::currentDateTime());

// Deletes every entry of the folder for temporary texts; what cannot be deleted is logged and stays.
void clearTempTexts();
