// SPDX-License-Identifier: GPL-3.0-or-later
// The command channel and the key watcher with the real libusb and the scanner in software; runs below
// `vscan run`.
#include "config/freshroot.h"
#include "device/statefile.h"
#include "virtual-scanner/daemonfixture.h"
#include "watching.h"

#include <QRandomGenerator>
#include <QtTest>

namespace {

constexpr ButtonWatch::Intervals quick = {20, 20, 20};

bool vscan(const QString& words)
{
    return DaemonFixture::command(words.split(' ')) == 0;
}

} // namespace

class TestVirtualKeys : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(freshRoot()); }

    // However the poll stood: when setState() returns, another can have the interface.
    void deviceIsFreeDuringAJob()
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

    // Pulled out at any moment of a poll, and back: what is pressed while it is there arrives once.
    void noPressLostOrDoubled()
    {
        const int before = openDescriptors(getpid());
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
        QCOMPARE(openDescriptors(getpid()), before);
    }
};

QTEST_GUILESS_MAIN(TestVirtualKeys)
#include "tst_virtualkeys.moc"
