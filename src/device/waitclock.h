// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// How the scanning side waits. Tests turn the clock instead of sleeping.
class WaitClock
{
public:
    virtual ~WaitClock() = default;

    // Waits that long in the calling thread and then delivers the thread's pending events.
    virtual void pause(int milliseconds) = 0;
};

class SystemClock : public WaitClock
{
public:
    void pause(int milliseconds) override;
};

// Waits in slices of at most 100 ms; false as soon as the batch is cancelled.
bool waitUnlessCancelled(WaitClock& clock, int milliseconds);
