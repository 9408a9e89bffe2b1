// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "device/cancelflag.h"
#include "device/scanthread.h"
#include "device/statefile.h"
#include "device/waitclock.h"
#include "scriptedsane.h"

#include <QSignalSpy>
#include <QtTest>
#include <atomic>

namespace {

// Adds the pauses up instead of sleeping.
class CountingClock : public WaitClock
{
public:
    explicit CountingClock(int& total, std::function<void(int)> onPause) : m_total(total), m_onPause(onPause)
    {
    }
    void pause(int milliseconds) override
    {
        Q_ASSERT(milliseconds <= 100);
        m_total += milliseconds;
        if (m_onPause)
            m_onPause(m_total);
    }

private:
    int& m_total;
    std::function<void(int)> m_onPause;
};

ScriptedFrame page()
{
    return frame(FrameFormat::Gray, 2, 2, 8, {"page"});
}

QByteArray stateText()
{
    return fileContent(paths::stateFile());
}

} // namespace

class TestScanThread : public QObject
{
    Q_OBJECT
    using Outcome = scanThread::Outcome;

private slots:
    void init()
    {
        QVERIFY(freshRoot());
        cancelflag::clear();
        m_script = {};
        m_waitedMs = 0;
        m_onPause = nullptr;
    }

    void wholeBatch()
    {
        QList<QByteArray> states; // what a reader sees during the batch
        m_script.onRead = [&states] {
            if (states.isEmpty() || states.last() != stateText())
                states << stateText();
        };
        m_script.frames = {page(), page()};
        cancelflag::set(); // left over from before
        const auto thread = makeThread();
        QSignalSpy over(thread.get(), &scanThread::scanOverSignals);
        QSignalSpy started(thread.get(), &scanThread::pageStarted);
        run(*thread);
        QCOMPARE(over.count(), 1);
        QCOMPARE(started.count(), 2);
        QCOMPARE(thread->outcome(), Outcome::Scanned);
        QCOMPARE(thread->pagesScanned(), 2);
        QCOMPARE(pageNames(), QStringList({"zarnqwd200-0001.pnm", "zarnqwd200-0002.pnm"}));
        QCOMPARE(states, QList<QByteArray>({"0001\n", "0002\n"}));
        QCOMPARE(stateText(), QByteArray("0000\n"));
        QCOMPARE(m_script.calls.mid(m_script.calls.size() - 2), QStringList({"cancel", "close"}));
    }

    void modelIsComparedExactly()
    {
        m_script.devices = {{"a", "", "QWD200", ""}, {"b", "", "qwd2000", ""}, {"c", "", "", ""}};
        const auto thread = makeThread();
        QSignalSpy over(thread.get(), &scanThread::scanOverSignals);
        run(*thread);
        QCOMPARE(over.count(), 0);
        QCOMPARE(thread->outcome(), Outcome::NoScanner);
        QVERIFY(m_script.calls.filter("open").isEmpty());
        QCOMPARE(stateText(), QByteArray("1006\n"));

        m_script.devices.push_back({"d", "", "qwd200", ""});
        m_script.devices.push_back({"e", "", "qwd200", ""});
        m_script.frames = {page()};
        run(*thread);
        QCOMPARE(m_script.calls.filter("open"), QStringList({"open d"}));
        QCOMPARE(over.count(), 1);

        m_script.opens = {SaneStatus::DeviceBusy}; // lost while it is waited for
        m_onPause = [this](int) { m_script.devices.clear(); };
        const auto another = makeThread();
        run(*another);
        QCOMPARE(another->outcome(), Outcome::NoScanner);
    }

    void busy()
    {
        const SaneStatus busy = SaneStatus::DeviceBusy, broken = SaneStatus::IoError;
        const struct
        {
            std::deque<SaneStatus> opens; // more than three: the last one again and again
            int cancelAtMs, waitedMs;
            const char* code;
            Outcome outcome;
        } rows[] = {{{busy, broken, busy}, -1, 15000, "0000\n", Outcome::Scanned},
                    {{busy, busy, busy, busy}, -1, 21 * 5000, "0000\n", Outcome::StillBusy},
                    {{busy, broken, broken, broken}, -1, 21 * 5000, "1010\n", Outcome::OpenFailed},
                    {{broken, broken, broken, broken}, -1, 5000, "1010\n", Outcome::OpenFailed},
                    {{busy, busy, busy, busy}, 7300, 7300, "1011\n", Outcome::Cancelled}};
        for (const auto& row : rows) {
            init();
            m_script.opens = row.opens;
            if (row.opens.size() > 3)
                m_script.opens.resize(100, row.opens.back());
            QByteArray whileWaiting;
            m_onPause = [&](int totalMs) {
                whileWaiting = stateText();
                if (totalMs == row.cancelAtMs)
                    cancelflag::set();
            };
            m_script.frames = {page()};
            const auto thread = makeThread();
            QSignalSpy over(thread.get(), &scanThread::scanOverSignals);
            run(*thread);
            QCOMPARE(m_waitedMs, row.waitedMs);
            QCOMPARE(whileWaiting, QByteArray("1010\n"));
            QCOMPARE(stateText(), QByteArray(row.code));
            QCOMPARE(thread->outcome(), row.outcome);
            QCOMPARE(over.count(), 1);
            // Looked up anew each time, and never initialised twice.
            const QStringList sessions = m_script.calls.filter(QRegularExpression("^(init|exit)$"));
            for (int i = 0; i < sessions.size(); ++i)
                QCOMPARE(sessions[i], QString(i % 2 ? "exit" : "init"));
            QCOMPARE((sessions.size() + 1) / 2, m_script.calls.filter("open ").size());
        }
    }

