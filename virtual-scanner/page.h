// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "protocol.h"
#include "settings.h"
#include "state.h"

#include <string>

namespace vscan {

// Makes the picture that the scanner delivers for one side: the sheet top-left on the area of the set paper
// size, at true scale; what is larger is cut, what is smaller leaves the dark bed. The bytes go into `data`,
// an unnamed file that vanishes with its last descriptor; `shape` gets the frame's measures. `defaultDpi` is
// the resolution of pictures that state none. False with `error` set when a picture cannot be read or the
// memory does not suffice. Peak memory: the picture, once more when it is reduced, and the delivered bytes.
bool renderPage(const Side& side, const Settings& settings, double defaultDpi, Fd& data, StartReply& shape,
                std::string& error);

} // namespace vscan
