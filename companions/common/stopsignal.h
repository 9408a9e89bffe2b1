// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>

namespace companion {

// Set by an interrupt (Ctrl+C, or a request to end): work at hand is finished, nothing new is begun.
extern std::atomic<bool> stopped;

// Catches the interrupt once - a second one ends the program at once - and makes a file-size limit a failed
// write instead of the end of the program. Call it first in main().
void handleSignals();

} // namespace companion
