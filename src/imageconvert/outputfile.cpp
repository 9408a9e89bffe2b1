// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/outputfile.h"

#include "imageconvert/pictureerror.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>

namespace imageconvert {

namespace {

// Keeps a write beyond RLIMIT_FSIZE from killing the process: the signal is held back for the length of the
// write and taken away if the write raised it.
class FileSizeSignalGuard
{
public:
    FileSizeSignalGuard()
    {
        sigemptyset(&m_signal);
        sigaddset(&m_signal, SIGXFSZ);
        pthread_sigmask(SIG_BLOCK, &m_signal, &m_former);
    }
    ~FileSizeSignalGuard()
    {
        if (!sigismember(&m_former, SIGXFSZ)) {
            const timespec now{0, 0};
            while (sigtimedwait(&m_signal, nullptr, &now) == -1 && errno == EINTR) {
            }
        }
        pthread_sigmask(SIG_SETMASK, &m_former, nullptr);
    }

private:
    sigset_t m_signal;
    sigset_t m_former;
};

bool meansFull(int error)
{
    return error == ENOSPC || error == EFBIG || error == EDQUOT;
}

} // namespace

OutputFile::OutputFile(const std::string& path) : m_path(path)
{
    static std::atomic<unsigned> counter{0};
    const size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
    for (int attempt = 0; attempt < 100 && m_fd < 0; ++attempt) {
        m_temporary =
            folder + ".page-" + std::to_string(getpid()) + "-" + std::to_string(counter++) + ".part";
        m_fd = open(m_temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (m_fd < 0 && errno != EEXIST)
            break;
    }
    if (m_fd < 0) {
        m_errno = errno;
        m_temporary.clear();
        throwIfFailed();
    }
}

OutputFile::~OutputFile()
{
    if (m_fd >= 0)
        close(m_fd);
    if (!m_temporary.empty())
        unlink(m_temporary.c_str());
}

bool OutputFile::write(const void* data, size_t size)
{
    const FileSizeSignalGuard guard;
    const char* at = static_cast<const char*>(data);
    while (size > 0 && m_errno == 0) {
        const ssize_t done = ::write(m_fd, at, size);
        if (done < 0 && errno != EINTR)
            m_errno = errno;
        else if (done == 0)
            m_errno = ENOSPC;
        else if (done > 0) {
            at += done;
            size -= static_cast<size_t>(done);
        }
    }
    return m_errno == 0;
}

off_t OutputFile::seek(off_t offset, int whence)
{
    return lseek(m_fd, offset, whence);
}

ssize_t OutputFile::read(void* data, size_t size)
{
    return ::read(m_fd, data, size);
}

void OutputFile::commit()
{
    throwIfFailed();
    const int fd = m_fd;
    m_fd = -1;
    if (close(fd) != 0 || rename(m_temporary.c_str(), m_path.c_str()) != 0) {
        m_errno = errno;
        throwIfFailed();
    }
    m_temporary.clear();
}

void OutputFile::throwIfFailed() const
{
    if (m_errno != 0)
        throw PictureError("cannot write " + m_path + ": " + std::strerror(m_errno), meansFull(m_errno));
}

} // namespace imageconvert
