// SPDX-License-Identifier: GPL-3.0-or-later
#include "descriptors.h"

#include <cstdio>
#include <linux/usb/ch9.h>

namespace vscan {

namespace {

constexpr uint16_t deviceRelease = 0x0100;
constexpr uint8_t bulkPacket = 2; // times 256: the 512 bytes of a high-speed bulk endpoint
constexpr uint8_t eventPacket = 8;
constexpr uint16_t english = 0x0409;

constexpr uint8_t low(unsigned value)
{
    return static_cast<uint8_t>(value & 0xff);
}

constexpr uint8_t high(unsigned value)
{
    return static_cast<uint8_t>(value >> 8);
}

Bytes deviceDescriptor(const UsbIdentity& identity)
{
    return {USB_DT_DEVICE_SIZE,
            USB_DT_DEVICE,
            0x00,
            0x02,
            0,
            0,
            0,
            64, // USB 2.0, class per interface
            low(identity.vendor),
            high(identity.vendor),
            low(identity.product),
            high(identity.product),
            low(deviceRelease),
            high(deviceRelease),
            1,
            2,
            3,
            1};
}

Bytes configurationDescriptor()
{
    constexpr uint8_t total = USB_DT_CONFIG_SIZE + USB_DT_INTERFACE_SIZE + 3 * USB_DT_ENDPOINT_SIZE;
    return {USB_DT_CONFIG_SIZE, USB_DT_CONFIG, total, 0, 1, 1, 0,
            USB_CONFIG_ATT_ONE | USB_CONFIG_ATT_SELFPOWER, 1,
            // interface 0, of the vendor's class
            USB_DT_INTERFACE_SIZE, USB_DT_INTERFACE, 0, 0, 3, 0xff, 0xff, 0xff, 0,
            // endpoints; the last number is the poll interval (2^(4-1) microframes: 1 ms)
            USB_DT_ENDPOINT_SIZE, USB_DT_ENDPOINT, endpoint::commandOut, USB_ENDPOINT_XFER_BULK, 0,
            bulkPacket, 0, USB_DT_ENDPOINT_SIZE, USB_DT_ENDPOINT, endpoint::replyIn, USB_ENDPOINT_XFER_BULK,
            0, bulkPacket, 0, USB_DT_ENDPOINT_SIZE, USB_DT_ENDPOINT, endpoint::eventIn, USB_ENDPOINT_XFER_INT,
            eventPacket, 0, 4};
}

Bytes stringDescriptor(const std::string& text)
{
    Bytes bytes{static_cast<uint8_t>(2 + 2 * text.size()), USB_DT_STRING};
    for (char c : text) {
        bytes.push_back(static_cast<uint8_t>(c));
        bytes.push_back(0);
    }
    return bytes;
}

std::optional<Bytes> descriptor(const UsbIdentity& identity, uint8_t type, uint8_t index)
{
    if (type == USB_DT_DEVICE)
        return deviceDescriptor(identity);
    if (type == USB_DT_CONFIG && index == 0)
        return configurationDescriptor();
    if (type != USB_DT_STRING || index > 3)
        return std::nullopt;
    if (index == 0)
        return Bytes{4, USB_DT_STRING, low(english), high(english)};
    return stringDescriptor(index == 1 ? "Virtual" : index == 2 ? identity.name : "000001");
}

std::string plainHex(const Bytes& bytes)
{
    std::string text = hex(bytes);
    std::string plain;
    for (char c : text) {
        if (c != ' ')
            plain += c;
    }
    return plain;
}

std::string format(const char* pattern, unsigned a, unsigned b = 0, unsigned c = 0)
{
    char text[64];
    std::snprintf(text, sizeof text, pattern, a, b, c);
    return text;
}

} // namespace

Bytes descriptors(const UsbIdentity& identity)
{
    Bytes all = deviceDescriptor(identity);
    const Bytes configuration = configurationDescriptor();
    all.insert(all.end(), configuration.begin(), configuration.end());
    return all;
}

std::optional<Bytes> controlReply(const UsbIdentity& identity, const Bytes& setup)
{
    if (setup.size() < 8)
        return std::nullopt;
    const uint8_t direction = setup[0] & USB_DIR_IN;
    if ((setup[0] & USB_TYPE_MASK) != USB_TYPE_STANDARD)
        return std::nullopt;
    std::optional<Bytes> reply;
    switch (setup[1]) {
    case USB_REQ_GET_DESCRIPTOR:
        reply = descriptor(identity, setup[3], setup[2]);
        break;
    case USB_REQ_GET_STATUS:
        reply = Bytes{0, 0};
        break;
    case USB_REQ_GET_CONFIGURATION:
        reply = Bytes{1};
        break;
    case USB_REQ_GET_INTERFACE:
        reply = Bytes{0};
        break;
    case USB_REQ_CLEAR_FEATURE:
    case USB_REQ_SET_CONFIGURATION:
    case USB_REQ_SET_INTERFACE:
        return direction == USB_DIR_OUT ? std::optional<Bytes>(Bytes{}) : std::nullopt;
    }
    const size_t asked = setup[6] + 256u * setup[7];
    if (reply && reply->size() > asked)
        reply->resize(asked);
    return reply;
}

std::string UsbAddress::node() const
{
    return format("/dev/bus/usb/%03u/%03u", static_cast<unsigned>(bus), static_cast<unsigned>(device));
}

std::string deviceRecord(const UsbIdentity& identity, const UsbAddress& address)
{
    const unsigned bus = static_cast<unsigned>(address.bus);
    const unsigned device = static_cast<unsigned>(address.device);
    return std::string("P: ") + usbDevicePath +
           "\n" + // no "N:" line: it would put a plain file over the pipe
           "E: SUBSYSTEM=usb\nE: DEVTYPE=usb_device\nE: MAJOR=189\nE: DEVNAME=" + address.node() +
           format("\nE: MINOR=%u\nE: BUSNUM=%03u\nE: DEVNUM=%03u", static_cast<unsigned>(address.minor()),
                  bus, device) +
           format("\nE: PRODUCT=%x/%x/%x", identity.vendor, identity.product, deviceRelease) +
           format("\nA: busnum=%u\\n\nA: devnum=%u\\n", bus, device) +
           format("\nA: idVendor=%04x\\n\nA: idProduct=%04x\\n", identity.vendor, identity.product) +
           "\nA: speed=480\\n\nA: bConfigurationValue=1\\n\nA: bNumConfigurations=1\\n\nA: "
           "manufacturer=Virtual\\n"
           "\nA: product=" +
           identity.name + "\\n\nH: descriptors=" + plainHex(descriptors(identity)) + "\n\n";
}

} // namespace vscan
