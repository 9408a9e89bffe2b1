// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// The USB calls that the command channel needs, as an interface: one implementation calls libusb, tests
// script the replies. Nothing is decided behind it, and the numbers are those of libusb. The contexts, lists
// and handles are opaque; who got one gives it back. All calls about one context come from one thread at a
// time.

enum class UsbStatus : int
{
    Good = 0,
    Io = -1,
    InvalidParam = -2,
    Access = -3, // the device is there, but this user may not open it
    NoDevice = -4,
    NotFound = -5,
    Busy = -6,
    Timeout = -7,
    Overflow = -8,
    Pipe = -9, // the endpoint is halted
    NotSupported = -12,
    Other = -99,
};

using UsbContext = void*;
using UsbList = void*;
using UsbDevice = void*;
using UsbHandle = void*;

// An entry of the device list; valid until the list is freed.
struct UsbDeviceInfo
{
    UsbDevice device = nullptr;
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;
};

class UsbApi
{
public:
    virtual ~UsbApi() = default;

    virtual UsbStatus init(UsbContext& context) = 0;
    virtual void exit(UsbContext context) = 0;
    virtual UsbStatus listDevices(UsbContext context, UsbList& list, std::vector<UsbDeviceInfo>& devices) = 0;
    virtual void freeList(UsbList list) = 0;
    virtual UsbStatus open(UsbDevice device, UsbHandle& handle) = 0;
    virtual void close(UsbHandle handle) = 0;
    virtual bool kernelDriverActive(UsbHandle handle, int interface) = 0;
    virtual UsbStatus detachKernelDriver(UsbHandle handle, int interface) = 0;
    virtual UsbStatus claim(UsbHandle handle, int interface) = 0;
    virtual UsbStatus release(UsbHandle handle, int interface) = 0;
    // Endpoint addresses from 0x80 up read into `data`. `transferred` counts bytes, also of a failed
    // transfer.
    virtual UsbStatus bulk(UsbHandle handle, unsigned char endpoint, unsigned char* data, int length,
                           int& transferred, unsigned int timeoutMs) = 0;
    virtual UsbStatus interrupt(UsbHandle handle, unsigned char endpoint, unsigned char* data, int length,
                                int& transferred, unsigned int timeoutMs) = 0;
};

// The system's USB library.
std::unique_ptr<UsbApi> makeLibUsb();
