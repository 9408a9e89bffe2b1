// SPDX-License-Identifier: GPL-3.0-or-later
// The status codes of the command channel, and that nothing stays open, whatever the USB side answers.
#include "device/usb_communicate.h"
#include "scriptedusb.h"

#include <QtTest>

class TestUsbCommunicate : public QObject
{
    Q_OBJECT

    static std::unique_ptr<usb_communicate> channel(UsbScript& script)
    {
        return std::make_unique<usb_communicate>(std::make_unique<ScriptedUsb>(script));
    }

private slots:
    void exchange();
    void opening_data();
    void opening();
    void kernelDriver();
    void replies_data();
    void replies();
    void writing();
    void interfaceTaken();
    void failedRelease();
    void withoutOpening();
};

void TestUsbCommunicate::exchange()
{
    UsbScript script;
    auto usb = channel(script);
    QCOMPARE(usb->initDevice(), 0);
    unsigned char frame[8] = {'C', 'N', 'T', 'R', 1, 4, 0, 0};
    QCOMPARE(usb->SendCmd(frame, 8), 0);
    QByteArray answer(64, '\0');
    answer[8] = 0x34;
    answer[9] = 0x12;
    script.replies.push_back({UsbStatus::Good, answer});
    unsigned char reply[64] = {};
    QCOMPARE(usb->ReadCmdBulk(reply, 64), 64);
    QCOMPARE(reply[8] + 256 * reply[9], 4660);
    script.press(2);
    unsigned char report[8] = {};
    QCOMPARE(usb->ReadCmd(report, 8), 4);
    QCOMPARE(int(report[3]), 2);
    QCOMPARE(usb->releaseDevice(), 0);
    QCOMPARE(script.kept(), 0);

    QCOMPARE(script.calls, QStringList({"claim", "claim", "claim", "release"}));
    QCOMPARE(script.transfers.size(), 3);
    const auto& command = script.transfers[0];
    QVERIFY(command.bulk && command.endpoint == 0x02 && command.timeoutMs == 1000);
    QCOMPARE(command.bytes, QByteArray("CNTR\x01\x04\0\0", 8));
    const auto& read = script.transfers[1];
    QVERIFY(read.bulk && read.endpoint == 0x81 && read.length == 64 && read.timeoutMs == 2000);
    const auto& event = script.transfers[2];
    QVERIFY(!event.bulk && event.endpoint == 0x83 && event.length == 8 && event.timeoutMs == 100);
}

void TestUsbCommunicate::opening_data()
{
    QTest::addColumn<bool>("present");
    QTest::addColumn<int>("init");
    QTest::addColumn<int>("list");
    QTest::addColumn<int>("open");
    QTest::addColumn<bool>("denied");
    const int good = int(UsbStatus::Good);
    QTest::newRow("absent") << false << good << good << good << false;
    QTest::newRow("no context") << true << int(UsbStatus::Other) << good << good << false;
    QTest::newRow("no list") << true << good << int(UsbStatus::Io) << good << false;
    QTest::newRow("unplugged meanwhile") << true << good << good << int(UsbStatus::NoDevice) << false;
    QTest::newRow("no rights") << true << good << good << int(UsbStatus::Access) << true;
}

void TestUsbCommunicate::opening()
{
    QFETCH(bool, present);
    QFETCH(int, init);
    QFETCH(int, list);
    QFETCH(int, open);
    QFETCH(bool, denied);
    UsbScript script;
    script.present = present;
    script.init = UsbStatus(init);
    script.list = UsbStatus(list);
    script.opening = UsbStatus(open);
    auto usb = channel(script);
    QCOMPARE(usb->initDevice(), 252);
    QCOMPARE(usb->accessDenied(), denied);
    QCOMPARE(script.kept(), 0);
    QTest::ignoreMessage(QtDebugMsg, "find device error");
    QCOMPARE(usb->checkUSBPrinter(), 0);
    QCOMPARE(usb->accessDenied(), denied);
    QCOMPARE(script.kept(), 0);

    script.present = true;
    script.init = script.list = script.opening = UsbStatus::Good;
    QCOMPARE(usb->checkUSBPrinter(), 1);
    QCOMPARE(script.kept(), 0);
    QVERIFY(!usb->accessDenied());
    QCOMPARE(usb->initDevice(), 0);
}

