// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings.h"

#include <sane/sane.h>

namespace vscan {

// Descriptor of the option with this number, nullptr outside the list. Lives as long as the module.
const SANE_Option_Descriptor* optionDescriptor(int option);

// Reads or sets one option as sane_control_option() does. A resolution between the offered ones becomes the
// nearest of them (SANE_INFO_INEXACT), a word that the list lacks is refused.
SANE_Status controlOption(Settings& settings, int option, SANE_Action action, void* value, SANE_Int* info);

} // namespace vscan
