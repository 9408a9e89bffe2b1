// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// What keeps this user from using the program: no right to write into the install root, where settings and
// page files are kept. Names the group that has it and the command that adds the user (Chinese). Empty when
// all is well.
QString folderRightsProblem();

// Where the install root passes its group on (set-group-ID), files that this program makes from now on stay
// writable for the group, so that its members share settings and templates. Sets the process's umask.
void shareNewFiles();
