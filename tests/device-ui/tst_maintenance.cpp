// SPDX-License-Identifier: GPL-3.0-or-later
#include "counterreplies.h"
#include "device/maintenance.h"
#include "device/usb_communicate.h"

#include <QtTest>

using maintenance::Counter;
using maintenance::Outcome;

namespace {

template <typename Frame>
QByteArray hex(const Frame& frame)
{
    return QByteArray(reinterpret_cast<const char*>(frame.data()), int(frame.size())).toHex(' ');
}

} // namespace

class MaintenanceTest : public QObject
{
    Q_OBJECT

private slots:
    void standbyFrames_data();
    void standbyFrames();
    void countersAreReadInOrder();
    void repliesThatAreNoCount();
    void aLateReplyIsNotTheNextCount();
    void absentDevice();
    void commandsAndTheirResults();
    void partsWearOut();
};

void MaintenanceTest::standbyFrames_data()
{
    QTest::addColumn<int>("minutes");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("never") << 0 << QByteArray("50 57 52 00 00 00 00 00");
    QTest::newRow("59") << 59 << QByteArray("50 57 52 00 00 3b 00 00");
    QTest::newRow("60") << 60 << QByteArray("50 57 52 00 00 00 01 00");
    QTest::newRow("90") << 90 << QByteArray("50 57 52 00 00 1e 01 00");
    QTest::newRow("a day") << 1440 << QByteArray("50 57 52 00 00 00 18 00");
    QTest::newRow("too long") << 99999 << QByteArray("50 57 52 00 00 00 18 00");
    QTest::newRow("negative") << -5 << QByteArray("50 57 52 00 00 00 00 00");
}

void MaintenanceTest::standbyFrames()
{
    QFETCH(int, minutes);
    QFETCH(QByteArray, frame);
    QCOMPARE(hex(maintenance::standbyFrame(minutes)), frame);
}

void MaintenanceTest::countersAreReadInOrder()
{
    UsbScript script;
    for (int value : {0, 4660, 65535})
        script.replies.push_back({UsbStatus::Good, counterReply(value)});
    usb_communicate channel(std::make_unique<ScriptedUsb>(script));
    const auto readings = maintenance::readCounters(channel);
    QCOMPARE(sentFrames(script), QList<QByteArray>({"43 4e 54 52 01 04 00 00", "43 4e 54 52 01 01 00 00",
                                                    "43 4e 54 52 01 02 00 00"}));
    for (const auto& reading : readings.counters)
        QCOMPARE(reading.outcome, Outcome::Value);
    QCOMPARE(readings.counters[0].value, 0);
    QCOMPARE(readings.counters[1].value, 4660);
    QCOMPARE(readings.counters[2].value, 65535);
    QCOMPARE(script.opens, 1);
    QCOMPARE(script.kept(), 0);
}

void MaintenanceTest::repliesThatAreNoCount()
{
    for (int length = 0; length < 64; ++length) {
        UsbScript script;
        for (int i = 0; i < 3; ++i)
            script.replies.push_back({UsbStatus::Good, counterReply(77, length)});
        usb_communicate channel(std::make_unique<ScriptedUsb>(script));
        for (const auto& reading : maintenance::readCounters(channel).counters)
            QCOMPARE(reading.outcome, Outcome::ShortReply);
    }
    UsbScript script;
    script.replies = {{UsbStatus::Pipe, {}},
                      {UsbStatus::Pipe, {}},
                      {UsbStatus::Good, counterReply(5)},
                      {UsbStatus::Good, counterReply(6)}};
    usb_communicate channel(std::make_unique<ScriptedUsb>(script));
    const auto readings = maintenance::readCounters(channel);
    QCOMPARE(readings.counters[0].outcome, Outcome::ReadFailed);
    QCOMPARE(readings.counters[1].value, 5);
    QCOMPARE(readings.counters[2].value, 6);
    QCOMPARE(script.kept(), 0);
}

