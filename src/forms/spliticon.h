// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

// The picture of the "split page" button: a page cut in two, drawn in the desktop's text colour at any size.
QIcon splitPageIcon();
