// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "daemon/eventlog.h"
#include "wear.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vscan {

using Bytes = std::vector<uint8_t>;

namespace endpoint {
constexpr uint8_t commandOut = 0x02;
constexpr uint8_t replyIn = 0x81;
constexpr uint8_t eventIn = 0x83;
constexpr bool exists(long long address)
{
    return address == commandOut || address == replyIn || address == eventIn;
}
} // namespace endpoint

// A fault of the next packets that the device sends, on either endpoint.
enum class ReplyFault
{
    None,
    Silent,  // the packet is lost
    Short,   // cut after some bytes
    Garbage, // its length with other bytes
    Late     // sent after some milliseconds
};

enum class KernelDriver
{
    None,
    Bound,
    Stuck // cannot be detached
};

// The device behind the endpoints: turns command frames into replies, keeps what waits to be sent, and plays
// the ordered faults. Knows no USB library. Any thread.
class CommandChannel
{
public:
    using Clock = std::chrono::steady_clock;

    CommandChannel(Wear& wear, EventLog& log) : m_wear(wear), m_log(log) {}

    void receive(const Bytes& frame);     // on commandOut
    void press(uint8_t key);              // queues the key's report
    void queueReport(const Bytes& bytes); // any bytes, for tests

    // The next packet of an IN endpoint that is due; given out once.
    std::optional<Bytes> take(uint8_t address);
    std::optional<Clock::time_point> nextDue(uint8_t address) const; // of the packet that take() gives next
    void powerOff();                                                 // what waited is lost

    void setFault(ReplyFault fault, int count, int value); // value: bytes left (Short), milliseconds (Late)
    void setStall(uint8_t address, int count);
    bool takeStall(uint8_t address); // whether this transfer stalls
    void setClaimBusy(bool busy);
    bool claimBusy() const;
    void setDriver(KernelDriver driver);
    KernelDriver driver() const;
    void clearFaults();

    std::string statusText() const;
    void note(const std::string& text) { m_log.add(text); }

private:
    struct Packet
    {
        Bytes bytes;
        Clock::time_point due;
    };
    void enqueue(uint8_t address, Bytes bytes);
    Bytes counterReply(const Bytes& frame);
    Bytes standbyReply(const Bytes& frame);

    Wear& m_wear;
    EventLog& m_log;
    mutable std::mutex m_mutex;
    std::map<uint8_t, std::deque<Packet>> m_waiting;
    ReplyFault m_fault = ReplyFault::None;
    int m_faultCount = 0;
    int m_faultValue = 0;
    std::map<uint8_t, int> m_stalls;
    bool m_claimBusy = false;
    KernelDriver m_driver = KernelDriver::None;
};

// "04 00 00 01"
std::string hex(const Bytes& bytes);

} // namespace vscan
