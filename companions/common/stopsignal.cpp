// SPDX-License-Identifier: GPL-3.0-or-later
#include "stopsignal.h"

#include <csignal>

namespace companion {

std::atomic<bool> stopped{false};

static void onSignal(int)
{
    stopped = true;
}

void handleSignals()
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace companion
