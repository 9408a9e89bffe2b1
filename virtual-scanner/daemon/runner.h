// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "arguments.h"

namespace vscan {

// Exit code of `vscan run` for its own failures, as other programs that start programs use it; 126 and 127:
// the command cannot be run, is not found.
constexpr int runnerFailed = 125;

// Runs the command with a scanner that lives as long as the command. Returns its exit code, 128 + the signal
// that ended it.
int runCommandWithScanner(const Arguments& arguments);

// Runs the scanner until SIGTERM or SIGINT, after printing the environment for its clients.
int runDaemon(const Arguments& arguments);

} // namespace vscan
