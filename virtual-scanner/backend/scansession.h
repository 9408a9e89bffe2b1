// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "link.h"
#include "protocol.h"
#include "settings.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <sane/sane.h>

namespace vscan {

// An opened scanner: what a SANE handle points to. cancel() may be called from any thread at any time and
// returns at once; everything else from one thread.
class ScanSession
{
public:
    ~ScanSession();

    SANE_Status open();
    SANE_Status control(int option, SANE_Action action, void* value, SANE_Int* info);
    SANE_Parameters parameters(); // of the page that was started, before that an estimate
    SANE_Status start();
    SANE_Status read(SANE_Byte* buffer, SANE_Int capacity, SANE_Int& length);
    void cancel();

private:
    enum class Phase
    {
        Idle,
        Reading,
        PageRead,
        Cancelled
    };
    class Busy;

    SANE_Status readLocked(SANE_Byte* buffer, SANE_Int capacity, SANE_Int& length);
    SANE_Status waitForPace(SANE_Int length);
    SANE_Status endOfData();
    SANE_Status fail(Status status, bool tellDaemon);
    void dropPage(Phase next);
    void finishCancel();

    std::mutex m_mutex;
    std::atomic<bool> m_cancel{false};
    Link m_link;
    Settings m_settings;
    Phase m_phase = Phase::Idle;
    StartReply m_page;
    Fd m_data;
    long long m_position = 0; // bytes of the page that were handed out
    std::chrono::steady_clock::time_point m_pageBegan;
};

} // namespace vscan