void MaintenanceTest::aLateReplyIsNotTheNextCount()
{
    UsbScript script;
    script.replies = {{UsbStatus::Timeout, {}},
                      {UsbStatus::Good, counterReply(1)}, // of the first query, after its time
                      {UsbStatus::Good, counterReply(2)},
                      {UsbStatus::Good, counterReply(3)}};
    usb_communicate channel(std::make_unique<ScriptedUsb>(script));
    const auto readings = maintenance::readCounters(channel);
    QCOMPARE(readings.counters[0].outcome, Outcome::ReadFailed);
    QCOMPARE(readings.counters[1].value, 2);
    QCOMPARE(readings.counters[2].value, 3);
}

void MaintenanceTest::absentDevice()
{
    UsbScript script;
    script.present = false;
    usb_communicate channel(std::make_unique<ScriptedUsb>(script));
    const auto readings = maintenance::readCounters(channel);
    for (const auto& reading : readings.counters)
        QCOMPARE(reading.outcome, Outcome::SendFailed);
    QVERIFY(!readings.accessDenied);
    QCOMPARE(maintenance::resetCounter(channel, Counter::Scans), usb_communicate::DeviceNotFound);
    QCOMPARE(maintenance::setStandby(channel, 15), usb_communicate::DeviceNotFound);

    script.present = true;
    script.opening = UsbStatus::Access;
    QVERIFY(maintenance::readCounters(channel).accessDenied);

    script.opening = UsbStatus::Good; // gone between opening and sending
    script.writing = {UsbStatus::NoDevice, QByteArray(8, 0)};
    for (const auto& reading : maintenance::readCounters(channel).counters)
        QCOMPARE(reading.outcome, Outcome::SendFailed);
    QCOMPARE(sentFrames(script).size(), 3);
    QCOMPARE(script.kept(), 0);
}

void MaintenanceTest::commandsAndTheirResults()
{
    UsbScript script;
    usb_communicate channel(std::make_unique<ScriptedUsb>(script));
    for (Counter counter : maintenance::kReadingOrder) {
        script.replies = {{UsbStatus::Good, QByteArray(3, 0)}}; // any length is an answer
        QCOMPARE(maintenance::resetCounter(channel, counter), usb_communicate::Done);
        QCOMPARE(script.transfers.last().length, 64);
    }
    QCOMPARE(sentFrames(script), QList<QByteArray>({"43 4e 54 52 03 04 00 00", "43 4e 54 52 03 01 00 00",
                                                    "43 4e 54 52 03 02 00 00"}));
    script.replies = {{UsbStatus::Good, QByteArray(8, 0)}};
    QCOMPARE(maintenance::setStandby(channel, 90), usb_communicate::Done);
    QCOMPARE(script.transfers.last().length, 8);
    QCOMPARE(sentFrames(script).last(), QByteArray("50 57 52 00 00 1e 01 00"));

    QCOMPARE(maintenance::setStandby(channel, 90), usb_communicate::ReadFailed); // no answer
    script.writing = {UsbStatus::Good, QByteArray(1, 0)};
    QCOMPARE(maintenance::resetCounter(channel, Counter::PadModule), usb_communicate::WriteFailed);

    script.writing = {};
    script.release = UsbStatus::Io; // the command has arrived all the same
    script.replies = {{UsbStatus::Good, QByteArray(64, 0)}};
    QCOMPARE(maintenance::resetCounter(channel, Counter::PadModule), usb_communicate::Done);
    channel.close();
    QCOMPARE(script.kept(), 0);
}

void MaintenanceTest::partsWearOut()
{
    using maintenance::Wear;
    QCOMPARE(maintenance::wear(53999, 60000), Wear::Fine);
    QCOMPARE(maintenance::wear(54000, 60000), Wear::DueSoon);
    QCOMPARE(maintenance::wear(60000, 60000), Wear::Due);
    QCOMPARE(maintenance::wear(0, 1), Wear::Fine);
    QCOMPARE(maintenance::wear(65535, 65535), Wear::Due);
}

QTEST_GUILESS_MAIN(MaintenanceTest)
#include "tst_maintenance.moc"
