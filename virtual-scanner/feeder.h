// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "state.h"

#include <string>
#include <vector>

namespace vscan {

// The sheets of a folder: NNN-front.EXT and NNN-back.EXT in the order of their numbers (either side may be
// missing), or, when no picture is named so, every picture in name order as a front. Pictures are PNM, PNG
// and JPEG files. Empty with `error` set when the folder cannot be read or holds no picture.
std::vector<Sheet> sheetsOf(const std::string& folder, std::string& error);

} // namespace vscan
