// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "channel.h"
#include "glibhandle.h"

#include "protocol.h"

#include <list>
#include <umockdev.h>

namespace vscan {

// An open device file of a client. Weak, since the testbed forgets without a word who dies in mid-request.
using ClientHandle = GWeakHandle<UMockdevIoctlClient>;

// A transfer that a client has submitted. The result is kept apart and written to the client when it asks.
struct Urb
{
    ClientHandle client;
    GHandle<UMockdevIoctlData> data;   // struct usbdevfs_urb
    GHandle<UMockdevIoctlData> buffer; // what it points to; none for an empty transfer
    uint8_t endpoint = 0;
    size_t headLength = 0; // bytes of the buffer before the data: 8 of a control transfer
    size_t length = 0;     // bytes after them
    int status = 0;        // negative errno
    size_t actualLength = 0;
    Bytes received; // what an IN transfer brings
};

// The device file of one plugging-in: transfers on their way and done ones, and a pipe that stands for the
// file. Clients wait until they can write to it, so it is kept full as long as no transfer is done. Not
// thread-safe; transfers of a client that has gone are dropped, as the kernel does.
class UsbNode
{
public:
    // Makes the pipe at `path`; false with errno set.
    bool create(const std::string& path);

    void submit(Urb urb) { m_flying.push_back(std::move(urb)); }
    void submitDone(Urb urb, int status, size_t actualLength);
    void pump(CommandChannel& channel); // hands out the packets that are due
    bool discard(UMockdevIoctlClient* client, unsigned long address);
    // Fills in and hands over the next done transfer of the client; empty when there is none.
    GHandle<UMockdevIoctlData> reap(UMockdevIoctlClient* client);
    std::optional<CommandChannel::Clock::time_point> nextDue(const CommandChannel& channel) const;

    void die(); // unplugged: every transfer fails
    bool alive() const { return m_alive; }
    void dropLostClients();

    bool claim(UMockdevIoctlClient* client); // false: another client has it
    bool release(UMockdevIoctlClient* client);
    bool claimed() const;
    bool claimedByOther(UMockdevIoctlClient* client) const;

private:
    using Urbs = std::list<Urb>;
    void finish(Urbs::iterator urb, int status, size_t actualLength);
    void showReady(bool ready);

    Fd m_pipe;
    bool m_ready = true;
    bool m_alive = true;
    Urbs m_flying;
    Urbs m_done;
    ClientHandle m_owner; // of the claimed interface
};

} // namespace vscan
