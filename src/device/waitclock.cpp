// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/waitclock.h"

#include "device/cancelflag.h"

#include <QCoreApplication>
#include <QThread>
#include <algorithm>

namespace {
constexpr int sliceMs = 100;
}

void SystemClock::pause(int milliseconds)
{
    QThread::msleep(static_cast<unsigned long>(milliseconds));
    QCoreApplication::processEvents();
}

bool waitUnlessCancelled(WaitClock& clock, int milliseconds)
{
    for (int left = milliseconds; left > 0 && !cancelflag::isSet(); left -= sliceMs)
        clock.pause(std::min(left, sliceMs));
    return !cancelflag::isSet();
}
