// SPDX-License-Identifier: GPL-3.0-or-later
// The watcher of the keys and of the state file, with a scripted USB side.
#include "config/installroot.h"
#include "config/paths.h"
#include "device/buttonwatch.h"
#include "device/statefile.h"
#include "device/statetexts.h"
#include "scriptedusb.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QtTest>
#include <atomic>
#include <thread>

namespace {

// A watcher in a thread of its own, and what it reported.
class Watching
{
public:
    explicit Watching(UsbScript& usb, ButtonWatch::Intervals intervals = {1, 1, 1})
        : m_watch(std::make_unique<ScriptedUsb>(usb), intervals,
                  {[this](int code) { add(code == buttoncode::NoPress ? m_polls : m_codes, code); },
                   [this](const QString& word) { add(m_words, word); },
                   [this](bool denied) { add(m_access, denied); }})
    {
    }
    ~Watching() { stop(); }

    void start()
    {
        m_thread = std::thread([this] { m_watch.loop(); });
    }
    void stop()
    {
        m_watch.stop();
        if (m_thread.joinable())
            m_thread.join();
    }

    ButtonWatch& watch() { return m_watch; }
    QVector<int> codes() const { return copy(m_codes); } // without the polls that met no press
    int polls() const { return copy(m_polls).size(); }
    QStringList words() const { return copy(m_words); }
    QVector<bool> access() const { return copy(m_access); }
    void forgetWords()
    {
        const std::lock_guard lock(m_mutex);
        m_words.clear();
    }

private:
    template <typename List, typename Value>
    void add(List& list, const Value& value)
    {
        const std::lock_guard lock(m_mutex);
        list << value;
    }
    template <typename List>
    List copy(const List& list) const
    {
        const std::lock_guard lock(m_mutex);
        List own = list;
        own.detach(); // shares nothing with the other thread
        return own;
    }

    mutable std::mutex m_mutex;
    QVector<int> m_codes, m_polls;
    QVector<bool> m_access;
    QStringList m_words;
    ButtonWatch m_watch;
    std::thread m_thread;
};

void writeRaw(const QByteArray& content)
{
    QFile file(paths::stateFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

const QStringList jobBegins = {"setButtonHide", "showWindow"};

} // namespace

class TestButtonWatch : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void reports_data();
    void reports();
    void texts_data();
    void texts();
    void pressesArriveOnceAndInOrder();
    void absentAndBack();
    void accessDenied();
    void failedRelease();
    void jobFollowsTheStateFile();
    void staleEndKeepsThePreparingWindow();
    void damagedStateFile_data();
    void damagedStateFile();
    void jobEndedByOthers();
    void faultOutlivesItsJob();
    void pressesDuringAJob();
    void lending();
    void lendingWaitsForThePoll();
    void stopIsPrompt_data();
    void stopIsPrompt();
    void manyPollsWithUnplugging();
};

void TestButtonWatch::init()
{
    QDir(installRoot()).removeRecursively();
    QVERIFY(QDir().mkpath(installRoot()));
}

void TestButtonWatch::reports_data()
{
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<int>("code");
    const QByteArray good("\x04\0\0\x01", 4);
    QTest::newRow("key 1") << good << 1;
    QTest::newRow("key 2") << QByteArray("\x04\0\0\x02", 4) << 2;
    QTest::newRow("key 0") << QByteArray("\x04\0\0\0", 4) << 0;
    QTest::newRow("key 255") << QByteArray("\x04\0\0\xff", 4) << 255;
    QTest::newRow("not the off-line code") << QByteArray("\x04\0\0\x04", 4) << 5;
    QTest::newRow("not the on-line code") << QByteArray("\x04\0\0\x05", 4) << 5;
    for (int length : {0, 1, 2, 3})
        QTest::addRow("%d bytes", length) << good.left(length) << 5;
    for (int length : {5, 8})
        QTest::addRow("%d bytes", length) << good + QByteArray(length - 4, '\1') << 5;
    for (int byte : {0, 1, 2}) {
        QByteArray wrong = good;
        wrong[byte] = 0x09;
        QTest::addRow("byte %d wrong", byte) << wrong << 5;
    }
}

void TestButtonWatch::reports()
{
    QFETCH(QByteArray, report);
    QFETCH(int, code);
    UsbScript usb;
    usb.reports.push_back({UsbStatus::Good, report});
    Watching watching(usb, {60000, 60000, 1});
    watching.start();
    QTRY_COMPARE(watching.polls() + watching.codes().size(), 1);
    QCOMPARE(watching.codes(), code == 5 ? QVector<int>() : QVector<int>{code});
    QCOMPARE(watching.watch().lastButton(), code == 5 ? 0 : code);
    watching.stop();
    QCOMPARE(usb.kept(), 0);
}

void TestButtonWatch::texts_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("fault");
    const auto row = [](int code, const char* text, bool fault = false) {
        QTest::addRow("%d", code) << code << QString::fromUtf8(text) << fault;
    };
    for (int code : {-1, 0, 1000, 1012, 1999, 2000, 3000, 99999999})
        row(code, "");
    row(1, "正在扫描第1张图像");
    row(999, "正在扫描第999张图像");
    row(1001, "请将手指放入指纹模块");
    row(1002, "指纹验证成功！");
    row(1003, "指纹验证失败！");
    row(1004, "内存清除中……");
    row(1005, "指纹库为空，请录入指纹，此次扫描取消！", true);
    row(1006, "扫描仪通信错误，请重启应用和扫描仪！", true);
    row(1007, "ADF进纸器无纸,请将稿件放入ADF进纸器！\n\n如果取消扫描，请按机器上“清除”键取消扫描！", true);
    row(1008, "正在准备扫描");
    row(1009, "进纸失败或纸张超长！\n\n请检查纸张状态后重试", true);
    row(1010, "扫描仪忙，请关闭其他扫描软件，然后重试！");
    row(1011, "取消扫描");
    row(2001, "正在上传第1张图像");
    row(2999, "正在上传第999张图像");
}

