// SPDX-License-Identifier: GPL-3.0-or-later
#include "eventlog.h"

#include <chrono>
#include <cstdio>

namespace vscan {

namespace {
constexpr size_t maxLines = 300;
}

void EventLog::add(const std::string& line)
{
    using namespace std::chrono;
    static const auto began = steady_clock::now();
    char stamp[32];
    std::snprintf(stamp, sizeof stamp, "%10.3f ", duration<double>(steady_clock::now() - began).count());
    const std::lock_guard lock(m_mutex);
    m_lines.push_back(stamp + line);
    if (m_lines.size() > maxLines)
        m_lines.pop_front();
}

std::string EventLog::text(size_t maxBytes) const
{
    const std::lock_guard lock(m_mutex);
    std::string text;
    for (auto line = m_lines.rbegin(); line != m_lines.rend() && text.size() + line->size() < maxBytes;
         ++line)
        text = text.empty() ? *line : *line + "\n" + text;
    return text;
}

} // namespace vscan
