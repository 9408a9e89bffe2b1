// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/saneapi.h"

#include <QByteArray>
#include <QStringList>
#include <algorithm>
#include <cstring>
#include <deque>
#include <functional>

// One frame as a scanner would send it, in these portions.
struct ScriptedFrame
{
    FrameParameters parameters;
    std::vector<QByteArray> portions;
    SaneStatus end = SaneStatus::Eof; // after the last portion
    SaneStatus parametersStatus = SaneStatus::Good;
};

inline ScriptedFrame frame(FrameFormat format, int width, int lines, int depth,
                           std::vector<QByteArray> portions, bool lastFrame = true)
{
    const int samples = width * (format == FrameFormat::Rgb ? 3 : 1);
    return {{format, lastFrame, (samples * depth + 7) / 8, width, lines, depth},
            std::move(portions),
            SaneStatus::Eof,
            SaneStatus::Good};
}

// What the scanner answers, and what it was asked.
struct Script
{
    std::vector<SaneDeviceInfo> devices = {{"net:a", "Acme", "other", "flatbed"},
                                           {"test:0", "Zarn", "qwd200", "sheet fed"}};
    std::deque<SaneStatus> opens;  // then good
    std::deque<SaneStatus> starts; // then good while frames are left, else no documents
    std::deque<ScriptedFrame> frames;
    std::function<void()> onRead; // before each answer to a read
    QStringList calls; // "init", "exit", "open test:0", "option 2=Flatbed", "start", "cancel", "close"

    int count(const QString& call) const { return int(calls.count(call)); }
};

class ScriptedSane : public SaneApi
{
public:
    explicit ScriptedSane(Script& script) : m_script(script) {}

    SaneStatus init(int& version) override
    {
        m_script.calls << "init";
        version = 0x01000000;
        return SaneStatus::Good;
    }
    void exit() override { m_script.calls << "exit"; }
    SaneStatus localDevices(std::vector<SaneDeviceInfo>& devices) override
    {
        devices = m_script.devices;
        return SaneStatus::Good;
    }
    SaneStatus open(const std::string& name, SaneHandle& handle) override
    {
        m_script.calls << "open " + QString::fromStdString(name);
        handle = this;
        return next(m_script.opens, SaneStatus::Good);
    }
    void close(SaneHandle) override { m_script.calls << "close"; }
    SaneStatus setOption(SaneHandle, int option, int value) override
    {
        m_script.calls << QString("option %1=%2").arg(option).arg(value);
        return SaneStatus::Good;
    }
    SaneStatus setOption(SaneHandle, int option, const std::string& value) override
    {
        m_script.calls << QString("option %1=%2").arg(option).arg(QString::fromStdString(value));
        return SaneStatus::Good;
    }
    SaneStatus start(SaneHandle) override
    {
        m_script.calls << "start";
        const SaneStatus status =
            next(m_script.starts, m_script.frames.empty() ? SaneStatus::NoDocs : SaneStatus::Good);
        if (status != SaneStatus::Good)
            return status;
        m_frame = next(m_script.frames, ScriptedFrame());
        m_portion = 0;
        return SaneStatus::Good;
    }
    SaneStatus parameters(SaneHandle, FrameParameters& parameters) override
    {
        parameters = m_frame.parameters;
        return m_frame.parametersStatus;
    }
    SaneStatus read(SaneHandle, unsigned char* data, int capacity, int& length) override
    {
        if (m_script.onRead)
            m_script.onRead();
        length = 0;
        if (m_portion == m_frame.portions.size())
            return m_frame.end;
        QByteArray& portion = m_frame.portions[m_portion];
        length = std::min(capacity, int(portion.size()));
        std::memcpy(data, portion.constData(), std::size_t(length));
        portion.remove(0, length);
        if (portion.isEmpty())
            ++m_portion;
        return SaneStatus::Good;
    }
    void cancel(SaneHandle) override { m_script.calls << "cancel"; }
    std::string statusText(SaneStatus status) override { return "status " + std::to_string(int(status)); }

private:
    template <typename T>
    static T next(std::deque<T>& queue, T otherwise)
    {
        if (queue.empty())
            return otherwise;
        T first = queue.front();
        queue.pop_front();
        return first;
    }

    Script& m_script;
    ScriptedFrame m_frame;
    std::size_t m_portion = 0;
};
