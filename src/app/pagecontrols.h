// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/scanpagecontrols.h"

namespace Ui {
class Widget;
}

// Binds the two pages' controls, whose object names differ, to the shared struct.
ScanPageControls scanPageControls(const Ui::Widget& ui);
ScanPageControls filePageControls(const Ui::Widget& ui);
