// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/usbapi.h"

#include <functional>

// The scanner's command channel: opens the device, sends 8-byte frames and reads replies and key reports.
// Made for one exchange (initDevice, then SendCmd and ReadCmdBulk in pairs or ReadCmd alone, then
// releaseDevice) and used from one thread at a time. The numbers returned are a contract: callers compare
// them.
class usb_communicate
{
public:
    static constexpr int Done = 0;
    static constexpr int DeviceNotFound = 252;
    static constexpr int WriteFailed = 253;
    static constexpr int ReadFailed = 254;
    static constexpr int DeviceError = 255; // detaching or releasing failed

    usb_communicate();
    // With another USB library.
    explicit usb_communicate(std::unique_ptr<UsbApi> api);
    // Closes what is still open.
    ~usb_communicate();
    usb_communicate(const usb_communicate&) = delete;
    usb_communicate& operator=(const usb_communicate&) = delete;

    // 1 when the device can be opened, else 0. Leaves nothing open and does not touch what is.
    int checkUSBPrinter();

    // Opens the device and takes it from a kernel driver; first closes what a failed release left open.
    // Done; DeviceNotFound when it is absent or must not be opened (accessDenied()); DeviceError when the
    // kernel driver does not let go. Nothing is open after a failure.
    int initDevice();

    // Sends `length` bytes within 1 s. Done or WriteFailed.
    int SendCmd(unsigned char* frame, unsigned int length);

    // Reads a reply of up to `length` bytes within 2 s: the number of bytes, or ReadFailed.
    int ReadCmdBulk(unsigned char* buffer, unsigned int length);

    // Reads a key report of up to `length` bytes within 100 ms: the number of bytes, or ReadFailed; no report
    // is a failure too.
    int ReadCmd(unsigned char* buffer, unsigned int length);

    // Done, or DeviceError when the interface could not be released, which leaves the device open.
    int releaseDevice();

    // Whether the last initDevice() or checkUSBPrinter() met the device without the right to open it.
    bool accessDenied() const;

    bool isOpen() const;
    // Lets go of the device however its release went.
    void close();

private:
    using Context = std::unique_ptr<void, std::function<void(UsbContext)>>;
    using Handle = std::unique_ptr<void, std::function<void(UsbHandle)>>;

    bool open(Context& context, Handle& handle);
    bool claim();

    std::unique_ptr<UsbApi> m_api;
    Context m_context; // before the handle, which must go first
    Handle m_handle;
    bool m_accessDenied = false;
};
