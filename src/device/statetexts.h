// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// What the status window says about the codes of the state file. Pure functions, any thread.
namespace state {

// The text for a code; empty when there is nothing (new) to show for it, as for 0.
QString text(int code);

// Whether this text tells of a fault that must stay on the screen until it is confirmed.
bool isFaultText(const QString& text);

} // namespace state
