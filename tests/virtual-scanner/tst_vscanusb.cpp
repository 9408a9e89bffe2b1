// SPDX-License-Identifier: GPL-3.0-or-later
// The virtual scanner as a client of the real libusb sees it; runs below `vscan run --exclusive`.
#include "daemonfixture.h"
#include "usbclient.h"

#include <QElapsedTimer>
#include <QtTest>
#include <future>
#include <sane/sane.h>
#include <unistd.h>

namespace {

const QByteArray scanQuery("CNTR\x01\x04\0\0", 8);

} // namespace

class TestVscanUsb : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY2(qEnvironmentVariableIsSet("UMOCKDEV_DIR"), "start it with `vscan run --exclusive -- ...`");
    }

    void init()
    {
        QVERIFY(command("replug"));
        QVERIFY(command("clear"));
        while (UsbClient().key() > 0) {
        }
    }

    void reportsEachKeyOnce()
    {
        {
            const UsbClient client;
            auto press = std::async(std::launch::async, [] {
                QThread::msleep(200);
                return command("press 1") && command("press 2");
            });
            QCOMPARE(client.key(5000), 1); // a reader that waits is woken
            QVERIFY(press.get());
        }
        const UsbClient later; // what was not read waits for the next one
        QCOMPARE(later.key(), 2);
        QCOMPARE(later.key(), 0);
        QByteArray bytes;
        QVERIFY(command("press 1"));
        QCOMPARE(later.event(bytes, 2), int(LIBUSB_ERROR_OVERFLOW)); // as a device does that sends too much
        QCOMPARE(later.key(), 0);
        QVERIFY(command("usb stall 83") && command("press 1"));
        QCOMPARE(later.event(bytes), int(LIBUSB_ERROR_PIPE));
        QCOMPARE(later.key(), 1);
        QVERIFY(!command("press 256") && !command("press x"));
    }

    void answersFaults()
    {
        const UsbClient client;
        QByteArray bytes;
        for (const auto& [fault, answer] :
             std::initializer_list<std::pair<QString, int>>{{"usb stall 81", LIBUSB_ERROR_PIPE},
                                                            {"usb silent 1", LIBUSB_ERROR_TIMEOUT},
                                                            {"usb short 1 63", 63},
                                                            {"usb short 1 0", 0},
                                                            {"usb garbage 1", 64},
                                                            {"usb late 1 150", 64}}) {
            QVERIFY(command(fault));
            QCOMPARE(client.send(scanQuery), 8);
            QElapsedTimer timer;
            timer.start();
            QCOMPARE(client.receive(bytes, 64, fault.contains("silent") ? 100 : 2000), answer);
            QVERIFY(!fault.contains("late") || timer.elapsed() > 120);
            QVERIFY(!fault.contains("garbage") || !bytes.startsWith(scanQuery));
            if (answer == LIBUSB_ERROR_PIPE) // the reply still waits
                QCOMPARE(client.receive(bytes), 64);
            QCOMPARE(client.send(scanQuery), 8);
            QCOMPARE(client.receive(bytes), 64);
            QVERIFY(bytes.startsWith(scanQuery));
        }
    }

    void claims()
    {
        const UsbClient first;
        {
            const UsbClient second;
            QCOMPARE(first.claim(), 0);
            QCOMPARE(second.claim(), int(LIBUSB_ERROR_BUSY));
            QCOMPARE(first.release(), 0);
            QCOMPARE(second.claim(), 0);
            QCOMPARE(first.claim(), int(LIBUSB_ERROR_BUSY));
        } // closed while it held it
        QCOMPARE(first.claim(), 0);
    }

    void kernelDriver()
    {
        const UsbClient client;
        QVERIFY(command("usb driver stuck"));
        QCOMPARE(libusb_kernel_driver_active(client.handle(), 0), 1);
        QVERIFY(libusb_detach_kernel_driver(client.handle(), 0) < 0);
        QCOMPARE(client.claim(), int(LIBUSB_ERROR_BUSY));
        QVERIFY(command("usb driver bound"));
        QCOMPARE(libusb_detach_kernel_driver(client.handle(), 0), 0);
        QCOMPARE(libusb_kernel_driver_active(client.handle(), 0), 0);
        QCOMPARE(client.claim(), 0);
    }

    void unpluggedWhileWaiting()
    {
        const UsbClient client;
        QVERIFY(command("press 1")); // lost with the power
        const auto pull = std::async(std::launch::async, [] {
            QThread::msleep(150);
            command("unplug");
        });
        QCOMPARE(client.key(), 1);
        QCOMPARE(client.key(5000), int(LIBUSB_ERROR_NO_DEVICE));
        pull.wait();
        QVERIFY(!UsbClient().isOpen());
        QVERIFY(!command("press 1"));
        QVERIFY(command("replug"));
        QCOMPARE(client.key(), int(LIBUSB_ERROR_NO_DEVICE)); // the old handle stays dead
        QCOMPARE(client.send(scanQuery), int(LIBUSB_ERROR_NO_DEVICE));
        const UsbClient again;
        QVERIFY(again.isOpen());
        QCOMPARE(again.key(), 0);
    }

    void oneScannerForBothSides()
    {
        QVERIFY(command("counters scan=10 roller=0 pad=0"));
        QCOMPARE(sane_init(nullptr, nullptr), SANE_STATUS_GOOD);
        SANE_Handle handle = nullptr;
        {
            const UsbClient client;
            QCOMPARE(client.claim(), 0);
            QCOMPARE(sane_open("vscan:one", &handle), SANE_STATUS_DEVICE_BUSY);
            QCOMPARE(client.release(), 0);
            QCOMPARE(sane_open("vscan:one", &handle), SANE_STATUS_GOOD);
            QCOMPARE(client.claim(), int(LIBUSB_ERROR_BUSY));
        }
        char source[] = "Flatbed";
        QCOMPARE(sane_control_option(handle, 2, SANE_ACTION_SET_VALUE, source, nullptr), SANE_STATUS_GOOD);
        for (const bool stopped : {false, true}) {
            QCOMPARE(sane_start(handle), SANE_STATUS_GOOD);
            QVERIFY(!stopped || command("press 3"));
            SANE_Byte bytes[32768];
            SANE_Int length = 0;
            SANE_Status status;
            while ((status = sane_read(handle, bytes, sizeof bytes, &length)) == SANE_STATUS_GOOD) {
            }
            QCOMPARE(status, stopped ? SANE_STATUS_CANCELLED : SANE_STATUS_EOF);
        }
        QVERIFY(output({"counters"}).startsWith("scan=11\nroller=0\n"));
        sane_cancel(handle);
        sane_close(handle);
        QCOMPARE(UsbClient().key(), 0); // it acted as clear key, it is not reported as well
        QVERIFY(command("press 3"));
        QCOMPARE(UsbClient().key(), 3);
        sane_exit();
    }

private:
    static bool command(const QString& words) { return DaemonFixture::command(words.split(' ')) == 0; }
    static QString output(const QStringList& words) { return DaemonFixture::output(words); }
};

QTEST_GUILESS_MAIN(TestVscanUsb)
#include "tst_vscanusb.moc"
