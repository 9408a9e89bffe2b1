// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "protocol.h"
#include "scanner.h"

#include <functional>
#include <string>
#include <vector>

namespace vscan {

// The scanner on its socket. Single-threaded: a request is carried out before the next one is looked at.
class Server
{
public:
    explicit Server(Scanner& scanner) : m_scanner(scanner) {}
    ~Server(); // removes the socket file

    // Takes over the file of a server that died; refuses one that lives, and anything that is no socket.
    bool listen(const std::string& path, std::string& error);

    // Serves until `stop` says so; it is asked whenever `signals` (a signalfd) has something to read.
    void run(int signals, const std::function<bool()>& stop);

private:
    bool serve(Fd& client);
    void deliverInterrupt();
    void accept();

    Scanner& m_scanner;
    std::string m_path;
    Fd m_socket;
    std::vector<Fd> m_clients;
};

} // namespace vscan
