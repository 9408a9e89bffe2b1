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
    void exchange()
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

    void opening()
    {
        const UsbStatus good = UsbStatus::Good;
        struct
        {
            bool present;
            UsbStatus init, list, open;
        } const rows[] = {{false, good, good, good},
                          {true, UsbStatus::Other, good, good},
                          {true, good, UsbStatus::Io, good},
                          {true, good, good, UsbStatus::NoDevice}, // unplugged meanwhile
                          {true, good, good, UsbStatus::Access}};
        for (const auto& row : rows) {
            UsbScript script;
            script.present = row.present;
            script.init = row.init;
            script.list = row.list;
            script.opening = row.open;
            auto usb = channel(script);
            QCOMPARE(usb->initDevice(), 252);
            QCOMPARE(usb->checkUSBPrinter(), 0);
            QCOMPARE(usb->accessDenied(), row.open == UsbStatus::Access);
            QCOMPARE(script.kept(), 0);

            script.present = true;
            script.init = script.list = script.opening = good;
            QCOMPARE(usb->checkUSBPrinter(), 1);
            QCOMPARE(script.kept(), 0);
            QVERIFY(!usb->accessDenied());
            script.kernelDriver = true;
            QCOMPARE(usb->initDevice(), 0);
            QCOMPARE(script.calls, QStringList("detach"));
            script.detach = UsbStatus::Access;
            QCOMPARE(usb->initDevice(), 255);
            QCOMPARE(script.kept(), 0);
        }
    }

    void replies()
    {
        struct
        {
            UsbStatus status;
            int bytes, result;
        } const rows[] = {{UsbStatus::Good, 0, 0},      {UsbStatus::Good, 63, 63},
                          {UsbStatus::Good, 64, 64},    {UsbStatus::Good, 65, 254}, // too long
                          {UsbStatus::Timeout, 0, 254}, {UsbStatus::Timeout, 64, 254},
                          {UsbStatus::NoDevice, 0, 254}};
        UsbScript script;
        auto usb = channel(script);
        QCOMPARE(usb->initDevice(), 0);
        unsigned char buffer[64] = {};
        for (const auto& row : rows) {
            const UsbScript::Reply reply = {row.status, QByteArray(row.bytes, 'x')};
            script.replies.push_back(reply);
            script.reports.push_back(reply);
            QCOMPARE(usb->ReadCmdBulk(buffer, 64), row.result);
            QCOMPARE(usb->ReadCmd(buffer, 64), row.result);
        }
    }

    void writing()
    {
        UsbScript script;
        auto usb = channel(script);
        QCOMPARE(usb->initDevice(), 0);
        unsigned char buffer[64] = {};
        for (const UsbScript::Reply& answer :
             {UsbScript::Reply{UsbStatus::Good, QByteArray(1, 'x')}, {UsbStatus::Pipe, {}}}) {
            script.writing = answer;
            QCOMPARE(usb->SendCmd(buffer, 8), 253);
        }
        script.transfers.clear();
        script.claim = UsbStatus::Busy; // the interface is another's
        QCOMPARE(usb->SendCmd(buffer, 8), 253);
        QCOMPARE(usb->ReadCmdBulk(buffer, 64), 254);
        QVERIFY(script.transfers.isEmpty());
    }

    // What a failed release leaves open is closed by the next opening, by close(), or in the end.
    void failedRelease()
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

    void withoutOpening()
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
};

QTEST_GUILESS_MAIN(TestUsbCommunicate)
#include "tst_usbcommunicate.moc"
