// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The one flag that cancels the running batch. Set by the window, the status window or the scanner's clear
// key; cleared when a batch starts; checked between reads, between pages and in every wait. Any thread.
namespace cancelflag {

void set();
void clear();
bool isSet();

} // namespace cancelflag
