// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/pageoptions.h"

class ScanPageLogic;

// The pipeline's switches as they stand in a page's controls; what the settings files hold (strengths,
// folders, names) is added by the caller. A control counts as on when it is both checked and enabled.
PageOptions optionsFromControls(const ScanPageLogic& logic);
