// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recognition/boxreading.h"

#include <string>
#include <sys/types.h>
#include <vector>

// A debug line, written at once and without a lock of the parent; nothing when `descriptor` is negative.
[[gnu::format(printf, 2, 3)]] void trace(int descriptor, const char* format, ...);

// One forked child that reads some boxes and reports through its pipe. The parent's half: gathers the bytes,
// watches the clock, waits for the process. An unfinished child is killed when the object goes.
class ReadingChild
{
public:
    using Clock = std::chrono::steady_clock;

    struct Task
    {
        int worker = 0; // from 1
        std::vector<int> numbers;
        int nice = 0; // steps of priority that the child gives away
    };

    explicit ReadingChild(Task task) : m_task(std::move(task)) {}
    ~ReadingChild();
    ReadingChild(const ReadingChild&) = delete;
    ReadingChild& operator=(const ReadingChild&) = delete;

    // False when no pipe or process could be made; problem() tells.
    bool start(BoxReader& reader, const std::vector<cv::Rect>& boxes, const ReadingOptions& options);

    int pipe() const { return m_pipe; } // to poll; -1 when nothing more will come
    void readSome();                    // one block; at the pipe's end the child is waited for

    // Kills it when it has neither written nor used processor time for `limit`, or has used that much since
    // it wrote last. On a crowded machine a child may wait long for its turn.
    void killWhenSilent(std::chrono::milliseconds limit);

    bool started() const { return m_started; }
    const Task& task() const { return m_task; }
    const std::string& bytes() const { return m_bytes; }
    const std::string& problem() const { return m_problem; } // empty: ended in order

private:
    void end(bool kill);
    std::chrono::nanoseconds processorTime() const;

    Task m_task;
    bool m_started = false;
    pid_t m_pid = -1;
    int m_pipe = -1;
    std::string m_bytes;
    std::string m_problem;
    Clock::time_point m_lastSign;                             // of life: bytes, or processor time used
    std::chrono::nanoseconds m_used{0}, m_usedAtLastBytes{0}; // processor time
};
