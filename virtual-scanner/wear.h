// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

namespace vscan {

// What the scanner counts of itself, and its standby time. Any thread.
class Wear
{
public:
    struct Part
    {
        const char* name;
        uint8_t code; // in the frames of the command channel
    };
    static constexpr std::array<Part, 3> parts{{{"scan", 0x04}, {"roller", 0x01}, {"pad", 0x02}}};
    static constexpr int maxCount = 65535;

    void pageScanned() { increase(0); }
    void sheetFed()
    {
        increase(1);
        increase(2);
    }
    std::atomic<int>& counter(size_t part) { return m_counters[part]; } // by its place in `parts`
    std::atomic<int>& standbyMinutes() { return m_standbyMinutes; }

private:
    // A worn part must not look new: the counters stay at their end.
    void increase(size_t part)
    {
        int count = m_counters[part];
        while (count < maxCount && !m_counters[part].compare_exchange_weak(count, count + 1)) {
        }
    }

    std::array<std::atomic<int>, 3> m_counters{};
    std::atomic<int> m_standbyMinutes{15};
};

} // namespace vscan
