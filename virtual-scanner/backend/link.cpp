// SPDX-License-Identifier: GPL-3.0-or-later
#include "link.h"

#include <sys/time.h>

namespace vscan {

namespace {
constexpr int replySeconds = 60; // a page of 1200 dpi takes a few
}

bool Link::connect()
{
    const char* path = std::getenv(socketVariable);
    if (!path)
        return false;
    m_socket = connectTo(path);
    if (!m_socket)
        return false;
    const timeval patience{replySeconds, 0};
    setsockopt(m_socket.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    return true;
}

Status Link::request(const Fields& request, Fields& reply, Fd* data)
{
    if (!m_socket || !sendPacket(m_socket.get(), request) || receive(reply, data, 0) != 1) {
        m_socket = Fd(); // a late answer must not be taken for the next one's
        return Status::IoError;
    }
    return static_cast<Status>(number(reply, 0, static_cast<int>(Status::IoError)));
}

Status Link::request(const Fields& request)
{
    Fields reply;
    return this->request(request, reply);
}

void Link::post(const Fields& request)
{
    if (m_socket)
        sendPacket(m_socket.get(), request);
}

void Link::poll()
{
    char probe;
    if (m_socket && recv(m_socket.get(), &probe, 1, MSG_PEEK | MSG_DONTWAIT) < 0 && errno == EAGAIN)
        return; // the usual case, at every read
    Fields unexpected;
    if (m_socket && receive(unexpected, nullptr, MSG_DONTWAIT) == 0)
        m_socket = Fd();
    if (!m_socket && !m_interrupt)
        m_interrupt = Status::IoError;
}

// Next packet that is no notice; notices on the way are remembered.
int Link::receive(Fields& fields, Fd* data, int flags)
{
    int result;
    while ((result = receivePacket(m_socket.get(), fields, data, flags)) == 1 && fields[0] == interruptMark)
        m_interrupt = static_cast<Status>(number(fields, 1, static_cast<int>(Status::IoError)));
    return result;
}

} // namespace vscan
