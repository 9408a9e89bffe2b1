// SPDX-License-Identifier: GPL-3.0-or-later
// The virtual scanner as a client of the real libusb sees it; runs below `vscan run --exclusive`.
#include "daemonfixture.h"
#include "usbclient.h"

#include <QElapsedTimer>
#include <QtTest>
#include <future>
#include <sane/sane.h>

namespace {

const QByteArray scanQuery("CNTR\x01\x04\0\0", 8);

int openDescriptors(const QString& process)
{
    return QDir("/proc/" + process + "/fd").entryList(QDir::Files | QDir::System).size();
}

int countEvents(libusb_context*, libusb_device*, libusb_hotplug_event event, void* counts)
{
    ++static_cast<int*>(counts)[event == LIBUSB_HOTPLUG_EVENT_DEVICE_ARRIVED ? 0 : 1];
    return 0;
}

} // namespace

class TestVscanUsb : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void showsTheDevice();
    void reportsEachKeyOnce();
    void waitingReaderIsWoken();
    void exchangesFrames();
    void answersFaults_data();
    void answersFaults();
    void stallsOtherEndpoints();
    void claims();
    void kernelDriver();
    void killedClientLeavesNothing();
    void unpluggedWhileWaiting();
    void replugStress();
    void keysDuringExchanges();
    void oneScannerForBothSides();

private:
    static bool command(const QString& words) { return DaemonFixture::command(words.split(' ')) == 0; }
    static QString output(const QStringList& words);
};

QString TestVscanUsb::output(const QStringList& words)
{
    QProcess process;
    process.start(DaemonFixture::program(), words);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

void TestVscanUsb::initTestCase()
{
    QVERIFY2(qEnvironmentVariableIsSet("UMOCKDEV_DIR"), "start it with `vscan run --exclusive -- ...`");
}

void TestVscanUsb::init()
{
    QVERIFY(command("replug"));
    QVERIFY(command("clear"));
    while (UsbClient().key() > 0) {
    }
}

void TestVscanUsb::showsTheDevice()
{
    const UsbClient client;
    QVERIFY(client.isOpen());
    libusb_device* device = libusb_get_device(client.handle());
    libusb_config_descriptor* read = nullptr;
    QCOMPARE(libusb_get_active_config_descriptor(device, &read), 0);
    const std::unique_ptr<libusb_config_descriptor, void (*)(libusb_config_descriptor*)> config(
        read, libusb_free_config_descriptor);
    QCOMPARE(int(config->bNumInterfaces), 1);
    const libusb_interface_descriptor& interface = config->interface[0].altsetting[0];
    QStringList endpoints;
    for (int i = 0; i < interface.bNumEndpoints; ++i)
        endpoints << QString("%1 %2")
                         .arg(interface.endpoint[i].bEndpointAddress, 2, 16, QChar('0'))
                         .arg(interface.endpoint[i].bmAttributes & LIBUSB_TRANSFER_TYPE_MASK);
    QCOMPARE(endpoints, (QStringList{"02 2", "81 2", "83 3"}));
    uchar text[64];
    QCOMPARE(libusb_get_string_descriptor_ascii(client.handle(), 2, text, sizeof text), 6);
    QCOMPARE(QByteArray(reinterpret_cast<char*>(text)), QByteArray("qwd200"));
    QCOMPARE(libusb_get_string_descriptor_ascii(client.handle(), 9, text, sizeof text),
             int(LIBUSB_ERROR_PIPE));
    QCOMPARE(libusb_get_device_speed(device), int(LIBUSB_SPEED_HIGH));
}

void TestVscanUsb::reportsEachKeyOnce()
{
    QElapsedTimer timer;
    {
        const UsbClient client;
        timer.start();
        QCOMPARE(client.key(), 0);
        QVERIFY(timer.elapsed() >= 90);
        QVERIFY(command("press 1") && command("press 2"));
        QCOMPARE(client.key(), 1);
    }
    const UsbClient later; // what was not read waits for the next one
    QCOMPARE(later.key(), 2);
    QCOMPARE(later.key(), 0);
    QByteArray bytes;
    QVERIFY(command("press 1"));
    QCOMPARE(later.event(bytes, 2), int(LIBUSB_ERROR_OVERFLOW)); // as a device does that sends too much
    QCOMPARE(later.key(), 0);
    QVERIFY(command("usb report 04 00 00 01 00 00 00 00"));
    QCOMPARE(later.event(bytes), 8);
    QVERIFY(!command("press 256") && !command("press x"));
}

void TestVscanUsb::waitingReaderIsWoken()
{
    const UsbClient client;
    const auto press = std::async(std::launch::async, [] {
        QThread::msleep(200);
        command("press 2");
    });
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(client.key(5000), 2);
    press.wait();
    QVERIFY(timer.elapsed() < 3000);
}

void TestVscanUsb::exchangesFrames()
{
    const UsbClient client;
    QByteArray bytes;
    QVERIFY(command("counters scan=4660 roller=65535 pad=0 standby=1"));
    const auto counter = [&](char verb, char code) {
        QByteArray frame = scanQuery;
        frame[4] = verb;
        frame[5] = code;
        if (client.send(frame) != 8 || client.receive(bytes) != 64)
            return -1;
        return uchar(bytes[8]) + 256 * uchar(bytes[9]);
    };
    QCOMPARE(counter(1, 4), 4660);
    QCOMPARE(counter(1, 1), 65535);
    QCOMPARE(counter(1, 2), 0);
    QCOMPARE(counter(3, 1), 0);
    QCOMPARE(client.send(QByteArray("PWR\0\0\x1e\x01\0", 8)), 8);
    QCOMPARE(client.receive(bytes, 8), 8);
    QCOMPARE(output({"counters"}), QString("scan=4660\nroller=0\npad=0\nstandby=90\n"));
    QVERIFY(output({"log"}).contains("usb 02 < 50 57 52 00 00 1e 01 00\n"));
    QCOMPARE(client.send("nonsense"), 8);
    QCOMPARE(client.receive(bytes, 64, 50), int(LIBUSB_ERROR_TIMEOUT));
}

void TestVscanUsb::answersFaults_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("answer");
    QTest::newRow("stall") << "usb stall 81" << int(LIBUSB_ERROR_PIPE);
    QTest::newRow("silent") << "usb silent 1" << int(LIBUSB_ERROR_TIMEOUT);
    QTest::newRow("short") << "usb short 1 63" << 63;
    QTest::newRow("empty") << "usb short 1 0" << 0;
    QTest::newRow("garbage") << "usb garbage 1" << 64;
    QTest::newRow("late") << "usb late 1 150" << 64;
}

