// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// What the backend inside a client and the daemon say to each other: packets of text fields over a Unix
// socket of type SOCK_SEQPACKET. A request is a verb with its arguments, a reply a status number with its
// results; a packet whose first field is "!" may come at any time and says that the page being read has
// failed, with the status as second field. No dependency beyond POSIX, so that the backend stays small.

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vscan {

using Fields = std::vector<std::string>;

// The numbers are those of the SANE standard.
enum class Status
{
    Good = 0,
    Unsupported = 1,
    Cancelled = 2,
    DeviceBusy = 3,
    Invalid = 4,
    EndOfFile = 5,
    Jammed = 6,
    NoDocs = 7,
    CoverOpen = 8,
    IoError = 9,
    NoMemory = 10,
    AccessDenied = 11
};

constexpr const char* socketVariable = "VSCAN_SOCKET";
constexpr const char* interruptMark = "!";
constexpr size_t maxPacket = 64 * 1024;

// Verbs of the backend; those of the command line are in daemon/commands.cpp.
namespace verb {
constexpr const char* devices = "@devices"; // -> Good, model (none when unplugged)
constexpr const char* open = "@open";
constexpr const char* start = "@start"; // ten option values -> StartReply fields and the page as a descriptor
constexpr const char* done = "@done";   // every byte of the page has been read
constexpr const char* failed = "@failed"; // the fault announced by the start reply has happened: status
constexpr const char* cancel = "@cancel"; // no reply
constexpr const char* close = "@close";
} // namespace verb

// Owner of a file descriptor.
class Fd
{
public:
    explicit Fd(int fd = -1) : m_fd(fd) {}
    Fd(Fd&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    Fd& operator=(Fd&& other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    ~Fd()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    int get() const { return m_fd; }
    explicit operator bool() const { return m_fd >= 0; }

private:
    int m_fd;
};

inline std::string join(const Fields& fields)
{
    std::string packet;
    for (const std::string& field : fields) {
        if (!packet.empty() || &field != &fields.front())
            packet += '\0';
        packet += field;
    }
    return packet;
}

inline Fields split(const std::string& packet)
{
    Fields fields(1);
    for (char c : packet) {
        if (c == '\0')
            fields.emplace_back();
        else
            fields.back() += c;
    }
    return fields;
}

// Field as a number; `fallback` when it is missing or anything but digits with an optional minus sign.
inline long long number(const Fields& fields, size_t index, long long fallback)
{
    if (index >= fields.size() || fields[index].empty())
        return fallback;
    char* end = nullptr;
    errno = 0;
    const long long value = std::strtoll(fields[index].c_str(), &end, 10);
    return *end || errno ? fallback : value;
}

// False when the peer is gone or does not read. `fd` travels with the packet when it is not negative.
inline bool sendPacket(int socket, const Fields& fields, int fd = -1, int flags = 0)
{
    std::string packet = join(fields);
    iovec part{packet.data(), packet.size()};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
    if (fd >= 0) {
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        cmsghdr* header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof(int));
        std::memcpy(CMSG_DATA(header), &fd, sizeof fd);
    }
    ssize_t sent;
    do {
        sent = sendmsg(socket, &message, MSG_NOSIGNAL | flags);
    } while (sent < 0 && errno == EINTR);
    return sent == static_cast<ssize_t>(packet.size());
}

// One packet: 1 received, 0 the peer is gone, -1 nothing there (with MSG_DONTWAIT, or the socket's time-out).
inline int receivePacket(int socket, Fields& fields, Fd* fd = nullptr, int flags = 0)
{
    std::string packet(maxPacket, '\0');
    iovec part{packet.data(), packet.size()};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    ssize_t got;
    do {
        got = recvmsg(socket, &message, MSG_CMSG_CLOEXEC | flags);
    } while (got < 0 && errno == EINTR);
    if (got < 0)
        return errno == EAGAIN || errno == EWOULDBLOCK ? -1 : 0;
    for (cmsghdr* header = CMSG_FIRSTHDR(&message); header; header = CMSG_NXTHDR(&message, header)) {
        if (header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS)
            continue;
        int received;
        std::memcpy(&received, CMSG_DATA(header), sizeof received);
        Fd owned(received);
        if (fd)
            *fd = std::move(owned);
    }
    if (got == 0)
        return 0;
    packet.resize(static_cast<size_t>(got));
    fields = split(packet);
    return 1;
}

// Address of a socket path; false when it is longer than the 107 bytes that the kernel takes.
inline bool socketAddress(const std::string& path, sockaddr_un& address)
{
    address = {};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, path.c_str(), path.size());
    return true;
}

// Connection to the daemon; empty (errno says why) when there is none.
inline Fd connectTo(const std::string& path)
{
    sockaddr_un address;
    if (!socketAddress(path, address)) {
        errno = ENAMETOOLONG;
        return Fd();
    }
    Fd fd(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    if (!fd || connect(fd.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        return Fd();
    return fd;
}

// What a start reply holds after its status.
struct StartReply
{
    int width = 0; // pixels
    int height = 0;
    bool colour = false; // RGB frame, else grey
    int depth = 8;       // bits per sample; 1: black is 1
    int bytesPerLine = 0;
    long long failAt = -1; // bytes after which the page fails, -1 never
    Status failStatus = Status::Good;
    long long microsecondsPerMiB = 0; // pace

    Fields toFields() const
    {
        return {std::to_string(width),
                std::to_string(height),
                std::to_string(colour),
                std::to_string(depth),
                std::to_string(bytesPerLine),
                std::to_string(failAt),
                std::to_string(static_cast<int>(failStatus)),
                std::to_string(microsecondsPerMiB)};
    }
    static StartReply fromFields(const Fields& fields, size_t first)
    {
        StartReply reply;
        reply.width = static_cast<int>(number(fields, first, 0));
        reply.height = static_cast<int>(number(fields, first + 1, 0));
        reply.colour = number(fields, first + 2, 0) != 0;
        reply.depth = static_cast<int>(number(fields, first + 3, 8));
        reply.bytesPerLine = static_cast<int>(number(fields, first + 4, 0));
        reply.failAt = number(fields, first + 5, -1);
        reply.failStatus = static_cast<Status>(number(fields, first + 6, 0));
        reply.microsecondsPerMiB = number(fields, first + 7, 0);
        return reply;
    }
};

} // namespace vscan
