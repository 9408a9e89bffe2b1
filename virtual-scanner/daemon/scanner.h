// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "eventlog.h"
#include "protocol.h"
#include "settings.h"
#include "state.h"
#include "usb/channel.h"
#include "usb/usbport.h"

#include <atomic>
#include <string>

namespace vscan {

struct ScannerSetup
{
    std::string feeder;  // folder, may be empty
    std::string flatbed; // picture, may be empty
    std::string model = "qwd200";
    double dpi = 300; // of pictures that state no resolution
    bool realSpeed = false;
    bool exclusive = false; // the image side and the USB side refuse each other
};

// The virtual scanner without its socket: carries out the requests of one client at a time that has it open
// and the commands of whoever controls it, and keeps the log of both.
class Scanner
{
public:
    Scanner() { m_state.countOn(m_wear); }

    // False with `error` set when feeder or flatbed cannot be loaded.
    bool setUp(const ScannerSetup& setup, std::string& error);

    struct Answer
    {
        Fields reply; // status first; empty: no reply is due
        Fd data;      // the page, after a start
    };
    // A request of the client behind connection `client` or, with any other first field, a command.
    Answer handle(const Fields& request, int client);
    void disconnected(int client); // closes the scanner if this connection held it open

    // The connection to be told that its page has failed; -1 when there is nothing to tell.
    int takeInterrupt(Status& status);

    // The USB side, if there is one: what it says, and its plug.
    CommandChannel& channel() { return m_channel; }
    void setUsb(UsbPort* usb) { m_usb = usb; }
    bool interfaceTaken() const { return m_setup.exclusive && m_opened; } // by the image side; any thread

private:
    friend struct Commands;

    Answer handleClient(const Fields& request, int client);
    Status open(int client);
    Answer start(const Fields& request);
    long long pace(const Settings& settings, const StartReply& page) const;
    bool load(const std::string& folder, std::string& error);
    bool setFlatbed(const std::string& file, std::string& error);
    std::string statusText() const;
    void log(const std::string& line) { m_log.add(line); }

    EventLog m_log;
    Wear m_wear;
    CommandChannel m_channel{m_wear, m_log};
    UsbPort* m_usb = nullptr;
    State m_state;
    ScannerSetup m_setup;
    int m_owner = -1; // connection that has the scanner open
    std::atomic<bool> m_opened{false};
    long long m_msPerMiB = -1; // pace that was ordered; -1: the speed of the setup
};

// Carries out one command of the control program: Good with a text, or Invalid with what is wrong.
Fields runCommand(Scanner& scanner, const Fields& command);

} // namespace vscan
