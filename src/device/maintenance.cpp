// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/maintenance.h"

#include "device/usb_communicate.h"

#include <QtGlobal>

namespace maintenance {

namespace {

constexpr std::size_t kCounterReply = 64;
constexpr std::size_t kStandbyReply = 8;
constexpr std::size_t kCountByte = 8; // low byte first

Frame counterFrame(unsigned char action, Counter counter)
{
    return {'C', 'N', 'T', 'R', action, static_cast<unsigned char>(counter), 0, 0};
}

template <std::size_t Size>
int readReply(usb_communicate& channel, std::array<unsigned char, Size>& reply)
{
    const int length = channel.ReadCmdBulk(reply.data(), Size);
    if (length == usb_communicate::ReadFailed) {
        // A reply that is merely late must not be taken for the next one.
        std::array<unsigned char, Size> late;
        channel.ReadCmdBulk(late.data(), Size);
    }
    return length;
}

Reading readCounter(usb_communicate& channel, Counter counter)
{
    Frame frame = queryFrame(counter);
    if (channel.SendCmd(frame.data(), frame.size()) != usb_communicate::Done)
        return {Outcome::SendFailed, 0};
    std::array<unsigned char, kCounterReply> reply{};
    const int length = readReply(channel, reply);
    if (length == usb_communicate::ReadFailed)
        return {Outcome::ReadFailed, 0};
    if (length != int(kCounterReply))
        return {Outcome::ShortReply, 0};
    return {Outcome::Value, reply[kCountByte] + 256 * reply[kCountByte + 1]};
}

template <std::size_t ReplySize>
int sendCommand(usb_communicate& channel, Frame frame)
{
    const int opened = channel.initDevice();
    if (opened != usb_communicate::Done)
        return opened;
    int result = channel.SendCmd(frame.data(), frame.size());
    if (result == usb_communicate::Done) {
        std::array<unsigned char, ReplySize> reply{};
        if (readReply(channel, reply) == usb_communicate::ReadFailed)
            result = usb_communicate::ReadFailed;
    }
    channel.releaseDevice(); // what a failed release leaves open, the channel's end closes
    return result;
}

} // namespace

Frame queryFrame(Counter counter)
{
    return counterFrame(0x01, counter);
}

Frame resetFrame(Counter counter)
{
    return counterFrame(0x03, counter);
}

Frame standbyFrame(int minutes)
{
    const int held = qBound(0, minutes, kLongestStandby);
    return {'P', 'W', 'R', 0, 0, static_cast<unsigned char>(held % 60), static_cast<unsigned char>(held / 60),
            0};
}

Readings readCounters(usb_communicate& channel)
{
    Readings readings;
    if (channel.initDevice() != usb_communicate::Done) {
        readings.accessDenied = channel.accessDenied();
        return readings;
    }
    for (std::size_t i = 0; i < kReadingOrder.size(); ++i)
        readings.counters[i] = readCounter(channel, kReadingOrder[i]);
    channel.releaseDevice();
    return readings;
}

int resetCounter(usb_communicate& channel, Counter counter)
{
    return sendCommand<kCounterReply>(channel, resetFrame(counter));
}

int setStandby(usb_communicate& channel, int minutes)
{
    return sendCommand<kStandbyReply>(channel, standbyFrame(minutes));
}

Wear wear(int count, int limit)
{
    if (count >= limit)
        return Wear::Due;
    return count * 10 >= limit * 9 ? Wear::DueSoon : Wear::Fine;
}

} // namespace maintenance
