// SPDX-License-Identifier: GPL-3.0-or-later
// The watcher of the keys and of the state file, with a scripted USB side.
#include "config/freshroot.h"
#include "device/statefile.h"
#include "device/statetexts.h"
#include "scriptedusb.h"
#include "watching.h"

#include <QElapsedTimer>
#include <QtTest>
#include <atomic>

static const QStringList jobBegins = {"setButtonHide", "showWindow"};

class TestButtonWatch : public QObject
{
    Q_OBJECT

    UsbScript& usb() { return *m_usb; }
    std::unique_ptr<Watching> watching(ButtonWatch::Intervals intervals = {1, 1, 1})
    {
        return std::make_unique<Watching>(std::make_unique<ScriptedUsb>(usb()), intervals);
    }
    std::unique_ptr<UsbScript> m_usb;

private slots:
    void init()
    {
        QVERIFY(freshRoot());
        m_usb = std::make_unique<UsbScript>();
    }

    // Reports of another length or header are no press.
    void reports()
    {
        QVector<int> expected;
        const auto report = [&](const QByteArray& bytes, int code) {
            usb().reports.push_back({UsbStatus::Good, bytes});
            expected << code;
        };
        for (const int key : {1, 2, 0, 255})
            report(QByteArray("\x04\0\0", 3) + char(key), key);
        const QByteArray good("\x04\0\0\x01", 4);
        for (const int length : {0, 3})
            report(good.left(length), 5);
        for (const int length : {5, 8})
            report(good + QByteArray(length - 4, '\1'), 5);
        for (const char* wrong : {"09000001", "04090001", "04000901", "04000004", "04000005"})
            report(QByteArray::fromHex(wrong), 5); // the last two are codes of the program itself
        const auto watch = watching();
        watch->start();
        QTRY_VERIFY(watch->codes().size() > expected.size());
        watch->stop();
        QCOMPARE(watch->codes().mid(0, expected.size()), expected);
        QCOMPARE(watch->watch.lastButton(), 255);
        QVERIFY(usb().opens >= expected.size()); // one opening per poll
        QCOMPARE(usb().kept(), 0);
    }

    void texts()
    {
        for (const int code : {-1, 0, 1000, 1012, 1999, 2000, 3000, 99999999})
            QCOMPARE(state::text(code), QString());
        QCOMPARE(state::text(1), QString("正在扫描第1张图像"));
        QCOMPARE(state::text(999), QString("正在扫描第999张图像"));
        QCOMPARE(state::text(2001), QString("正在上传第1张图像"));
        QCOMPARE(state::text(2999), QString("正在上传第999张图像"));
        for (int code = 1001; code <= 1011; ++code) {
            QVERIFY(!state::text(code).isEmpty());
            QCOMPARE(state::isFaultText(state::text(code)),
                     QList<int>({1005, 1006, 1007, 1009}).contains(code));
        }
    }

    void absentAndDenied()
    {
        usb().present = false;
        const auto watch = watching();
        watch->start();
        QTRY_VERIFY(watch->count(4) > 2);
        QCOMPARE(watch->polls(), 0);
        usb().set(usb().opening, UsbStatus::Access);
        usb().set(usb().present, true);
        QTRY_COMPARE(watch->access(), QVector<bool>({true}));
        usb().press(1);
        usb().set(usb().opening, UsbStatus::Good);
        QTRY_VERIFY(watch->polls() > 0);
        QCOMPARE(watch->count(1), 1);
        QCOMPARE(watch->access(), QVector<bool>({true, false})); // each told once
    }

    void failedRelease()
    {
        usb().release = UsbStatus::NotFound;
        const auto watch = watching({1, 60000, 1});
        watch->start();
        QTRY_COMPARE(usb().get(usb().calls).count("release"), 1);
        QTest::qWait(30);
        QCOMPARE(usb().get(usb().opens), 1);   // pausing
        QCOMPARE(usb().get(usb().handles), 1); // left open
        QVERIFY(watch->codes().isEmpty());
        usb().set(usb().release, UsbStatus::Good);
        watch->watch.setState(ButtonWatch::Job); // a scan must get the device
        QCOMPARE(usb().kept(), 0);
        watch->watch.setState(ButtonWatch::Idle);
        QTRY_VERIFY(watch->polls() > 0);
    }

    void jobFollowsTheStateFile()
    {
        const auto watch = watching();
        QVERIFY(state::write(state::Idle)); // of the batch before: the preparing window stays
        watch->watch.setShownText("正在准备扫描");
        watch->watch.setState(ButtonWatch::Job);
        watch->start();
        QTRY_COMPARE(watch->words(), jobBegins);
        QTest::qWait(20);
        QCOMPARE(watch->watch.state(), int(ButtonWatch::Job));
        QStringList expected = jobBegins;
        for (const int code : {1, 2, 1000, 999, int(state::Busy), 2999}) {
            QVERIFY(state::write(code));
            if (code == 1000)
                continue;
            expected << state::text(code);
            QTRY_COMPARE(watch->words(), expected); // each once
        }
        QCOMPARE(watch->watch.shownText(), QString("正在上传第999张图像"));
        QCOMPARE(watch->polls(), 0);
        QVERIFY(state::write(state::Idle));
        QTRY_VERIFY(watch->polls() > 0);
        QCOMPARE(watch->watch.state(), int(ButtonWatch::Idle));
        QCOMPARE(watch->words(), expected + QStringList("closeWindow"));
    }

