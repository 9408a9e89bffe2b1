// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

// Runs `work` in a worker thread and pumps the calling thread's event loop until it has ended, so that the
// window moves, repaints and takes a cancel meanwhile. `work` must not throw.
void runWithEvents(const std::function<void()>& work);

// Pumps the event loop for the given time, in slices of at most 100 ms.
void pumpEvents(int milliseconds);
