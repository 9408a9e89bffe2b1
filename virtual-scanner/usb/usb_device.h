// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "channel.h"
#include "descriptors.h"
#include "usbport.h"

#include <functional>
#include <memory>

namespace vscan {

// The scanner at a USB port that exists only for programs started with the environment below: the unmodified
// libusb enumerates, opens, claims and uses it. This process must itself be preloaded (see preloadSelf), or
// the clients hear nothing of plugging.
//
// The plug is pulled and put in from the main thread; requests of the clients come in a thread of the
// testbed.
class UsbDevice : public UsbPort
{
public:
    // `refused` is asked, from any thread, whether something else holds the interface. The device files lie
    // in a new folder below `folder`, so that whoever clears that away takes along what a killed process
    // left; in the system's folder for temporary files when its path is too long for the sockets there.
    UsbDevice(CommandChannel& channel, UsbIdentity identity, const std::string& folder,
              std::function<bool()> refused);
    ~UsbDevice() override;

    bool plug() override;
    void unplug() override;
    void wake() override;
    bool claimed() const override;

private:
    class Testbed;
    std::unique_ptr<Testbed> m_testbed;
};

// Starts this program again with the preload library, once; returns only when that has happened already or
// failed (`error` set then).
void preloadSelf(char** argv, std::string& error);

// Variables that a client needs beside the ones of the SANE side: name and value.
std::vector<std::pair<std::string, std::string>> usbEnvironment();

// To be left out of a client's environment.
extern const char* const preloadedVariable;

} // namespace vscan