void TestButtonWatch::texts()
{
    QFETCH(int, code);
    QFETCH(QString, text);
    QFETCH(bool, fault);
    QCOMPARE(state::text(code), text);
    QCOMPARE(state::isFaultText(text), fault);
}

void TestButtonWatch::pressesArriveOnceAndInOrder()
{
    UsbScript usb;
    for (int code : {1, 2, 3, 77})
        usb.press(code);
    Watching watching(usb);
    watching.start();
    QTRY_VERIFY(watching.polls() > 3);
    QCOMPARE(watching.codes(), QVector<int>({1, 2, 3, 77}));
    const std::lock_guard lock(usb.mutex);
    QVERIFY(usb.opens >= 7); // one opening per poll
}

void TestButtonWatch::absentAndBack()
{
    UsbScript usb;
    usb.present = false;
    Watching watching(usb);
    watching.start();
    QTRY_VERIFY(watching.codes().size() > 2);
    QVERIFY(watching.polls() == 0 && watching.codes().count(4) == watching.codes().size());
    {
        const std::lock_guard lock(usb.mutex);
        usb.present = true;
        usb.press(1);
    }
    QTRY_COMPARE(watching.codes().last(), 1);
    QTRY_VERIFY(watching.polls() > 0);
    QVERIFY(watching.access().isEmpty());
}

void TestButtonWatch::accessDenied()
{
    UsbScript usb;
    usb.opening = UsbStatus::Access;
    Watching watching(usb);
    watching.start();
    QTRY_VERIFY(watching.codes().count(4) > 3);
    QCOMPARE(watching.access(), QVector<bool>({true}));
    {
        const std::lock_guard lock(usb.mutex);
        usb.opening = UsbStatus::Good;
    }
    QTRY_VERIFY(watching.polls() > 1);
    QCOMPARE(watching.access(), QVector<bool>({true, false}));
}

void TestButtonWatch::failedRelease()
{
    UsbScript usb;
    usb.release = UsbStatus::NotFound;
    Watching watching(usb, {1, 60000, 1});
    QTest::ignoreMessage(QtWarningMsg, "usb releaseDevice RETURN_ERROR");
    watching.start();
    QTRY_COMPARE(
        [&] {
            const std::lock_guard lock(usb.mutex);
            return usb.calls.count("release");
        }(),
        1);
    QTest::qWait(30);
    {
        const std::lock_guard lock(usb.mutex);
        QCOMPARE(usb.opens, 1);   // pausing
        QCOMPARE(usb.handles, 1); // left open
        usb.release = UsbStatus::Good;
    }
    QVERIFY(watching.polls() == 0 && watching.codes().isEmpty());
    watching.watch().setState(ButtonWatch::Job); // a scan must get the device
    {
        const std::lock_guard lock(usb.mutex);
        QCOMPARE(usb.kept(), 0);
    }
    watching.watch().setState(ButtonWatch::Idle);
    QTRY_VERIFY(watching.polls() > 0);
}

