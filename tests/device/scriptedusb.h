// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/usbapi.h"

#include <QByteArray>
#include <QStringList>
#include <QVector>
#include <algorithm>
#include <cstring>
#include <deque>
#include <functional>
#include <mutex>

// What the USB side answers, and what it was asked. Lock `mutex` while a thread polls.
struct UsbScript
{
    struct Reply
    {
        UsbStatus status = UsbStatus::Good;
        QByteArray bytes;
    };
    struct Transfer
    {
        bool bulk;
        int endpoint;
        QByteArray bytes; // as sent
        int length;
        unsigned int timeoutMs;
    };

    std::recursive_mutex mutex;
    bool present = true;
    UsbStatus init = UsbStatus::Good, list = UsbStatus::Good, opening = UsbStatus::Good;
    bool kernelDriver = false;
    UsbStatus detach = UsbStatus::Good, claim = UsbStatus::Good, release = UsbStatus::Good;
    std::deque<Reply> reports; // of the interrupt endpoint; then time-outs
    std::deque<Reply> replies; // of the bulk endpoint; then time-outs
    Reply writing;             // its bytes count as those that did not go out
    std::function<void()> onRead;

    QVector<Transfer> transfers;
    QStringList calls;                                   // "detach", "claim", "release"
    int contexts = 0, lists = 0, handles = 0, opens = 0; // opens: ever, the others: now

    // For the test's thread.
    int kept()
    {
        const std::lock_guard lock(mutex);
        return contexts + lists + handles;
    }
    void press(int code)
    {
        const std::lock_guard lock(mutex);
        reports.push_back({UsbStatus::Good, QByteArray("\x04\0\0", 3) + char(code)});
    }
    template <typename Value>
    void set(Value& member, const Value& value)
    {
        const std::lock_guard lock(mutex);
        member = value;
    }
    template <typename Value>
    Value get(const Value& member)
    {
        const std::lock_guard lock(mutex);
        return member;
    }
};

class ScriptedUsb : public UsbApi
{
public:
    explicit ScriptedUsb(UsbScript& script) : m_script(script) {}

    UsbStatus init(UsbContext& context) override
    {
        const std::lock_guard lock(m_script.mutex);
        if (m_script.init == UsbStatus::Good) {
            context = &m_script.contexts;
            ++m_script.contexts;
        }
        return m_script.init;
    }
    void exit(UsbContext) override
    {
        const std::lock_guard lock(m_script.mutex);
        --m_script.contexts;
        if (m_script.handles > m_script.contexts)
            qFatal("a context ended before its handle");
    }
    UsbStatus listDevices(UsbContext, UsbList& list, std::vector<UsbDeviceInfo>& devices) override
    {
        const std::lock_guard lock(m_script.mutex);
        if (m_script.list != UsbStatus::Good)
            return m_script.list;
        list = &m_script.lists;
        ++m_script.lists;
        devices = {{nullptr, 0x0EFD, 0x0029}, {nullptr, 0x1D6B, 0x002A}};
        if (m_script.present)
            devices.push_back({&m_script, 0x0EFD, 0x002A});
        return UsbStatus::Good;
    }
    void freeList(UsbList) override
    {
        const std::lock_guard lock(m_script.mutex);
        --m_script.lists;
    }
    UsbStatus open(UsbDevice device, UsbHandle& handle) override
    {
        const std::lock_guard lock(m_script.mutex);
        if (!device || m_script.lists != 1)
            qFatal("opens another device, or one of a freed list");
        if (m_script.opening == UsbStatus::Good) {
            handle = &m_script.handles;
            ++m_script.handles;
            ++m_script.opens;
        }
        return m_script.opening;
    }
    void close(UsbHandle) override
    {
        const std::lock_guard lock(m_script.mutex);
        --m_script.handles;
    }
    bool kernelDriverActive(UsbHandle, int) override { return m_script.kernelDriver; }
    UsbStatus detachKernelDriver(UsbHandle, int number) override
    {
        return call("detach", number, m_script.detach);
    }
    UsbStatus claim(UsbHandle, int number) override { return call("claim", number, m_script.claim); }
    UsbStatus release(UsbHandle, int number) override { return call("release", number, m_script.release); }

    UsbStatus bulk(UsbHandle, unsigned char endpoint, unsigned char* data, int length, int& transferred,
                   unsigned int timeoutMs) override
    {
        const std::lock_guard lock(m_script.mutex);
        const bool in = endpoint & 0x80;
        m_script.transfers << UsbScript::Transfer{
            true, endpoint, in ? QByteArray() : QByteArray(reinterpret_cast<char*>(data), length), length,
            timeoutMs};
        if (in)
            return take(m_script.replies, data, length, transferred);
        transferred = length - m_script.writing.bytes.size();
        return m_script.writing.status;
    }
    UsbStatus interrupt(UsbHandle, unsigned char endpoint, unsigned char* data, int length, int& transferred,
                        unsigned int timeoutMs) override
    {
        std::function<void()> onRead;
        {
            const std::lock_guard lock(m_script.mutex);
            onRead = m_script.onRead;
        }
        if (onRead)
            onRead();
        const std::lock_guard lock(m_script.mutex);
        m_script.transfers << UsbScript::Transfer{false, endpoint, {}, length, timeoutMs};
        return take(m_script.reports, data, length, transferred);
    }

private:
    UsbStatus call(const char* name, int number, UsbStatus status)
    {
        const std::lock_guard lock(m_script.mutex);
        if (number != 0)
            qFatal("another interface than 0");
        m_script.calls << QLatin1String(name);
        return status;
    }

    static UsbStatus take(std::deque<UsbScript::Reply>& from, unsigned char* data, int length,
                          int& transferred)
    {
        transferred = 0;
        if (from.empty())
            return UsbStatus::Timeout;
        const UsbScript::Reply reply = from.front();
        from.pop_front();
        transferred = std::min(length, int(reply.bytes.size()));
        std::memcpy(data, reply.bytes.constData(), std::size_t(transferred));
        return reply.bytes.size() > length ? UsbStatus::Overflow : reply.status;
    }

    UsbScript& m_script;
};
