// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace vscan {

// What the rest of the scanner asks of its plug, so that it builds without one. Main thread.
class UsbPort
{
public:
    virtual ~UsbPort() = default;
    virtual bool plug() = 0;
    virtual void unplug() = 0;
    virtual void wake() = 0;          // something may be there to send, or to fail
    virtual bool claimed() const = 0; // by a client that still lives
};

} // namespace vscan