    // Neither a text nor the end of the job.
    void damagedStateFile()
    {
        for (const QByteArray& content :
             {QByteArray(), QByteArray(""), QByteArray("\n1009\n"), QByteArray("10-"), QByteArray("-5\n"),
              QByteArray("99999999999999\n"), QByteArray(3000000, '1'), QByteArray("\0\xff\x01\x08", 4)}) {
            init();
            if (!content.isNull()) // else the file is missing
                QVERIFY(putFile(paths::stateFile(), content));
            const auto watch = watching();
            watch->watch.setState(ButtonWatch::Job);
            watch->start();
            QTRY_COMPARE(watch->words(), jobBegins);
            QTest::qWait(10);
            QVERIFY(putFile(paths::stateFile(), "7\r\nrest"));
            QTRY_COMPARE(watch->words(), jobBegins + QStringList("正在扫描第7张图像"));
        }
    }

    void jobEndedByOthers()
    {
        for (const int last : {3, int(state::JamOrCoverOpen)}) {
            init();
            const auto watch = watching({1, 1, 60000});
            QVERIFY(state::write(3));
            watch->watch.setState(ButtonWatch::Job);
            watch->start();
            QTRY_COMPARE(watch->words().size(), 3);
            QVERIFY(state::write(last));
            watch->watch.setState(ButtonWatch::Idle); // no wait outlasts it
            QTRY_VERIFY(watch->polls() > 1);
            // A fault written right before the end is shown all the same, and not closed.
            QCOMPARE(watch->words().mid(3), QStringList(last == 3 ? "closeWindow" : state::text(last)));
        }
    }

    void pressesDuringAJob()
    {
        const auto watch = watching();
        QVERIFY(state::write(3));
        watch->watch.setState(ButtonWatch::Job);
        for (int i = 0; i < 3; ++i)
            usb().press(1 + i % 2);
        watch->start();
        QTRY_VERIFY(watch->words().size() >= 3);
        watch->watch.setState(ButtonWatch::Idle);
        QTRY_VERIFY(watch->polls() > 0);
        QCOMPARE(watch->count(1) + watch->count(2), 0);
        usb().press(2);
        QTRY_COMPARE(watch->count(2), 1);

        // A scanner that was unplugged during the job has forgotten its presses: the first one after that
        // counts.
        watch->watch.setState(ButtonWatch::Job);
        usb().set(usb().present, false);
        watch->watch.setState(ButtonWatch::Idle);
        QTRY_VERIFY(watch->count(4) > 0);
        usb().press(1);
        usb().set(usb().present, true);
        QTRY_COMPARE(watch->count(1), 1);
    }

    void lending()
    {
        const auto watch = watching();
        watch->start();
        QTRY_VERIFY(watch->polls() > 0);
        watch->watch.setState(ButtonWatch::Lent);
        QCOMPARE(usb().kept(), 0);
        const int opens = usb().get(usb().opens);
        usb().press(1);
        QTest::qWait(20);
        QCOMPARE(usb().get(usb().opens), opens);
        for (const int nonsense : {-1, 3})
            watch->watch.setState(nonsense);
        QCOMPARE(watch->watch.state(), int(ButtonWatch::Lent));
        watch->watch.setState(ButtonWatch::Idle);
        QTRY_COMPARE(watch->count(1), 1); // pressed during a loan: not lost
        QVERIFY(watch->words().isEmpty());
    }

    void lendingWaitsForThePoll()
    {
        std::atomic<bool> reading{false}, go{false};
        usb().onRead = [&] {
            reading = true;
            while (!go)
                std::this_thread::yield();
        };
        usb().press(1);
        const auto watch = watching({60000, 60000, 60000});
        QVERIFY(state::write(3));
        watch->start();
        QTRY_VERIFY(reading);
        QElapsedTimer timer;
        timer.start();
        std::thread finishing([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            go = true;
        });
        watch->watch.setState(ButtonWatch::Job);
        finishing.join();
        QCOMPARE(usb().kept(), 0);
        QVERIFY(timer.elapsed() < 500);
        QTRY_COMPARE(watch->words().size(), 3);
        QVERIFY(watch->codes().isEmpty()); // a press that crossed the start of the job

        watch->watch.setState(ButtonWatch::Idle);
        go = reading = false;
        QTRY_VERIFY(reading);
        timer.restart();
        watch->watch.setState(ButtonWatch::Lent); // the poll hangs: no longer than agreed
        QVERIFY(timer.elapsed() >= 450 && timer.elapsed() < 5000);
        go = true;
    }

    void stopIsPrompt()
    {
        for (const UsbStatus release : {UsbStatus::Good, UsbStatus::Io}) {
            for (const int state : {0, 1, 2}) {
                init();
                usb().release = release;
                const auto watch = watching({60000, 60000, 60000});
                watch->watch.setState(state);
                watch->start();
                QTest::qWait(20);
                QElapsedTimer timer;
                timer.start();
                watch->stop();
                QVERIFY(timer.elapsed() < 2000);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestButtonWatch)
#include "tst_buttonwatch.moc"
