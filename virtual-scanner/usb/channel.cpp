// SPDX-License-Identifier: GPL-3.0-or-later
#include "channel.h"

#include <algorithm>
#include <cstring>

namespace vscan {

namespace {

constexpr size_t frameLength = 8;
constexpr size_t counterReplyLength = 64;
constexpr size_t counterOffset = 8;
constexpr uint8_t queryCommand = 0x01;
constexpr uint8_t resetCommand = 0x03;
constexpr char counterTag[4] = {'C', 'N', 'T', 'R'};
constexpr char powerTag[4] = {'P', 'W', 'R', '\0'};

bool hasTag(const Bytes& frame, const char (&tag)[4])
{
    return frame.size() == frameLength && std::memcmp(frame.data(), tag, sizeof tag) == 0;
}

std::string address(uint8_t endpoint)
{
    return hex({endpoint});
}

} // namespace

std::string hex(const Bytes& bytes)
{
    std::string text;
    for (uint8_t byte : bytes) {
        constexpr char digits[] = "0123456789abcdef";
        if (!text.empty())
            text += ' ';
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

void CommandChannel::receive(const Bytes& frame)
{
    const std::lock_guard lock(m_mutex);
    m_log.add("usb " + address(endpoint::commandOut) + " < " + hex(frame));
    Bytes reply;
    if (hasTag(frame, counterTag))
        reply = counterReply(frame);
    else if (hasTag(frame, powerTag))
        reply = standbyReply(frame);
    if (reply.empty())
        m_log.add("usb: frame not understood, no reply");
    else
        enqueue(endpoint::replyIn, std::move(reply));
}

// 64 bytes that repeat the frame; the counter stands in bytes 8 and 9, low byte first.
Bytes CommandChannel::counterReply(const Bytes& frame)
{
    const auto part = std::find_if(Wear::parts.begin(), Wear::parts.end(),
                                   [&frame](const Wear::Part& known) { return known.code == frame[5]; });
    if (part == Wear::parts.end() || (frame[4] != queryCommand && frame[4] != resetCommand))
        return {};
    std::atomic<int>& counter = m_wear.counter(static_cast<size_t>(part - Wear::parts.begin()));
    if (frame[4] == resetCommand)
        counter = 0;
    const int count = counter;
    Bytes reply(counterReplyLength);
    std::copy(frame.begin(), frame.end(), reply.begin());
    reply[counterOffset] = static_cast<uint8_t>(count & 0xff);
    reply[counterOffset + 1] = static_cast<uint8_t>(count >> 8);
    return reply;
}

// Minutes in byte 5, hours in byte 6; the reply repeats the frame.
Bytes CommandChannel::standbyReply(const Bytes& frame)
{
    m_wear.standbyMinutes() = frame[5] + 60 * frame[6];
    return frame;
}

void CommandChannel::press(uint8_t key)
{
    queueReport({0x04, 0x00, 0x00, key});
}

void CommandChannel::queueReport(const Bytes& bytes)
{
    const std::lock_guard lock(m_mutex);
    enqueue(endpoint::eventIn, bytes);
}

void CommandChannel::enqueue(uint8_t endpoint, Bytes bytes)
{
    Clock::time_point due = Clock::now();
    const ReplyFault fault = m_faultCount > 0 ? m_fault : ReplyFault::None;
    if (fault != ReplyFault::None)
        --m_faultCount;
    if (fault == ReplyFault::Silent) {
        m_log.add("usb " + address(endpoint) + " lost: " + hex(bytes));
        return;
    }
    if (fault == ReplyFault::Short)
        bytes.resize(std::min(bytes.size(), static_cast<size_t>(m_faultValue)));
    if (fault == ReplyFault::Garbage) {
        for (size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<uint8_t>(0xa5 ^ (i * 29));
    }
    if (fault == ReplyFault::Late)
        due += std::chrono::milliseconds(m_faultValue);
    m_waiting[endpoint].push_back({std::move(bytes), due});
}

std::optional<Bytes> CommandChannel::take(uint8_t endpoint)
{
    const std::lock_guard lock(m_mutex);
    std::deque<Packet>& waiting = m_waiting[endpoint];
    if (waiting.empty() || waiting.front().due > Clock::now())
        return std::nullopt;
    Bytes bytes = std::move(waiting.front().bytes);
    waiting.pop_front();
    m_log.add("usb " + address(endpoint) + " > " + hex(bytes));
    return bytes;
}

std::optional<CommandChannel::Clock::time_point> CommandChannel::nextDue(uint8_t endpoint) const
{
    const std::lock_guard lock(m_mutex);
    const auto waiting = m_waiting.find(endpoint);
    if (waiting == m_waiting.end() || waiting->second.empty())
        return std::nullopt;
    return waiting->second.front().due;
}

void CommandChannel::powerOff()
{
    const std::lock_guard lock(m_mutex);
    m_waiting.clear();
}

void CommandChannel::setFault(ReplyFault fault, int count, int value)
{
    const std::lock_guard lock(m_mutex);
    m_fault = fault;
    m_faultCount = count;
    m_faultValue = value;
}

void CommandChannel::setStall(uint8_t endpoint, int count)
{
    const std::lock_guard lock(m_mutex);
    m_stalls[endpoint] = count;
}

bool CommandChannel::takeStall(uint8_t endpoint)
{
    const std::lock_guard lock(m_mutex);
    const auto stall = m_stalls.find(endpoint);
    if (stall == m_stalls.end() || stall->second <= 0)
        return false;
    --stall->second;
    m_log.add("usb " + address(endpoint) + " stalled");
    return true;
}

void CommandChannel::setClaimBusy(bool busy)
{
    const std::lock_guard lock(m_mutex);
    m_claimBusy = busy;
}

bool CommandChannel::claimBusy() const
{
    const std::lock_guard lock(m_mutex);
    return m_claimBusy;
}

void CommandChannel::setDriver(KernelDriver driver)
{
    const std::lock_guard lock(m_mutex);
    m_driver = driver;
}

KernelDriver CommandChannel::driver() const
{
    const std::lock_guard lock(m_mutex);
    return m_driver;
}

void CommandChannel::clearFaults()
{
    const std::lock_guard lock(m_mutex);
    m_faultCount = 0;
    m_stalls.clear();
    m_claimBusy = false;
    m_driver = KernelDriver::None;
}

std::string CommandChannel::statusText() const
{
    const std::lock_guard lock(m_mutex);
    std::string text;
    for (const auto& [endpoint, waiting] : m_waiting) {
        if (!waiting.empty())
            text += "\nwaiting-" + address(endpoint) + "=" + std::to_string(waiting.size());
    }
    if (m_faultCount > 0) {
        constexpr const char* names[] = {"none", "silent", "short", "garbage", "late"};
        text += std::string("\nusb-fault=") + names[static_cast<int>(m_fault)] + " " +
                std::to_string(m_faultCount);
    }
    for (const auto& [endpoint, count] : m_stalls) {
        if (count > 0)
            text += "\nusb-stall=" + address(endpoint) + " " + std::to_string(count);
    }
    return text + (m_claimBusy ? "\nusb-claim=busy" : "");
}

} // namespace vscan
