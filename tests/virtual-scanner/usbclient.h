// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <libusb.h>
#include <memory>

// The scanner as a plain libusb program uses it: a context and a handle of its own.
class UsbClient
{
public:
    UsbClient()
    {
        libusb_context* context = nullptr;
        if (libusb_init(&context) == 0)
            m_context.reset(context);
        if (m_context)
            m_handle.reset(libusb_open_device_with_vid_pid(context, 0x0efd, 0x002a));
    }
    bool isOpen() const { return m_handle != nullptr; }
    libusb_device_handle* handle() const { return m_handle.get(); }
    int claim() const { return libusb_claim_interface(handle(), 0); }
    int release() const { return libusb_release_interface(handle(), 0); }

    // Number of bytes sent, or an error of libusb.
    int send(const QByteArray& frame) const
    {
        int sent = 0;
        const int error =
            libusb_bulk_transfer(handle(), 0x02, reinterpret_cast<uchar*>(const_cast<char*>(frame.data())),
                                 frame.size(), &sent, 1000);
        return error ? error : sent;
    }
    // Number of bytes received, or an error; what came is in `bytes`.
    int receive(QByteArray& bytes, int length = 64, unsigned timeoutMs = 1000) const
    {
        return transfer(libusb_bulk_transfer, 0x81, bytes, length, timeoutMs);
    }
    int event(QByteArray& bytes, int length = 8, unsigned timeoutMs = 100) const
    {
        return transfer(libusb_interrupt_transfer, 0x83, bytes, length, timeoutMs);
    }
    // The next key, 0 when none was pressed, else an error.
    int key(unsigned timeoutMs = 100) const
    {
        QByteArray bytes;
        const int got = event(bytes, 8, timeoutMs);
        if (got == LIBUSB_ERROR_TIMEOUT)
            return 0;
        return got == 4 && bytes.startsWith(QByteArray("\x04\x00\x00", 3)) ? bytes[3] : got < 0 ? got : -100;
    }

private:
    template <class Transfer>
    int transfer(Transfer function, uchar endpoint, QByteArray& bytes, int length, unsigned timeoutMs) const
    {
        bytes.fill('\0', length);
        int received = 0;
        const int error = function(handle(), endpoint, reinterpret_cast<uchar*>(bytes.data()), length,
                                   &received, timeoutMs);
        bytes.truncate(received);
        return error ? error : received;
    }

    struct Free
    {
        void operator()(libusb_context* context) const { libusb_exit(context); }
        void operator()(libusb_device_handle* handle) const { libusb_close(handle); }
    };
    std::unique_ptr<libusb_context, Free> m_context;
    std::unique_ptr<libusb_device_handle, Free> m_handle;
};
