// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QSettings;

// Whether two pairs of settings files hold the same where no control of the window shows the value: naming
// rules, global settings, noise, paper, compression, folders. Keys that one side lacks are not looked at, nor
// the counter of the file names, which every scan moves on.
bool sameBehindTheDialogs(const QSettings& main, const QSettings& path, const QSettings& otherMain,
                          const QSettings& otherPath);
