// SPDX-License-Identifier: GPL-3.0-or-later
// The status codes of the command channel, and that nothing stays open, whatever the USB side answers.
#include "device/usb_communicate.h"
#include "scriptedusb.h"

#include <QtTest>

class TestUsbCommunicate : public QObject
{
    Q_OBJECT

    std::unique_ptr<UsbScript> m_script;
    std::unique_ptr<usb_communicate> m_usb;
    unsigned char m_buffer[64] = {};

private slots:
    void init()
    {
        m_usb.reset(); // before its script
        m_script = std::make_unique<UsbScript>();
        m_usb = std::make_unique<usb_communicate>(std::make_unique<ScriptedUsb>(*m_script));
    }

    void exchange()
    {
        QCOMPARE(m_usb->initDevice(), 0);
        unsigned char frame[8] = {'C', 'N', 'T', 'R', 1, 4, 0, 0};
        QCOMPARE(m_usb->SendCmd(frame, 8), 0);
        QByteArray answer(64, '\0');
        answer[8] = 0x34;
        answer[9] = 0x12;
        m_script->replies.push_back({UsbStatus::Good, answer});
        QCOMPARE(m_usb->ReadCmdBulk(m_buffer, 64), 64);
        QCOMPARE(m_buffer[8] + 256 * m_buffer[9], 4660);
        m_script->press(2);
        QCOMPARE(m_usb->ReadCmd(m_buffer, 8), 4);
        QCOMPARE(int(m_buffer[3]), 2);
        QCOMPARE(m_usb->releaseDevice(), 0);
        QCOMPARE(m_script->kept(), 0);

        QCOMPARE(m_script->calls, QStringList({"claim", "claim", "claim", "release"}));
        QCOMPARE(m_script->transfers.size(), 3);
        const auto& command = m_script->transfers[0];
        QVERIFY(command.bulk && command.endpoint == 0x02 && command.timeoutMs == 1000);
        QCOMPARE(command.bytes, QByteArray("CNTR\x01\x04\0\0", 8));
        const auto& read = m_script->transfers[1];
        QVERIFY(read.bulk && read.endpoint == 0x81 && read.length == 64 && read.timeoutMs == 2000);
        const auto& event = m_script->transfers[2];
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
            init();
            m_script->present = row.present;
            m_script->init = row.init;
            m_script->list = row.list;
            m_script->opening = row.open;
            QCOMPARE(m_usb->initDevice(), 252);
            QCOMPARE(m_usb->checkUSBPrinter(), 0);
            QCOMPARE(m_usb->accessDenied(), row.open == UsbStatus::Access);
            QCOMPARE(m_script->kept(), 0);

            m_script->present = true;
            m_script->init = m_script->list = m_script->opening = good;
            QCOMPARE(m_usb->checkUSBPrinter(), 1);
            QCOMPARE(m_script->kept(), 0);
            QVERIFY(!m_usb->accessDenied());
            m_script->kernelDriver = true;
            QCOMPARE(m_usb->initDevice(), 0);
            QCOMPARE(m_script->calls, QStringList("detach"));
            m_script->detach = UsbStatus::Access;
            QCOMPARE(m_usb->initDevice(), 255);
            QCOMPARE(m_script->kept(), 0);
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
        QCOMPARE(m_usb->initDevice(), 0);
        for (const auto& row : rows) {
            const UsbScript::Reply reply = {row.status, QByteArray(row.bytes, 'x')};
            m_script->replies.push_back(reply);
            m_script->reports.push_back(reply);
            QCOMPARE(m_usb->ReadCmdBulk(m_buffer, 64), row.result);
            QCOMPARE(m_usb->ReadCmd(m_buffer, 64), row.result);
        }
    }

    void writing()
    {
        QCOMPARE(m_usb->initDevice(), 0);
        for (const UsbScript::Reply& answer :
             {UsbScript::Reply{UsbStatus::Good, QByteArray(1, 'x')}, {UsbStatus::Pipe, {}}}) {
            m_script->writing = answer;
            QCOMPARE(m_usb->SendCmd(m_buffer, 8), 253);
        }
        m_script->transfers.clear();
        m_script->claim = UsbStatus::Busy; // the interface is another's
        QCOMPARE(m_usb->SendCmd(m_buffer, 8), 253);
        QCOMPARE(m_usb->ReadCmdBulk(m_buffer, 64), 254);
        QVERIFY(m_script->transfers.isEmpty());
    }

    // What a failed release leaves open is closed by the next opening, by close(), or in the end.
    void failedRelease()
    {
        QCOMPARE(m_usb->initDevice(), 0);
        m_script->release = UsbStatus::NoDevice;
        QTest::ignoreMessage(QtWarningMsg, "Cannot Release Interface");
        QCOMPARE(m_usb->releaseDevice(), 255);
        QVERIFY(m_usb->isOpen());
        QCOMPARE(m_script->kept(), 2);
        m_script->present = false;
        QCOMPARE(m_usb->initDevice(), 252);
        QCOMPARE(m_script->kept(), 0);

        m_script->present = true;
        QCOMPARE(m_usb->initDevice(), 0);
        QCOMPARE(m_script->kept(), 2);
        QCOMPARE(m_usb->checkUSBPrinter(), 1);
        QVERIFY(m_usb->isOpen()); // not touched by the check
        m_usb.reset();
        QCOMPARE(m_script->kept(), 0);
    }

    void withoutOpening()
    {
        QCOMPARE(m_usb->SendCmd(m_buffer, 8), 253);
        QCOMPARE(m_usb->ReadCmdBulk(m_buffer, 8), 254);
        QCOMPARE(m_usb->ReadCmd(m_buffer, 8), 254);
        QCOMPARE(m_usb->releaseDevice(), 255);
        QVERIFY(m_script->calls.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestUsbCommunicate)
#include "tst_usbcommunicate.moc"
