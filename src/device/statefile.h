// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The state file "StateInfo": four digits and a line end, the one channel from the scanning side to the
// status window. Written whole under a temporary name and renamed into place; any thread may write or read.

namespace state {

enum Code
{
    Idle = 0,
    FirstPage = 1, // 1 to 999: this page is being scanned; above: 999
    LastPage = 999,
    FingerWanted = 1001,
    FingerAccepted = 1002,
    FingerRejected = 1003,
    ClearingMemory = 1004,
    NoFingerprints = 1005,
    CommunicationError = 1006,
    FeederEmpty = 1007,
    Preparing = 1008,
    JamOrCoverOpen = 1009,
    Busy = 1010,
    Cancelled = 1011,
    FirstUpload = 2001, // 2001 to 2999: page code - 2000 is being uploaded
    LastUpload = 2999,
};

// False (logged) when the file cannot be written.
bool write(int code);

// The code that says "page n is being scanned", n from 1.
int pageCode(int page);

// The code in the first line; -1 when the file is missing or does not hold a number.
int read();

// The same in `code`; false when the file cannot be opened.
bool read(int& code);

} // namespace state
