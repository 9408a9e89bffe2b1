// SPDX-License-Identifier: GPL-3.0-or-later
// The command channel and the key watcher with the real libusb and the scanner in software; runs below
// `vscan run`.
#include "config/installroot.h"
#include "device/buttonwatch.h"
#include "device/statefile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>
#include <thread>

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

// What the watcher reported since the last look.
class Codes
{
public:
    void add(int code)
    {
        const std::lock_guard lock(m_mutex);
        m_codes << code;
    }
    int count(int code) const
    {
        const std::lock_guard lock(m_mutex);
        return m_codes.count(code);
    }
    int last() const
    {
        const std::lock_guard lock(m_mutex);
        return m_codes.isEmpty() ? -1 : m_codes.last();
    }
    void clear()
    {
        const std::lock_guard lock(m_mutex);
        m_codes.clear();
    }

private:
    mutable std::mutex m_mutex;
    QVector<int> m_codes;
};

class Watching
{
public:
    Watching()
        : watch(makeLibUsb(), quick,
                {[this](int code) { codes.add(code); }, [](const QString&) {}, [](bool) {}}),
          m_thread([this] { watch.loop(); })
    {
    }
    ~Watching()
    {
        watch.stop();
        m_thread.join();
    }

    Codes codes;
    ButtonWatch watch;

private:
    std::thread m_thread;
};

} // namespace

class TestVirtualKeys : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void pressesAndPlug();
    void pressDuringAJob();
    void deviceIsFreeDuringAJob();
    void takenByOthers();
    void absentDevice();
    void manyPollsKeepNothing();
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

void TestVirtualKeys::pressesAndPlug()
{
    Watching watching;
    QTRY_VERIFY(watching.codes.count(5) > 1);
    QVERIFY(vscan("press 1"));
    QTRY_COMPARE(watching.codes.count(1), 1);
    QVERIFY(vscan("press 2"));
    QTRY_COMPARE(watching.codes.count(2), 1);
    QTRY_COMPARE(watching.codes.last(), 5);
    QCOMPARE(watching.codes.count(4), 0);
    for (int round = 0; round < 3; ++round) {
        QVERIFY(vscan("unplug"));
        QTRY_COMPARE(watching.codes.last(), 4);
        QVERIFY(vscan("replug"));
        QTRY_COMPARE(watching.codes.last(), 5);
    }
    QVERIFY(vscan("press 1"));
    QTRY_COMPARE(watching.codes.count(1), 2);
    QCOMPARE(watching.codes.count(2), 1);
}

void TestVirtualKeys::pressDuringAJob()
{
    QVERIFY(state::write(1));
    Watching watching;
    QTRY_COMPARE(watching.codes.last(), 5);
    watching.watch.setState(ButtonWatch::Job);
    QVERIFY(vscan("press 1"));
    QVERIFY(vscan("press 2"));
    watching.codes.clear();
    watching.watch.setState(ButtonWatch::Idle);
    QTRY_VERIFY(watching.codes.count(5) > 2);
    QCOMPARE(watching.codes.count(1) + watching.codes.count(2), 0);
    QVERIFY(vscan("press 2"));
    QTRY_COMPARE(watching.codes.count(2), 1);
}

// However the poll stood: when setState() returns, another can have the interface.
void TestVirtualKeys::deviceIsFreeDuringAJob()
{
    QVERIFY(state::write(1));
    Watching watching;
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

void TestVirtualKeys::takenByOthers()
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
}

void TestVirtualKeys::absentDevice()
{
    QVERIFY(vscan("unplug"));
    usb_communicate usb;
    QCOMPARE(usb.checkUSBPrinter(), 0);
    QCOMPARE(usb.initDevice(), 252);
    QVERIFY(!usb.accessDenied());

    QVERIFY(vscan("replug"));
    QTRY_COMPARE(usb.initDevice(), 0);
    unsigned char report[8];
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(usb.ReadCmd(report, 8), 254);
    QVERIFY(timer.elapsed() >= 90);
    QVERIFY(vscan("unplug"));
    QCOMPARE(usb.ReadCmd(report, 8), 254);
    QCOMPARE(usb.releaseDevice(), 255); // vanished in between
    QVERIFY(!(usb.initDevice() == 0));
}

void TestVirtualKeys::manyPollsKeepNothing()
{
    const auto poll = [](int times) {
        for (int i = 0; i < times; ++i) {
            usb_communicate usb;
            if (usb.initDevice() == 0 && i % 3)
                usb.releaseDevice();
        }
    };
    poll(20);
    const int before = openDescriptors();
    poll(200);
    QVERIFY(vscan("unplug"));
    poll(200);
    QCOMPARE(openDescriptors(), before);
}

// Pulled out at any moment of a poll, and back: what is pressed while it is there arrives once.
void TestVirtualKeys::noPressLostOrDoubled()
{
    const int before = openDescriptors();
    {
        Watching watching;
        QRandomGenerator random(4);
        for (int round = 1; round <= 30; ++round) {
            QVERIFY(vscan("press 1"));
            QTRY_COMPARE(watching.codes.count(1), round);
            if (round % 2)
                continue;
            QTest::qWait(random.bounded(130));
            QVERIFY(vscan("unplug"));
            QTest::qWait(random.bounded(130));
            QVERIFY(vscan("replug"));
        }
        watching.codes.clear();
        QTRY_VERIFY(watching.codes.count(5) > 2);
        QCOMPARE(watching.codes.count(1), 0);
    }
    QCOMPARE(openDescriptors(), before);
}

QTEST_GUILESS_MAIN(TestVirtualKeys)
#include "tst_virtualkeys.moc"
