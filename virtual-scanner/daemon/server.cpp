// SPDX-License-Identifier: GPL-3.0-or-later
#include "server.h"

#include <algorithm>
#include <poll.h>
#include <sys/stat.h>

namespace vscan {

Server::~Server()
{
    if (m_socket)
        unlink(m_path.c_str());
}

bool Server::listen(const std::string& path, std::string& error)
{
    sockaddr_un address;
    if (!socketAddress(path, address)) {
        error = path + ": a socket path has 1 to 107 bytes";
        return false;
    }
    struct stat existing;
    if (lstat(path.c_str(), &existing) == 0) {
        if (!S_ISSOCK(existing.st_mode) || connectTo(path)) {
            error =
                path + (S_ISSOCK(existing.st_mode) ? ": another scanner listens there" : ": is no socket");
            return false;
        }
        unlink(path.c_str());
    }
    Fd fd(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!fd || bind(fd.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(fd.get(), SOMAXCONN) != 0) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    m_path = path;
    m_socket = std::move(fd);
    return true;
}

void Server::run(int signals, const std::function<bool()>& stop)
{
    for (;;) {
        std::vector<pollfd> waiting{{signals, POLLIN, 0}, {m_socket.get(), POLLIN, 0}};
        for (const Fd& client : m_clients)
            waiting.push_back({client.get(), POLLIN, 0});
        if (poll(waiting.data(), waiting.size(), -1) < 0) {
            if (errno == EINTR)
                continue;
            return;
        }
        if (waiting[0].revents && stop())
            return;
        // Old connections first: a client that died gives the scanner back before a new one asks for it.
        for (size_t i = waiting.size(); i-- > 2;) {
            if (waiting[i].revents && !serve(m_clients[i - 2]))
                m_clients.erase(m_clients.begin() + static_cast<long>(i) - 2);
        }
        if (waiting[1].revents)
            accept();
    }
}

// False when the connection has ended.
bool Server::serve(Fd& client)
{
    Fields request;
    const int got = receivePacket(client.get(), request, nullptr, MSG_DONTWAIT);
    bool alive = got != 0;
    if (got == 1) {
        const Scanner::Answer answer = m_scanner.handle(request, client.get());
        if (!answer.reply.empty())
            alive = sendPacket(client.get(), answer.reply, answer.data.get(), MSG_DONTWAIT);
    }
    if (!alive)
        m_scanner.disconnected(client.get());
    deliverInterrupt();
    return alive;
}

void Server::deliverInterrupt()
{
    Status status = Status::Good;
    const int client = m_scanner.takeInterrupt(status);
    if (client >= 0)
        sendPacket(client, {interruptMark, std::to_string(static_cast<int>(status))}, -1, MSG_DONTWAIT);
}

void Server::accept()
{
    Fd client(accept4(m_socket.get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (client)
        m_clients.push_back(std::move(client));
}

} // namespace vscan
