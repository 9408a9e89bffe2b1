// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSettings>
#include <memory>

// The two INI files (UTF-8). Open one for each read or write and let it go: a value that one panel wrote is
// then seen by the next reader, and a template copied over the files takes effect at once. GUI thread, or any
// one thread at a time per object.
//
// A file that cannot be settings (larger than 1 MiB, with NUL bytes, not a regular file) is renamed to
// NAME.damaged-yyyyMMdd-hhmmss and logged; the object then reads as an empty file. Never null.
std::unique_ptr<QSettings> openMainSettings();
std::unique_ptr<QSettings> openPathSettings();
std::unique_ptr<QSettings> openSettings(const QString& file);

// What keeps this file from being settings as they were written: missing, not a regular file, empty, too
// large, binary, with a line that is no setting (half a line after a crash). English; empty when nothing
// does. The file is left alone.
QString settingsFault(const QString& file);

// Writes what is pending to the disk, whole or not at all. False, and a log line, when the file could not be
// written (read-only folder, disk full); the former file is then unchanged. Call it after the last
// setValue(): the destructor writes too, but its failure is lost.
bool saveSettings(QSettings& settings);
