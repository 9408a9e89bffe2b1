// SPDX-License-Identifier: GPL-3.0-or-later
#include "counterreplies.h"
#include "device/maintenance.h"
#include "device/usb_communicate.h"

#include <QtTest>

using maintenance::Counter;
using maintenance::Outcome;

// Frames and outcomes that the tests of the page and of the device in software do not reach.
class MaintenanceTest : public QObject
{
    Q_OBJECT

    UsbScript m_script;
    usb_communicate m_channel{std::make_unique<ScriptedUsb>(m_script)};

private slots:
    void standbyFrames()
    {
        const QList<QPair<int, QByteArray>> frames{
            {59, "50 57 52 00 00 3b 00 00"},    {60, "50 57 52 00 00 00 01 00"},
            {90, "50 57 52 00 00 1e 01 00"},    {1440, "50 57 52 00 00 00 18 00"},
            {99999, "50 57 52 00 00 00 18 00"}, {-5, "50 57 52 00 00 00 00 00"}};
        for (const auto& [minutes, frame] : frames) {
            const auto bytes = maintenance::standbyFrame(minutes);
            QCOMPARE(QByteArray(reinterpret_cast<const char*>(bytes.data()), int(bytes.size())).toHex(' '),
                     frame);
        }
    }

    void repliesThatAreNoCount()
    {
        for (int length : {0, 1, 8, 9, 10, 63}) {
            for (int i = 0; i < 3; ++i)
                m_script.replies.push_back({UsbStatus::Good, counterReply(77, length)});
            for (const auto& reading : maintenance::readCounters(m_channel).counters)
                QCOMPARE(reading.outcome, Outcome::ShortReply);
        }
        m_script.transfers.clear();
        m_script.replies = {{UsbStatus::Pipe, {}},
                            {UsbStatus::Pipe, {}},
                            {UsbStatus::Good, counterReply(5)},
                            {UsbStatus::Good, counterReply(6)}};
        const auto readings = maintenance::readCounters(m_channel);
        QCOMPARE(sentFrames(m_script),
                 QList<QByteArray>(
                     {"43 4e 54 52 01 04 00 00", "43 4e 54 52 01 01 00 00", "43 4e 54 52 01 02 00 00"}));
        QCOMPARE(readings.counters[0].outcome, Outcome::ReadFailed);
        QCOMPARE(readings.counters[1].value, 5);
        QCOMPARE(readings.counters[2].value, 6);
    }

    void failedCommands()
    {
        m_script.replies = {{UsbStatus::Good, QByteArray(3, 0)}}; // any length is an answer
        QCOMPARE(maintenance::resetCounter(m_channel, Counter::Scans), usb_communicate::Done);
        QCOMPARE(m_script.transfers.last().length, 64);
        QCOMPARE(maintenance::setStandby(m_channel, 90), usb_communicate::ReadFailed); // no answer
        m_script.writing = {UsbStatus::Good, QByteArray(1, 0)};
        QCOMPARE(maintenance::resetCounter(m_channel, Counter::PadModule), usb_communicate::WriteFailed);

        m_script.writing = {};
        m_script.release = UsbStatus::Io; // the command has arrived all the same
        m_script.replies = {{UsbStatus::Good, QByteArray(64, 0)}};
        QCOMPARE(maintenance::resetCounter(m_channel, Counter::PadModule), usb_communicate::Done);
        m_channel.close();
    }

    void cleanup()
    {
        QCOMPARE(m_script.kept(), 0);
        m_script.replies.clear();
        m_script.transfers.clear();
    }
};

QTEST_GUILESS_MAIN(MaintenanceTest)
#include "tst_maintenance.moc"
