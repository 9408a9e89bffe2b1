// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "channel.h"

#include <string>

namespace vscan {

struct UsbIdentity
{
    uint16_t vendor = 0x0efd;
    uint16_t product = 0x002a;
    std::string name = "qwd200";
};

// Device and configuration descriptor, as the kernel's file "descriptors" holds them.
Bytes descriptors(const UsbIdentity& identity);

// Answer to a standard control request, its 8 setup bytes given; nothing: the request stalls.
std::optional<Bytes> controlReply(const UsbIdentity& identity, const Bytes& setup);

// What the testbed takes to make the device appear in sysfs.
struct UsbAddress
{
    int bus = 1;
    int device = 1;
    int minor() const { return (bus - 1) * 128 + device - 1; }
    std::string node() const; // "/dev/bus/usb/001/002"
};
constexpr const char* usbDevicePath = "/devices/vscan/usb1/1-1"; // below /sys
std::string deviceRecord(const UsbIdentity& identity, const UsbAddress& address);

} // namespace vscan
