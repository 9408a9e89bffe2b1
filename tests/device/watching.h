// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/buttonwatch.h"

#include <QStringList>
#include <QVector>
#include <mutex>
#include <thread>

// A watcher in a thread of its own, and what it reported.
class Watching
{
public:
    explicit Watching(std::unique_ptr<UsbApi> usb, ButtonWatch::Intervals intervals = {1, 1, 1})
        : watch(std::move(usb), intervals,
                {[this](int code) { add(m_codes, code); },
                 [this](const QString& word) { add(m_words, word); },
                 [this](bool denied) { add(m_access, denied); }})
    {
    }
    ~Watching() { stop(); }

    void start()
    {
        m_thread = std::thread([this] { watch.loop(); });
    }
    void stop()
    {
        watch.stop();
        if (m_thread.joinable())
            m_thread.join();
    }

    int count(int code) const { return codes().count(code); }
    int polls() const { return count(buttoncode::NoPress); }
    QVector<int> codes() const { return copy(m_codes); }
    QStringList words() const { return copy(m_words); }
    QVector<bool> access() const { return copy(m_access); }

private:
    template <typename List, typename Value>
    void add(List& list, const Value& value)
    {
        const std::lock_guard lock(m_mutex);
        list << value;
    }
    template <typename List>
    List copy(const List& list) const
    {
        const std::lock_guard lock(m_mutex);
        List own = list;
        own.detach(); // shares nothing with the other thread
        return own;
    }

    mutable std::mutex m_mutex;
    QVector<int> m_codes;
    QVector<bool> m_access;
    QStringList m_words;

public:
    ButtonWatch watch;

private:
    std::thread m_thread;
};
