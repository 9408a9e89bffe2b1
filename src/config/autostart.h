// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// The start of the program when its user logs in: a desktop entry in the autostart folder of the user's
// configuration. GUI thread.
namespace autostart {

// "$XDG_CONFIG_HOME/autostart/cn.zarn.qwd200.desktop", below "~/.config" without that variable.
QString file();

// The entry is there and the desktop's own settings have not hidden it.
bool isOn();

// Writes or removes the entry; leaves it alone when it is as wanted. `program`: full path of what is started.
// False: that was not possible.
bool set(bool on, const QString& program);

} // namespace autostart