void TestVscanUsb::answersFaults()
{
    QFETCH(QString, fault);
    QFETCH(int, answer);
    const UsbClient client;
    QByteArray bytes;
    QVERIFY(command(fault));
    QCOMPARE(client.send(scanQuery), 8);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(client.receive(bytes, 64, fault.contains("silent") ? 100 : 2000), answer);
    QVERIFY(!fault.contains("late") || (timer.elapsed() > 120 && timer.elapsed() < 1500));
    if (answer == LIBUSB_ERROR_PIPE) // the reply still waits
        QCOMPARE(client.receive(bytes), 64);
    QCOMPARE(client.send(scanQuery), 8);
    QCOMPARE(client.receive(bytes), 64);
    QVERIFY(bytes.startsWith(scanQuery));
}

void TestVscanUsb::stallsOtherEndpoints()
{
    const UsbClient client;
    QVERIFY(command("usb stall 0x02 2") && command("usb stall 83"));
    QCOMPARE(client.send(scanQuery), int(LIBUSB_ERROR_PIPE));
    QCOMPARE(client.send(scanQuery), int(LIBUSB_ERROR_PIPE));
    QCOMPARE(libusb_clear_halt(client.handle(), 0x02), 0);
    QByteArray bytes;
    QCOMPARE(client.event(bytes), int(LIBUSB_ERROR_PIPE));
    QVERIFY(command("press 1") && command("usb short 1"));
    QCOMPARE(client.key(), 1); // was made before the fault
    QVERIFY(command("press 1"));
    QCOMPARE(client.event(bytes), 3);
    QCOMPARE(client.key(), 0);
}

void TestVscanUsb::claims()
{
    const UsbClient first;
    {
        const UsbClient second;
        QCOMPARE(first.claim(), 0);
        QCOMPARE(first.claim(), 0);
        QCOMPARE(second.claim(), int(LIBUSB_ERROR_BUSY));
        QVERIFY(output({"status"}).contains("claimed=yes"));
        QCOMPARE(first.release(), 0);
        QCOMPARE(first.release(), int(LIBUSB_ERROR_NOT_FOUND));
        QCOMPARE(second.claim(), 0);
        QCOMPARE(first.claim(), int(LIBUSB_ERROR_BUSY));
    } // closed while it held it
    QCOMPARE(first.claim(), 0);
    QCOMPARE(first.release(), 0);
    QVERIFY(command("usb claim-busy 1"));
    QCOMPARE(first.claim(), int(LIBUSB_ERROR_BUSY));
    QVERIFY(command("usb claim-busy 0"));
    QCOMPARE(first.claim(), 0);
}

