// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/usbapi.h"

#include <libusb.h>

static_assert(int(UsbStatus::Access) == LIBUSB_ERROR_ACCESS, "statuses follow the library");
static_assert(int(UsbStatus::Pipe) == LIBUSB_ERROR_PIPE, "statuses follow the library");
static_assert(int(UsbStatus::NotSupported) == LIBUSB_ERROR_NOT_SUPPORTED, "statuses follow the library");
static_assert(int(UsbStatus::Other) == LIBUSB_ERROR_OTHER, "statuses follow the library");

namespace {

UsbStatus statusOf(int result)
{
    return result >= 0 ? UsbStatus::Good : static_cast<UsbStatus>(result);
}

libusb_device_handle* native(UsbHandle handle)
{
    return static_cast<libusb_device_handle*>(handle);
}

class LibUsb : public UsbApi
{
public:
    UsbStatus init(UsbContext& context) override
    {
        libusb_context* made = nullptr;
        const int result = libusb_init(&made);
        context = made;
        return statusOf(result);
    }

    void exit(UsbContext context) override { libusb_exit(static_cast<libusb_context*>(context)); }

    UsbStatus listDevices(UsbContext context, UsbList& list, std::vector<UsbDeviceInfo>& devices) override
    {
        devices.clear();
        libusb_device** entries = nullptr;
        const ssize_t count = libusb_get_device_list(static_cast<libusb_context*>(context), &entries);
        list = entries;
        for (ssize_t i = 0; i < count; ++i) {
            libusb_device_descriptor descriptor = {};
            if (libusb_get_device_descriptor(entries[i], &descriptor) == LIBUSB_SUCCESS)
                devices.push_back({entries[i], descriptor.idVendor, descriptor.idProduct});
        }
        return count < 0 ? static_cast<UsbStatus>(count) : UsbStatus::Good;
    }

    void freeList(UsbList list) override { libusb_free_device_list(static_cast<libusb_device**>(list), 1); }

    UsbStatus open(UsbDevice device, UsbHandle& handle) override
    {
        libusb_device_handle* opened = nullptr;
        const int result = libusb_open(static_cast<libusb_device*>(device), &opened);
        handle = opened;
        return statusOf(result);
    }

    void close(UsbHandle handle) override { libusb_close(native(handle)); }

    bool kernelDriverActive(UsbHandle handle, int interface) override
    {
        return libusb_kernel_driver_active(native(handle), interface) == 1;
    }

    UsbStatus detachKernelDriver(UsbHandle handle, int interface) override
    {
        return statusOf(libusb_detach_kernel_driver(native(handle), interface));
    }

    UsbStatus claim(UsbHandle handle, int interface) override
    {
        return statusOf(libusb_claim_interface(native(handle), interface));
    }

    UsbStatus release(UsbHandle handle, int interface) override
    {
        return statusOf(libusb_release_interface(native(handle), interface));
    }

    UsbStatus bulk(UsbHandle handle, unsigned char endpoint, unsigned char* data, int length,
                   int& transferred, unsigned int timeoutMs) override
    {
        transferred = 0;
        return statusOf(
            libusb_bulk_transfer(native(handle), endpoint, data, length, &transferred, timeoutMs));
    }

    UsbStatus interrupt(UsbHandle handle, unsigned char endpoint, unsigned char* data, int length,
                        int& transferred, unsigned int timeoutMs) override
    {
        transferred = 0;
        return statusOf(
            libusb_interrupt_transfer(native(handle), endpoint, data, length, &transferred, timeoutMs));
    }
};

} // namespace

std::unique_ptr<UsbApi> makeLibUsb()
{
    return std::make_unique<LibUsb>();
}
