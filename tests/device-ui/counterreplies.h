// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/scriptedusb.h"

// What the device answers to a counter query; bytes that carry nothing are not zero.
inline QByteArray counterReply(int value, int length = 64)
{
    QByteArray reply(64, '\xEE');
    reply[8] = char(value & 0xFF);
    reply[9] = char(value >> 8);
    return reply.left(length);
}

// The frames that went out, in hexadecimal.
inline QList<QByteArray> sentFrames(const UsbScript& script)
{
    QList<QByteArray> frames;
    for (const auto& transfer : script.transfers)
        if (transfer.endpoint == 0x02)
            frames << transfer.bytes.toHex(' ');
    return frames;
}