    void faults()
    {
        const struct
        {
            SaneStatus status;
            const char* code;
            Outcome outcome;
        } rows[] = {{SaneStatus::Jammed, "1009\n", Outcome::Jam},
                    {SaneStatus::CoverOpen, "1009\n", Outcome::CoverOpen},
                    {SaneStatus::IoError, "1006\n", Outcome::IoError},
                    {SaneStatus(77), "1006\n", Outcome::IoError},
                    {SaneStatus::Cancelled, "1011\n", Outcome::Cancelled},   // at the device
                    {SaneStatus::DeviceBusy, "1010\n", Outcome::StillBusy}}; // taken by another program
        for (const auto& [status, code, outcome] : rows)
            for (const bool atStart : {true, false}) {
                init();
                ScriptedFrame bad = page();
                bad.end = status;
                if (atStart) {
                    m_script.starts = {status};
                } else { // the first fault counts
                    m_script.starts = {SaneStatus::Good, SaneStatus::Good, SaneStatus::IoError};
                    m_script.frames = {page(), bad};
                }
                const auto thread = makeThread();
                run(*thread);
                QCOMPARE(stateText(), QByteArray(code));
                QCOMPARE(thread->outcome(), outcome);
                QCOMPARE(pageNames(), atStart
                                          ? QStringList()
                                          : QStringList({"zarnqwd200-0001.pnm", "zarnqwd200-0002.pnm.part"}));
                QCOMPARE(thread->pagesScanned(), atStart ? 0 : 1);
                QCOMPARE(m_script.calls.filter("close").size(), 1);
            }
    }

    void twoBatches()
    {
        const auto thread = makeThread();
        m_script.starts = {SaneStatus::Jammed};
        run(*thread);
        QCOMPARE(thread->outcome(), Outcome::Jam);
        m_script.frames = {page()};
        run(*thread);
        QCOMPARE(thread->outcome(), Outcome::Scanned);
        QCOMPARE(stateText(), QByteArray("0000\n"));
        run(*thread);
        QCOMPARE(thread->outcome(), Outcome::FeederEmpty);
        QCOMPARE(stateText(), QByteArray("1007\n"));
        QCOMPARE(thread->pagesScanned(), 0);
    }

    void pagesFromTheGlassJoinOneBatch()
    {
        m_script.frames = {page(), page(), page(), page(), page()};
        const auto thread = makeThread();
        int asked = 0;
        connect(
            thread.get(), &scanThread::nextPageAsked, thread.get(),
            [&] { thread->answerNextPage(++asked < 3); }, Qt::DirectConnection);
        thread->setContinuous(true);
        run(*thread, 1);
        QCOMPARE(thread->pagesScanned(), 3);
        QCOMPARE(thread->outcome(), Outcome::Scanned);
        thread->setContinuous(false);
        run(*thread, 1);
        QCOMPARE(thread->pagesScanned(), 1);

        // Nobody answers: a cancel ends the waiting.
        disconnect(thread.get(), &scanThread::nextPageAsked, nullptr, nullptr);
        connect(
            thread.get(), &scanThread::nextPageAsked, thread.get(), [] { cancelflag::set(); },
            Qt::DirectConnection);
        thread->setContinuous(true);
        run(*thread, 1);
        QCOMPARE(thread->outcome(), Outcome::Cancelled);
    }

    // Closing the program in the middle of a page.
    void endsWithItsObject()
    {
        m_script.frames = {page()};
        m_script.frames.front().portions.assign(100000, QByteArray(1, 'x'));
        std::atomic<bool> reading{false};
        m_script.onRead = [&reading] {
            reading = true;
            QThread::msleep(1);
        };
        auto thread = makeThread();
        thread->setScanParamaters(300, 4, 2, 2, 1, 2, 1, 1, 1, 1);
        thread->start();
        QTRY_VERIFY(reading);
        thread.reset();
        QCOMPARE(stateText(), QByteArray("1011\n"));
        QCOMPARE(m_script.calls.mid(m_script.calls.size() - 3), QStringList({"cancel", "close", "exit"}));
    }

    void stateFile()
    {
        QCOMPARE(state::pageCode(998), 998);
        QCOMPARE(state::pageCode(1006), 999);       // no page looks like a fault
        QVERIFY(QDir().mkpath(paths::stateFile())); // something in the way
        QVERIFY(!state::write(state::Idle));
    }

private:
    // Runs one batch to its end.
    void run(scanThread& thread, int source = 4)
    {
        thread.setScanParamaters(300, source, 2, 2, 1, 2, 1, 1, 1, 1);
        thread.start(QThread::InheritPriority);
        QVERIFY(thread.wait(20000));
    }
    std::unique_ptr<scanThread> makeThread()
    {
        return std::make_unique<scanThread>(std::make_unique<ScriptedSane>(m_script),
                                            std::make_unique<CountingClock>(m_waitedMs, m_onPause));
    }
    QStringList pageNames() const
    {
        return QDir(paths::tempFolder()).entryList({"zarnqwd*"}, QDir::Files, QDir::Name);
    }

    Script m_script;
    int m_waitedMs = 0;
    std::function<void(int)> m_onPause;
};

QTEST_GUILESS_MAIN(TestScanThread)
#include "tst_scanthread.moc"
