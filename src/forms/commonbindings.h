// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

struct ScanPageControls;
class QWidget;
class ScanPageLogic;
class SettingBinding;

// The keys that the window's pages and the functions' panels have in common and store alike. The controls
// must outlive the binding.

void bindSource(SettingBinding& binding, const ScanPageControls& controls);  // source, sides, paper, merging
void bindFormats(SettingBinding& binding, const ScanPageControls& controls); // per colour mode
void bindTone(SettingBinding& binding, const ScanPageControls& controls);    // all but gamma
void bindSwitches(SettingBinding& binding, const ScanPageControls& controls);
void bindResolution(SettingBinding& binding, ScanPageLogic& logic);

// Without its key gamma does nothing, like every other step whose key is missing.
constexpr int kNeutralGamma = 100;

// The control's own enabled state, also inside a page that is disabled as a whole while a batch runs.
bool isUsable(const QWidget* control);
