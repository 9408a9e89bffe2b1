// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "scanner.h"

#include <string>
#include <vector>

namespace vscan {

extern const char* const usage;

struct Arguments
{
    ScannerSetup setup;
    std::string socket; // empty: a fresh one
    std::vector<std::string> command;
    bool usb = true;
};

// The words after "run" or "daemon"; false with `error` set when they cannot be understood.
bool parseArguments(const Fields& words, bool withCommand, Arguments& arguments, std::string& error);

// A command whose file or folder is made absolute: the daemon's working folder is another one.
Fields absolutePaths(Fields command);

} // namespace vscan
