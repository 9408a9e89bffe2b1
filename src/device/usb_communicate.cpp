// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/usb_communicate.h"

#include <QDebug>
#include <climits>

namespace {

constexpr std::uint16_t vendorId = 0x0EFD;
constexpr std::uint16_t productId = 0x002A;
constexpr int interfaceNumber = 0;

constexpr unsigned char commandOut = 0x02;
constexpr unsigned char replyIn = 0x81;
constexpr unsigned char eventIn = 0x83;

constexpr unsigned int commandMs = 1000;
constexpr unsigned int replyMs = 2000;
constexpr unsigned int eventMs = 100;

} // namespace

usb_communicate::usb_communicate() : usb_communicate(makeLibUsb()) {}

usb_communicate::usb_communicate(std::unique_ptr<UsbApi> api) : m_api(std::move(api)) {}

usb_communicate::~usb_communicate() = default;

// Looks for the scanner and opens it. On failure both stay as they are, empty.
bool usb_communicate::open(Context& context, Handle& handle)
{
    m_accessDenied = false;
    UsbContext made = nullptr;
    if (m_api->init(made) != UsbStatus::Good)
        return false;
    Context newContext(made, [this](UsbContext c) { m_api->exit(c); });

    UsbList entries = nullptr;
    std::vector<UsbDeviceInfo> devices;
    const UsbStatus listed = m_api->listDevices(made, entries, devices);
    const std::unique_ptr<void, std::function<void(UsbList)>> list(entries,
                                                                   [this](UsbList l) { m_api->freeList(l); });
    if (listed != UsbStatus::Good)
        return false;
    for (const UsbDeviceInfo& entry : devices) {
        if (entry.vendor != vendorId || entry.product != productId)
            continue;
        UsbHandle opened = nullptr;
        const UsbStatus status = m_api->open(entry.device, opened);
        if (status == UsbStatus::Good) {
            m_accessDenied = false;
            handle = Handle(opened, [this](UsbHandle h) { m_api->close(h); });
            context = std::move(newContext);
            return true;
        }
        m_accessDenied = m_accessDenied || status == UsbStatus::Access;
    }
    return false;
}

int usb_communicate::checkUSBPrinter()
{
    Context context;
    Handle handle;
    if (open(context, handle))
        return 1;
    qDebug("find device error");
    return 0;
}

int usb_communicate::initDevice()
{
    close();
    if (!open(m_context, m_handle))
        return DeviceNotFound;
    if (m_api->kernelDriverActive(m_handle.get(), interfaceNumber) &&
        m_api->detachKernelDriver(m_handle.get(), interfaceNumber) != UsbStatus::Good) {
        qWarning("GET_DEVICE_ERROR");
        close();
        return DeviceError;
    }
    return Done;
}

bool usb_communicate::claim()
{
    if (m_handle && m_api->claim(m_handle.get(), interfaceNumber) == UsbStatus::Good)
        return true;
    qWarning("Cannot Claim Interface");
    return false;
}

int usb_communicate::SendCmd(unsigned char* frame, unsigned int length)
{
    if (!claim())
        return WriteFailed;
    int sent = 0;
    if (length <= INT_MAX &&
        m_api->bulk(m_handle.get(), commandOut, frame, int(length), sent, commandMs) == UsbStatus::Good &&
        sent == int(length))
        return Done;
    qWarning("Write Error");
    return WriteFailed;
}

int usb_communicate::ReadCmdBulk(unsigned char* buffer, unsigned int length)
{
    if (!claim() || length > INT_MAX)
        return ReadFailed;
    int received = 0;
    const UsbStatus status = m_api->bulk(m_handle.get(), replyIn, buffer, int(length), received, replyMs);
    return status == UsbStatus::Good ? received : ReadFailed;
}

int usb_communicate::ReadCmd(unsigned char* buffer, unsigned int length)
{
    if (!claim() || length > INT_MAX)
        return ReadFailed;
    int received = 0;
    const UsbStatus status =
        m_api->interrupt(m_handle.get(), eventIn, buffer, int(length), received, eventMs);
    return status == UsbStatus::Good ? received : ReadFailed;
}

int usb_communicate::releaseDevice()
{
    if (!m_handle || m_api->release(m_handle.get(), interfaceNumber) != UsbStatus::Good) {
        qWarning("Cannot Release Interface");
        return DeviceError;
    }
    close();
    return Done;
}

bool usb_communicate::accessDenied() const
{
    return m_accessDenied;
}

bool usb_communicate::isOpen() const
{
    return m_handle != nullptr;
}

void usb_communicate::close()
{
    m_handle.reset();
    m_context.reset();
}
