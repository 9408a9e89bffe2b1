// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

// The page files in the temporary folder, and what interrupted work leaves there and in the save folders.

// Full paths of the scanned pages "zarnqwd*.pnm" in name order; no symbolic links.
QStringList pageFiles();

// Moves what an interrupted batch left (pages, unfinished ".part" files, split pieces "crop*.bmp") to
// tempfiles/kept/yyyyMMdd-hhmmss/ and returns that folder, ending in "/"; empty when there was nothing. A
// file that cannot be moved is logged and stays.
QString keepLeftovers(const QDateTime& now = QDateTime::currentDateTime());

// Deletes every entry of the folder for temporary texts; what cannot be deleted is logged and stays.
void clearTempTexts();

// Removes what this user's killed processes left half-written: files ".page-PID-N.part" in the temporary
// folder and in the save folders of the path file, folders "searchable-*" of documents that were being
// printed, and loose OFD parts beside their mark. Files of a process that still runs stay. To be called when
// this process is the only one that works on the install root.
void sweepAbandonedFiles();

// Removes the loose OFD parts and then their mark from a folder, which ends in "/".
void removeOfdParts(const QString& folder);