void TestVscanUsb::kernelDriver()
{
    const UsbClient client;
    QCOMPARE(libusb_kernel_driver_active(client.handle(), 0), 0);
    QVERIFY(command("usb driver stuck"));
    QCOMPARE(libusb_kernel_driver_active(client.handle(), 0), 1);
    QVERIFY(libusb_detach_kernel_driver(client.handle(), 0) < 0);
    QCOMPARE(client.claim(), int(LIBUSB_ERROR_BUSY));
    QVERIFY(command("usb driver bound"));
    QCOMPARE(libusb_detach_kernel_driver(client.handle(), 0), 0);
    QCOMPARE(libusb_kernel_driver_active(client.handle(), 0), 0);
    QCOMPARE(client.claim(), 0);
    QCOMPARE(client.release(), 0);
    QVERIFY(command("usb driver bound"));
    QCOMPARE(libusb_set_auto_detach_kernel_driver(client.handle(), 1), 0);
    QCOMPARE(client.claim(), 0);
}

// Such a client neither keeps the interface nor takes the report that it was waiting for.
void TestVscanUsb::killedClientLeavesNothing()
{
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(), {"--hold"});
    QVERIFY(other.waitForReadyRead());
    other.kill();
    QVERIFY(other.waitForFinished());
    QTRY_VERIFY(output({"status"}).contains("claimed=no"));
    QVERIFY(command("press 2"));
    const UsbClient client;
    QCOMPARE(client.key(), 2);
}

void TestVscanUsb::unpluggedWhileWaiting()
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

void TestVscanUsb::replugStress()
{
    constexpr int cycles = 20;
    const int before = openDescriptors("self");
    {
        const UsbClient listener;
        int counts[2] = {};
        libusb_hotplug_callback_handle handle;
        QCOMPARE(libusb_hotplug_register_callback(
                     listener.context(),
                     LIBUSB_HOTPLUG_EVENT_DEVICE_ARRIVED | LIBUSB_HOTPLUG_EVENT_DEVICE_LEFT, 0, 0x0efd,
                     0x002a, LIBUSB_HOTPLUG_MATCH_ANY, countEvents, counts, &handle),
                 0);
        const auto events = [&] {
            timeval wait{0, 20000};
            libusb_handle_events_timeout_completed(listener.context(), &wait, nullptr);
        };
        for (int i = 0; i < cycles; ++i) {
            QVERIFY(command("unplug") && command("replug"));
            QVERIFY(command("press 1"));
            const UsbClient client;
            QVERIFY(client.isOpen());
            QCOMPARE(client.claim(), 0);
            QCOMPARE(client.key(1000), 1);
        }
        QTRY_COMPARE((events(), counts[0]), cycles);
        QTRY_COMPARE((events(), counts[1]), cycles);
    }
    QCOMPARE(openDescriptors("self"), before);
}

void TestVscanUsb::keysDuringExchanges()
{
    constexpr int presses = 10;
    const auto pressing = std::async(std::launch::async, [] {
        for (int i = 1; i <= presses; ++i)
            command(QString("press %1").arg(i + 10));
    });
    int expected = 1;
    QElapsedTimer timer;
    timer.start();
    while (expected <= presses && timer.elapsed() < 20000) {
        const UsbClient client;
        QByteArray bytes;
        QCOMPARE(client.send(scanQuery), 8);
        QCOMPARE(client.receive(bytes), 64);
        const int key = client.key(10);
        if (key)
            QCOMPARE(key, 10 + expected++);
    }
    pressing.wait();
    QCOMPARE(expected, presses + 1);
}

void TestVscanUsb::oneScannerForBothSides()
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
    const auto readPage = [handle] {
        SANE_Byte bytes[32768];
        SANE_Int length = 0;
        SANE_Status status;
        while ((status = sane_read(handle, bytes, sizeof bytes, &length)) == SANE_STATUS_GOOD) {
        }
        return status;
    };
    QCOMPARE(sane_start(handle), SANE_STATUS_GOOD);
    QCOMPARE(readPage(), SANE_STATUS_EOF);
    QVERIFY(output({"counters"}).startsWith("scan=11\nroller=0\n"));
    QCOMPARE(sane_start(handle), SANE_STATUS_GOOD);
    QVERIFY(command("press 3"));
    QCOMPARE(readPage(), SANE_STATUS_CANCELLED);
    sane_cancel(handle);
    sane_close(handle);
    QCOMPARE(UsbClient().key(), 0); // it acted as clear key, it is not reported as well
    QVERIFY(command("press 3"));
    QCOMPARE(UsbClient().key(), 3);

    QVERIFY(command("unplug"));
    QCOMPARE(sane_open("vscan:one", &handle), SANE_STATUS_IO_ERROR);
    QVERIFY(!UsbClient().isOpen());
    sane_exit();
}

int main(int argc, char** argv)
{
    if (argc > 1 && qstrcmp(argv[1], "--hold") == 0) {
        const UsbClient client;
        std::printf("claim %d\n", client.claim());
        std::fflush(stdout);
        return client.key(20000);
    }
    QCoreApplication application(argc, argv);
    TestVscanUsb test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_vscanusb.moc"
