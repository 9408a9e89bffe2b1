// SPDX-License-Identifier: GPL-3.0-or-later
#include "recognition/readingchild.h"

#include "recognition/boxrecord.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <exception>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::size_t kReadBlock = 9998; // bytes

std::string withErrno(const char* what, int error)
{
    return std::string(what) + " errno = " + std::to_string(error) + " " + std::strerror(error);
}

bool writeAll(int pipe, const std::string& bytes)
{
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t wrote = ::write(pipe, bytes.data() + done, bytes.size() - done);
        if (wrote < 0 && errno != EINTR)
            return false;
        done += wrote > 0 ? static_cast<std::size_t>(wrote) : 0;
    }
    return true;
}

// From here to _exit() only the reader, plain memory and the pipe are touched: the parent's other threads do
// not exist in the child, and a lock that one of them held would never be released.
[[noreturn]] void runChild(const ReadingChild::Task& task, int pipe, BoxReader& reader,
                           const std::vector<cv::Rect>& boxes, const ReadingOptions& options)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL); // ends with the parent, however that ends
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    if (task.nice > 0 && nice(task.nice) == -1)
        trace(options.traceTo, "nice errno = %d\n", errno); // harmless
    trace(options.traceTo, " %d son.PID is %d\n", task.worker, getpid());
    try {
        for (const int number : task.numbers) {
            BoxText text;
            text.number = number;
            text.box = boxes[static_cast<std::size_t>(number)];
            reader.read(text, options.symbols);
            trace(options.traceTo, "Box[%d]: x=%d, y=%d, w=%d, h=%d,confidence:%d\n", number, text.box.x,
                  text.box.y, text.box.width, text.box.height, text.confidence);
            if (!writeAll(pipe, encodeRecord(text)))
                break;
        }
        reader.finish();
    } catch (const std::exception& error) {
        trace(options.traceTo, "son %d: %s\n", task.worker, error.what());
    } catch (...) {
        trace(options.traceTo, "son %d: unknown exception\n", task.worker);
    }
    std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    trace(options.traceTo, "%d son end==================%02d:%02d:%02d\n", task.worker, local.tm_hour,
          local.tm_min, local.tm_sec);
    _exit(1);
}

} // namespace

void trace(int descriptor, const char* format, ...)
{
    if (descriptor < 0)
        return; // vdprintf would leak its buffer
    va_list values;
    va_start(values, format);
    vdprintf(descriptor, format, values);
    va_end(values);
}

ReadingChild::~ReadingChild()
{
    if (m_pid > 0)
        end(true);
}

bool ReadingChild::start(BoxReader& reader, const std::vector<cv::Rect>& boxes, const ReadingOptions& options)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        m_problem = withErrno("pipe error", errno);
        trace(options.traceTo, "pipe error\n%s\n", m_problem.c_str());
        return false;
    }
    const pid_t pid = fork();
    if (pid == 0) {
        close(ends[0]);
        runChild(m_task, ends[1], reader, boxes, options);
    }
    const int error = errno;
    close(ends[1]);
    if (pid < 0) {
        close(ends[0]);
        m_problem = withErrno("fork error", error);
        trace(options.traceTo, "%s\n", m_problem.c_str());
        return false;
    }
    m_started = true;
    m_pid = pid;
    m_pipe = ends[0];
    m_lastSign = Clock::now();
    return true;
}

void ReadingChild::readSome()
{
    std::array<char, kReadBlock> block;
    const ssize_t got = ::read(m_pipe, block.data(), block.size());
    if (got < 0 && errno == EINTR)
        return;
    if (got <= 0) {
        end(false);
        return;
    }
    m_bytes.append(block.data(), static_cast<std::size_t>(got));
    m_lastSign = Clock::now();
    m_usedAtLastBytes = m_used = processorTime();
}

std::chrono::nanoseconds ReadingChild::processorTime() const
{
    clockid_t clock{};
    timespec used{};
    if (clock_getcpuclockid(m_pid, &clock) != 0 || clock_gettime(clock, &used) != 0)
        return m_used;
    return std::chrono::seconds(used.tv_sec) + std::chrono::nanoseconds(used.tv_nsec);
}

void ReadingChild::killWhenSilent(std::chrono::milliseconds limit)
{
    if (m_pid <= 0)
        return;
    const std::chrono::nanoseconds used = processorTime();
    if (used > m_used) {
        m_used = used;
        m_lastSign = Clock::now();
    }
    if (Clock::now() - m_lastSign < limit && m_used - m_usedAtLastBytes < limit)
        return;
    end(true);
    m_problem = "silent for " + std::to_string(limit.count()) + " ms, killed";
}

void ReadingChild::end(bool kill)
{
    close(m_pipe);
    m_pipe = -1;
    if (kill)
        ::kill(m_pid, SIGKILL);
    int status = 0;
    pid_t ended = 0;
    while ((ended = waitpid(m_pid, &status, 0)) < 0 && errno == EINTR)
        continue;
    m_pid = -1;
    if (ended > 0 && WIFSIGNALED(status))
        m_problem = "killed by signal " + std::to_string(WTERMSIG(status));
}