void TestUsbCommunicate::kernelDriver()
{
    UsbScript script;
    script.kernelDriver = true;
    auto usb = channel(script);
    QCOMPARE(usb->initDevice(), 0);
    QCOMPARE(script.calls, QStringList("detach"));
    script.detach = UsbStatus::Access;
    QTest::ignoreMessage(QtWarningMsg, "GET_DEVICE_ERROR");
    QCOMPARE(usb->initDevice(), 255);
    QCOMPARE(script.kept(), 0);
}

void TestUsbCommunicate::replies_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("bytes");
    QTest::addColumn<int>("result");
    const int good = int(UsbStatus::Good);
    QTest::newRow("empty") << good << 0 << 0;
    QTest::newRow("short") << good << 63 << 63;
    QTest::newRow("whole") << good << 64 << 64;
    QTest::newRow("too long") << good << 65 << 254;
    QTest::newRow("late") << int(UsbStatus::Timeout) << 0 << 254;
    QTest::newRow("late in the middle") << int(UsbStatus::Timeout) << 64 << 254;
    QTest::newRow("halted") << int(UsbStatus::Pipe) << 0 << 254;
    QTest::newRow("unplugged") << int(UsbStatus::NoDevice) << 0 << 254;
}

void TestUsbCommunicate::replies()
{
    QFETCH(int, status);
    QFETCH(int, bytes);
    QFETCH(int, result);
    UsbScript script;
    auto usb = channel(script);
    QCOMPARE(usb->initDevice(), 0);
    const UsbScript::Reply reply = {UsbStatus(status), QByteArray(bytes, 'x')};
    script.replies.push_back(reply);
    script.reports.push_back(reply);
    unsigned char buffer[64] = {};
    QCOMPARE(usb->ReadCmdBulk(buffer, 64), result);
    QCOMPARE(usb->ReadCmd(buffer, 64), result);
}

void TestUsbCommunicate::writing()
{
    UsbScript script;
    auto usb = channel(script);
    QCOMPARE(usb->initDevice(), 0);
    unsigned char frame[8] = {};
    script.writing = {UsbStatus::Good, QByteArray(1, 'x')};
    QTest::ignoreMessage(QtWarningMsg, "Write Error");
    QCOMPARE(usb->SendCmd(frame, 8), 253);
    script.writing = {UsbStatus::Pipe, {}};
    QTest::ignoreMessage(QtWarningMsg, "Write Error");
    QCOMPARE(usb->SendCmd(frame, 8), 253);
}

void TestUsbCommunicate::interfaceTaken()
{
    UsbScript script;
    auto usb = channel(script);
    QCOMPARE(usb->initDevice(), 0);
    script.claim = UsbStatus::Busy;
    unsigned char buffer[64] = {};
    for (int i = 0; i < 2; ++i)
        QTest::ignoreMessage(QtWarningMsg, "Cannot Claim Interface");
    QCOMPARE(usb->SendCmd(buffer, 8), 253);
    QCOMPARE(usb->ReadCmdBulk(buffer, 64), 254);
    QVERIFY(script.transfers.isEmpty());
}

// What a failed release leaves open is closed by the next opening, by close(), or in the end.
void TestUsbCommunicate::failedRelease()
{
    UsbScript script;
    {
        auto usb = channel(script);
        QCOMPARE(usb->initDevice(), 0);
        script.release = UsbStatus::NoDevice;
        QTest::ignoreMessage(QtWarningMsg, "Cannot Release Interface");
        QCOMPARE(usb->releaseDevice(), 255);
        QVERIFY(usb->isOpen());
        QCOMPARE(script.kept(), 2);
        script.present = false;
        QCOMPARE(usb->initDevice(), 252);
        QCOMPARE(script.kept(), 0);

        script.present = true;
        QCOMPARE(usb->initDevice(), 0);
        QCOMPARE(script.kept(), 2);
        QCOMPARE(usb->checkUSBPrinter(), 1);
        QVERIFY(usb->isOpen()); // not touched by the check
    }
    QCOMPARE(script.kept(), 0);
}

void TestUsbCommunicate::withoutOpening()
{
    UsbScript script;
    auto usb = channel(script);
    unsigned char buffer[8] = {};
    QCOMPARE(usb->SendCmd(buffer, 8), 253);
    QCOMPARE(usb->ReadCmdBulk(buffer, 8), 254);
    QCOMPARE(usb->ReadCmd(buffer, 8), 254);
    QCOMPARE(usb->releaseDevice(), 255);
    QVERIFY(script.calls.isEmpty());
}

QTEST_GUILESS_MAIN(TestUsbCommunicate)
#include "tst_usbcommunicate.moc"
