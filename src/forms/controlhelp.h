// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

struct ScanPageControls;

// Tool tips that say what the controls of a form that scans do to the page, where the form has none of its
// own. Controls that no step of the processing reads say so.
void explainControls(const ScanPageControls& controls);
