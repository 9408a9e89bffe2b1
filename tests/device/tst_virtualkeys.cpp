// SPDX-License-Identifier: GPL-3.0-or-later
// The command channel and the key watcher with the real libusb and the scanner in software; runs below
// `vscan run`.
#include "config/installroot.h"
#include "device/statefile.h"
#include "watching.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>

namespace {

constexpr ButtonWatch::Intervals quick = {20, 20, 20};

bool vscan(const QString& words)
{
    return QProcess::execute(QStringLiteral(VSCAN_PROGRAM), words.split(' ')) == 0;
}

int openDescriptors()
{
    return QDir("/proc/self/fd").entryList(QDir::Files | QDir::System).size();
}

} // namespace

class TestVirtualKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void deviceIsFreeDuringAJob();
    void commandsWithoutTheDevice();
    void noPressLostOrDoubled();
};

void TestVirtualKeys::initTestCase()
{
    QVERIFY2(qEnvironmentVariableIsSet("VSCAN_SOCKET"), "start it with `vscan run -- ...`");
}

void TestVirtualKeys::init()
{
    QDir(installRoot()).removeRecursively();
    QVERIFY(QDir().mkpath(installRoot()));
    QVERIFY(vscan("replug"));
    QVERIFY(vscan("clear"));
    QVERIFY(vscan("usb claim-busy 0"));
    usb_communicate usb; // reads left-over presses away
    QCOMPARE(usb.initDevice(), 0);
    unsigned char report[8];
    while (usb.ReadCmd(report, 8) != 254) {
    }
}

// However the poll stood: when setState() returns, another can have the interface.
void TestVirtualKeys::deviceIsFreeDuringAJob()
{
    QVERIFY(state::write(1));
    Watching watching(makeLibUsb(), quick);
    watching.start();
    for (int round = 0; round < 15; ++round) {
        QTest::qWait(round * 7);
        watching.watch.setState(round % 2 ? ButtonWatch::Job : ButtonWatch::Lent);
        {
            usb_communicate other;
            unsigned char report[8];
            QCOMPARE(other.initDevice(), 0);
            QCOMPARE(other.ReadCmd(report, 8), 254);
            QCOMPARE(other.releaseDevice(), 0); // it was claimed
        }
        watching.watch.setState(ButtonWatch::Idle);
    }
}

void TestVirtualKeys::commandsWithoutTheDevice()
{
    QVERIFY(vscan("usb claim-busy 1"));
    usb_communicate usb;
    QCOMPARE(usb.checkUSBPrinter(), 1);
    QCOMPARE(usb.initDevice(), 0);
    unsigned char frame[8] = {'C', 'N', 'T', 'R', 1, 4, 0, 0};
    unsigned char reply[64];
    QCOMPARE(usb.SendCmd(frame, 8), 253);
    QCOMPARE(usb.ReadCmdBulk(reply, 64), 254);
    QCOMPARE(usb.releaseDevice(), 255);
    QVERIFY(vscan("usb claim-busy 0"));
    QCOMPARE(usb.initDevice(), 0);
    QCOMPARE(usb.SendCmd(frame, 8), 0);
    QCOMPARE(usb.ReadCmdBulk(reply, 64), 64);
    QCOMPARE(usb.releaseDevice(), 0);

    QCOMPARE(usb.initDevice(), 0);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(usb.ReadCmd(reply, 8), 254); // no press
    QVERIFY(timer.elapsed() >= 90);
    QVERIFY(vscan("unplug"));
    QCOMPARE(usb.ReadCmd(reply, 8), 254);
    QCOMPARE(usb.releaseDevice(), 255); // vanished in between
    QCOMPARE(usb.checkUSBPrinter(), 0);
    QCOMPARE(usb.initDevice(), 252);
    QVERIFY(!usb.accessDenied());
}

// Pulled out at any moment of a poll, and back: what is pressed while it is there arrives once.
void TestVirtualKeys::noPressLostOrDoubled()
{
    const int before = openDescriptors();
    {
        Watching watching(makeLibUsb(), quick);
        watching.start();
        QRandomGenerator random(4);
        for (int round = 1; round <= 30; ++round) {
            QVERIFY(vscan("press 1"));
            QTRY_COMPARE(watching.count(1), round);
            if (round % 2)
                continue;
            QTest::qWait(random.bounded(130));
            QVERIFY(vscan("unplug"));
            QTest::qWait(random.bounded(130));
            QVERIFY(vscan("replug"));
        }
        QTest::qWait(300);
        QCOMPARE(watching.count(1), 30);
        QVERIFY(vscan("unplug"));
        QTRY_COMPARE(watching.codes().last(), int(buttoncode::DeviceAbsent));
        QVERIFY(vscan("replug"));
        QTRY_COMPARE(watching.codes().last(), int(buttoncode::NoPress));
    }
    QCOMPARE(openDescriptors(), before);
}

QTEST_GUILESS_MAIN(TestVirtualKeys)
#include "tst_virtualkeys.moc"
