// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Where the program keeps its settings, page files and state. Two definitions exist and a program links one
// of them: `install_root` (the fixed root, the only source that names it) for the installed program, and
// `rooted_install` (root and default save folder from the environment) for tests and the demo run, so that
// they run side by side and touch nothing real.

// The install root, ending in "/".
QString installRoot();

// The folder that receives scanned documents until the user chooses another, without a trailing "/".
QString defaultSaveFolder();