void TestButtonWatch::jobFollowsTheStateFile()
{
    UsbScript usb;
    Watching watching(usb);
    QVERIFY(state::write(state::Preparing));
    watching.watch().setState(ButtonWatch::Job);
    watching.start();
    QStringList expected = jobBegins;
    for (int code : {int(state::Preparing), 1, 2, 1000, 999, int(state::Busy), 2999}) {
        QVERIFY(state::write(code));
        const QString text = state::text(code);
        if (text.isEmpty())
            continue;
        expected << text;
        QTRY_COMPARE(watching.words(), expected); // each once
    }
    QCOMPARE(watching.watch().shownText(), QString("正在上传第999张图像"));
    QCOMPARE(watching.polls(), 0);
    QVERIFY(state::write(state::Idle));
    expected << "closeWindow";
    QTRY_COMPARE(watching.words(), expected);
    QTRY_COMPARE(watching.watch().state(), int(ButtonWatch::Idle));
    QTRY_VERIFY(watching.polls() > 0);
    QCOMPARE(watching.words(), expected);
}

void TestButtonWatch::staleEndKeepsThePreparingWindow()
{
    UsbScript usb;
    Watching watching(usb);
    QVERIFY(state::write(state::Idle));
    watching.watch().setShownText("正在准备扫描");
    watching.watch().setState(ButtonWatch::Job);
    watching.start();
    QTRY_COMPARE(watching.words(), jobBegins);
    QTest::qWait(20);
    QCOMPARE(watching.words(), jobBegins);
    QCOMPARE(watching.watch().state(), int(ButtonWatch::Job));
    watching.watch().setShownText("正在处理第1张图像");
    QTRY_COMPARE(watching.words(), jobBegins + QStringList("closeWindow"));
}

void TestButtonWatch::damagedStateFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("line end only") << QByteArray("\n1009\n");
    QTest::newRow("half a word") << QByteArray("10-");
    QTest::newRow("negative") << QByteArray("-5\n");
    QTest::newRow("too large") << QByteArray("99999999999999\n");
    QTest::newRow("huge") << QByteArray(3000000, '1');
    QTest::newRow("binary") << QByteArray("\0\xff\x01\x08", 4);
    QTest::newRow("missing") << QByteArray();
}

void TestButtonWatch::damagedStateFile()
{
    QFETCH(QByteArray, content);
    if (!content.isNull())
        writeRaw(content);
    UsbScript usb;
    Watching watching(usb);
    if (content.isNull())
        QTest::ignoreMessage(QtWarningMsg, "open error");
    watching.watch().setState(ButtonWatch::Job);
    watching.start();
    QTRY_COMPARE(watching.words(), jobBegins);
    QTest::qWait(10);
    QCOMPARE(watching.words(), jobBegins); // neither a text nor the end of the job
    writeRaw("7\r\nrest");
    QTRY_COMPARE(watching.words(), jobBegins + QStringList("正在扫描第7张图像"));
}

void TestButtonWatch::jobEndedByOthers()
{
    UsbScript usb;
    Watching watching(usb, {1, 1, 60000});
    QVERIFY(state::write(3));
    watching.watch().setState(ButtonWatch::Job);
    watching.start();
    QTRY_COMPARE(watching.words().size(), 3);
    watching.watch().setState(ButtonWatch::Idle); // no wait outlasts it
    QTRY_COMPARE(watching.words().last(), QString("closeWindow"));
    QTRY_VERIFY(watching.polls() > 0);

    watching.forgetWords();
    watching.watch().setState(ButtonWatch::Job);
    QTRY_COMPARE(watching.words(), jobBegins + QStringList("正在扫描第3张图像"));
}

// The fault is written right before the batch ends: it is shown all the same, and not closed.
void TestButtonWatch::faultOutlivesItsJob()
{
    UsbScript usb;
    Watching watching(usb, {1, 1, 60000});
    QVERIFY(state::write(3));
    watching.watch().setState(ButtonWatch::Job);
    watching.start();
    QTRY_COMPARE(watching.words().size(), 3);
    QVERIFY(state::write(state::JamOrCoverOpen));
    watching.watch().setState(ButtonWatch::Idle);
    QTRY_VERIFY(watching.polls() > 1);
    QCOMPARE(watching.words().mid(3), QStringList(state::text(state::JamOrCoverOpen)));
}

void TestButtonWatch::pressesDuringAJob()
{
    UsbScript usb;
    Watching watching(usb);
    QVERIFY(state::write(3));
    watching.watch().setState(ButtonWatch::Job);
    for (int i = 0; i < 3; ++i)
        usb.press(1 + i % 2);
    watching.start();
    QTRY_VERIFY(watching.words().size() >= 3);
    watching.watch().setState(ButtonWatch::Idle);
    QTRY_VERIFY(watching.polls() > 0);
    {
        const std::lock_guard lock(usb.mutex);
        QVERIFY(usb.reports.empty());
        usb.press(2);
    }
    QTRY_VERIFY(watching.codes().contains(2));
    QVERIFY(!watching.codes().contains(1));

    // A scanner that was unplugged during the job has forgotten its presses: the first one after that counts.
    watching.watch().setState(ButtonWatch::Job);
    {
        const std::lock_guard lock(usb.mutex);
        usb.present = false;
    }
    watching.watch().setState(ButtonWatch::Idle);
    QTRY_VERIFY(watching.codes().contains(4));
    {
        const std::lock_guard lock(usb.mutex);
        usb.present = true;
        usb.press(1);
    }
    QTRY_VERIFY(watching.codes().contains(1));
}

