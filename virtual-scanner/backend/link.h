// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "protocol.h"

#include <optional>

namespace vscan {

// One client's connection to the daemon. One thread at a time.
class Link
{
public:
    // False when no daemon listens on $VSCAN_SOCKET.
    bool connect();

    // Sends a request and waits for its reply; the status is IoError when the daemon is gone. Results of the
    // reply follow its status in `reply`.
    Status request(const Fields& request, Fields& reply, Fd* data = nullptr);
    Status request(const Fields& request);
    void post(const Fields& request); // without a reply

    // Looks for a notice that the page has failed, without waiting.
    void poll();
    // The failure of the page that was noticed, given out once.
    std::optional<Status> takeInterrupt() { return std::exchange(m_interrupt, std::nullopt); }
    int descriptor() const { return m_socket.get(); }

private:
    int receive(Fields& fields, Fd* data, int flags);

    Fd m_socket;
    std::optional<Status> m_interrupt;
};

} // namespace vscan
