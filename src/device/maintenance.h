// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

class usb_communicate;

// The scanner's wear counters and its standby time: the frames, and one exchange each. An exchange opens the
// device, takes up to some seconds when the device does not answer, and releases it: call it off the GUI
// thread.
namespace maintenance {

enum class Counter : unsigned char // the device's code
{
    Scans = 0x04,
    FeedRoller = 0x01,
    PadModule = 0x02,
};
inline constexpr std::array<Counter, 3> kReadingOrder{Counter::Scans, Counter::FeedRoller,
                                                      Counter::PadModule};
inline constexpr int kLargestCount = 65535;  // the device keeps 16 bits
inline constexpr int kLongestStandby = 1440; // minutes

using Frame = std::array<unsigned char, 8>;
Frame queryFrame(Counter counter);
Frame resetFrame(Counter counter);
// Standby after `minutes` without work; 0 means never. Held to 0 .. kLongestStandby.
Frame standbyFrame(int minutes);

enum class Outcome
{
    Value,
    SendFailed, // or the device could not be opened
    ReadFailed,
    ShortReply,
};

struct Reading
{
    Outcome outcome = Outcome::SendFailed;
    int value = 0; // 0 .. kLargestCount
};

struct Readings
{
    std::array<Reading, 3> counters; // in kReadingOrder
    bool accessDenied = false;       // the device is there, but this user may not open it
};
Readings readCounters(usb_communicate& channel);

// The codes of usb_communicate: 0, or the one that ended the exchange. A reply of any length is a success.
int resetCounter(usb_communicate& channel, Counter counter);
int setStandby(usb_communicate& channel, int minutes);

enum class Wear
{
    Fine,
    DueSoon, // from nine tenths of the limit on
    Due,
};
// `limit` in sheets, at least 1.
Wear wear(int count, int limit);

} // namespace maintenance
