// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "channel.h"
#include "protocol.h"

namespace vscan {

// `usb ...`: faults of the command channel. False with the text set when the words are not understood.
bool usbCommand(CommandChannel& channel, const Fields& command, std::string& text);

// `counters [NAME=VALUE...]`: sets the named ones, all or none, and shows all.
bool countersCommand(Wear& wear, const Fields& command, std::string& text);

} // namespace vscan
