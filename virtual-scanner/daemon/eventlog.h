// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <mutex>
#include <string>

namespace vscan {

// The last events with their seconds since the first one, oldest first. Any thread.
class EventLog
{
public:
    void add(const std::string& line);
    std::string text(size_t maxBytes) const; // the newest lines that fit

private:
    mutable std::mutex m_mutex;
    std::deque<std::string> m_lines;
};

} // namespace vscan