void TestButtonWatch::lending()
{
    UsbScript usb;
    Watching watching(usb);
    watching.start();
    QTRY_VERIFY(watching.polls() > 0);
    watching.watch().setState(ButtonWatch::Lent);
    int opens = 0;
    {
        const std::lock_guard lock(usb.mutex);
        QCOMPARE(usb.kept(), 0);
        opens = usb.opens;
        usb.press(1);
    }
    QTest::qWait(20);
    QVERIFY(watching.words().isEmpty());
    QCOMPARE(usb.opens, opens);
    for (int nonsense : {-1, 3, 99})
        watching.watch().setState(nonsense);
    QCOMPARE(watching.watch().state(), int(ButtonWatch::Lent));
    watching.watch().setState(ButtonWatch::Idle);
    QTRY_COMPARE(watching.codes(), QVector<int>({1})); // pressed during a loan: not lost
}

void TestButtonWatch::lendingWaitsForThePoll()
{
    UsbScript usb;
    std::atomic<bool> reading{false}, go{false};
    usb.onRead = [&] {
        reading = true;
        while (!go)
            std::this_thread::yield();
    };
    usb.press(1);
    Watching watching(usb, {60000, 60000, 60000});
    QVERIFY(state::write(3));
    watching.start();
    QTRY_VERIFY(reading);
    QElapsedTimer timer;
    timer.start();
    std::thread finishing([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        go = true;
    });
    watching.watch().setState(ButtonWatch::Job);
    {
        const std::lock_guard lock(usb.mutex);
        QCOMPARE(usb.kept(), 0);
    }
    QVERIFY(go && timer.elapsed() < 500);
    finishing.join();
    QTRY_COMPARE(watching.words().size(), 3);
    QVERIFY(watching.codes().isEmpty()); // a press that crossed the start of the job

    watching.watch().setState(ButtonWatch::Idle);
    go = reading = false;
    QTRY_VERIFY(reading);
    timer.restart();
    watching.watch().setState(ButtonWatch::Lent); // the poll hangs: no longer than agreed
    QVERIFY(timer.elapsed() >= 450 && timer.elapsed() < 5000);
    go = true;
}

void TestButtonWatch::stopIsPrompt_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("releases");
    QTest::newRow("between polls") << 0 << true;
    QTest::newRow("after a failed release") << 0 << false;
    QTest::newRow("in a job") << 1 << true;
    QTest::newRow("lent") << 2 << true;
}

void TestButtonWatch::stopIsPrompt()
{
    QFETCH(int, state);
    QFETCH(bool, releases);
    UsbScript usb;
    usb.release = releases ? UsbStatus::Good : UsbStatus::Io;
    Watching watching(usb, {60000, 60000, 60000});
    watching.watch().setState(state);
    watching.start();
    QTest::qWait(20);
    QElapsedTimer timer;
    timer.start();
    watching.stop();
    QVERIFY(timer.elapsed() < 2000);
}

// Nothing stays open, no press is doubled, none is lost while the device is there.
void TestButtonWatch::manyPollsWithUnplugging()
{
    constexpr int presses = 300;
    UsbScript usb;
    {
        Watching watching(usb, {0, 0, 1});
        watching.start();
        for (int i = 0; i < presses; ++i) {
            {
                const std::lock_guard lock(usb.mutex);
                usb.present = i % 7 != 3;
                usb.press(i % 2 ? 1 : 2);
            }
            if (i % 50 == 0)
                QTest::qWait(1);
        }
        {
            const std::lock_guard lock(usb.mutex);
            usb.present = true;
        }
        QTRY_COMPARE(
            [&] {
                auto codes = watching.codes();
                codes.removeAll(4);
                return codes.size();
            }(),
            presses);
        QVector<int> codes = watching.codes();
        codes.removeAll(4);
        for (int i = 0; i < presses; ++i)
            QCOMPARE(codes[i], i % 2 ? 1 : 2);
    }
    QCOMPARE(usb.kept(), 0);
}

QTEST_GUILESS_MAIN(TestButtonWatch)
#include "tst_buttonwatch.moc"
