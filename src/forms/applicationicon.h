// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

// The icon of an application as a desktop entry names it: a name of the icon theme or an absolute path to a
// picture. Null when there is none, or when the file is no picture of a sensible size. GUI thread.
QIcon applicationIcon(const QString& name);
