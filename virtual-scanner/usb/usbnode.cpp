// SPDX-License-Identifier: GPL-3.0-or-later
#include "usbnode.h"

#include <algorithm>
#include <fcntl.h>
#include <linux/usbdevice_fs.h>
#include <sys/stat.h>

namespace vscan {

namespace {

constexpr int pipeSize = 4096;

bool connected(const ClientHandle& client)
{
    const auto known = client.lock();
    return known && umockdev_ioctl_client_get_connected(known.get());
}

} // namespace

bool UsbNode::create(const std::string& path)
{
    unlink(path.c_str());
    if (mkfifo(path.c_str(), 0666) != 0)
        return false;
    m_pipe = Fd(open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    if (!m_pipe || fcntl(m_pipe.get(), F_SETPIPE_SZ, pipeSize) < 0)
        return false;
    showReady(false);
    return true;
}

void UsbNode::showReady(bool ready)
{
    if (ready == m_ready || !m_pipe)
        return;
    char bytes[pipeSize] = {};
    if (ready) {
        while (read(m_pipe.get(), bytes, sizeof bytes) > 0) {
        }
    } else {
        while (write(m_pipe.get(), bytes, sizeof bytes) > 0) {
        }
        while (write(m_pipe.get(), bytes, 1) > 0) {
        }
    }
    m_ready = ready;
    if (!m_alive && !ready)
        m_pipe = Fd(); // what a client still holds of it stays full for good
}

void UsbNode::submitDone(Urb urb, int status, size_t actualLength)
{
    m_flying.push_back(std::move(urb));
    finish(std::prev(m_flying.end()), status, actualLength);
}

void UsbNode::finish(Urbs::iterator urb, int status, size_t actualLength)
{
    urb->status = status;
    urb->actualLength = actualLength;
    m_done.splice(m_done.end(), m_flying, urb);
    showReady(true);
}

void UsbNode::pump(CommandChannel& channel)
{
    dropLostClients();
    for (auto next = m_flying.begin(); next != m_flying.end();) {
        const auto urb = next++;
        if (channel.takeStall(urb->endpoint)) {
            finish(urb, -EPIPE, 0);
            continue;
        }
        std::optional<Bytes> packet = channel.take(urb->endpoint);
        if (!packet)
            continue;
        const bool fits = packet->size() <= urb->length;
        packet->resize(std::min(packet->size(), urb->length));
        urb->received = std::move(*packet);
        finish(urb, fits ? 0 : -EOVERFLOW, urb->received.size());
    }
}

std::optional<CommandChannel::Clock::time_point> UsbNode::nextDue(const CommandChannel& channel) const
{
    std::optional<CommandChannel::Clock::time_point> next;
    for (const Urb& urb : m_flying) {
        const auto due = channel.nextDue(urb.endpoint);
        if (due && (!next || *due < *next))
            next = due;
    }
    return next;
}

bool UsbNode::discard(UMockdevIoctlClient* client, unsigned long address)
{
    const auto urb = std::find_if(m_flying.begin(), m_flying.end(), [&](const Urb& flying) {
        return flying.client.lock().get() == client && flying.data.get()->client_addr == address;
    });
    if (urb == m_flying.end())
        return false;
    finish(urb, -ENOENT, 0);
    return true;
}

GHandle<UMockdevIoctlData> UsbNode::reap(UMockdevIoctlClient* client)
{
    const auto urb = std::find_if(m_done.begin(), m_done.end(),
                                  [client](const Urb& done) { return done.client.lock().get() == client; });
    GHandle<UMockdevIoctlData> data;
    if (urb != m_done.end()) {
        auto* shown = reinterpret_cast<usbdevfs_urb*>(urb->data.get()->data);
        shown->status = urb->status;
        shown->actual_length = static_cast<int>(urb->actualLength);
        if (urb->buffer && !urb->received.empty())
            std::memcpy(urb->buffer.get()->data + urb->headLength, urb->received.data(),
                        urb->received.size());
        data = std::move(urb->data);
        m_done.erase(urb);
    }
    if (m_done.empty())
        showReady(false);
    return data;
}

void UsbNode::die()
{
    m_alive = false;
    while (!m_flying.empty())
        finish(m_flying.begin(), -ESHUTDOWN, 0);
    m_owner = {};
    if (m_done.empty()) {
        m_ready = true; // full already: only let go of it
        showReady(false);
    }
}

void UsbNode::dropLostClients()
{
    const auto lost = [](const Urb& urb) { return !connected(urb.client); };
    m_flying.remove_if(lost);
    m_done.remove_if(lost);
    if (m_done.empty())
        showReady(false);
    if (!connected(m_owner))
        m_owner = {};
}

bool UsbNode::claim(UMockdevIoctlClient* client)
{
    dropLostClients();
    if (!m_owner.lock())
        m_owner = ClientHandle(client);
    return m_owner.lock().get() == client;
}

bool UsbNode::release(UMockdevIoctlClient* client)
{
    if (m_owner.lock().get() != client)
        return false;
    m_owner = {};
    return true;
}

bool UsbNode::claimed() const
{
    return connected(m_owner);
}

bool UsbNode::claimedByOther(UMockdevIoctlClient* client) const
{
    return claimed() && m_owner.lock().get() != client;
}

} // namespace vscan
