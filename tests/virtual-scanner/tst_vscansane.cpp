// SPDX-License-Identifier: GPL-3.0-or-later
// The virtual scanner as a client of the real libsane sees it.
#include "daemonfixture.h"

#include <QElapsedTimer>
#include <QtTest>
#include <csignal>
#include <memory>
#include <sane/sane.h>
#include <thread>

namespace {

struct Read
{
    SANE_Status status;
    QByteArray bytes;
    int first() const { return bytes.isEmpty() ? -1 : static_cast<uchar>(bytes[0]); }
};

struct Closer
{
    void operator()(void* handle) const { sane_close(handle); }
};
using Handle = std::unique_ptr<void, Closer>;

} // namespace

class TestVscanSane : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void offersTheOptionList();
    void checksValues();
    void reportsDeviceAndModel();
    void deliversDuplexInOrder();
    void answersFaults_data();
    void answersFaults();
    void busyOpens();
    void cancelFromAnotherThread();
    void unpluggedMidPage();
    void clearKeyMidPage();
    void lidMidPage();
    void killedClientFreesTheScanner();
    void deadDaemonIsAnError();
    void staysSmall();
    void socketFiles();

private:
    Handle open(SANE_Status* status = nullptr);
    static SANE_Status set(const Handle& handle, int option, const char* word);
    static SANE_Status setResolution(const Handle& handle, int dpi);
    static Read page(const Handle& handle);
    bool command(const QString& words) { return DaemonFixture::command(words.split(' ')) == 0; }

    std::unique_ptr<DaemonFixture> m_daemon;
    QTemporaryDir m_sheets;
};

// Three small grey sheets: fronts 10, 20, 30; the back of the last one is missing.
void TestVscanSane::initTestCase()
{
    for (int number = 1; number <= 3; ++number) {
        for (const char* side : {"front", "back"}) {
            if (number == 3 && qstrcmp(side, "back") == 0)
                continue;
            QFile file(m_sheets.filePath(QString("00%1-%2.pgm").arg(number).arg(side)));
            QVERIFY(file.open(QIODevice::WriteOnly));
            const char level = static_cast<char>(number * 10 + (qstrcmp(side, "back") == 0));
            file.write("P5\n600 900\n255\n" + QByteArray(600 * 900, level));
        }
    }
}

void TestVscanSane::init()
{
    m_daemon = std::make_unique<DaemonFixture>();
    QVERIFY(m_daemon->start({"--feeder", m_sheets.path()}));
    QCOMPARE(sane_init(nullptr, nullptr), SANE_STATUS_GOOD);
}

void TestVscanSane::cleanup()
{
    sane_exit();
    m_daemon.reset();
}

// An opened scanner that delivers small grey pages.
Handle TestVscanSane::open(SANE_Status* status)
{
    SANE_Handle handle = nullptr;
    const SANE_Status opened = sane_open("vscan:one", &handle);
    if (status)
        *status = opened;
    Handle owner(opened == SANE_STATUS_GOOD ? handle : nullptr);
    if (owner) {
        set(owner, 4, "FULL");
        set(owner, 7, "灰度");
    }
    return owner;
}

SANE_Status TestVscanSane::set(const Handle& handle, int option, const char* word)
{
    QByteArray value(word);
    return sane_control_option(handle.get(), option, SANE_ACTION_SET_VALUE, value.data(), nullptr);
}

SANE_Status TestVscanSane::setResolution(const Handle& handle, int dpi)
{
    SANE_Int value = dpi;
    return sane_control_option(handle.get(), 1, SANE_ACTION_SET_VALUE, &value, nullptr);
}

// One page with the status that ended it; EOF when all went well.
Read TestVscanSane::page(const Handle& handle)
{
    Read read{sane_start(handle.get()), {}};
    char buffer[32768];
    SANE_Int length = 0;
    while (read.status == SANE_STATUS_GOOD) {
        read.status = sane_read(handle.get(), reinterpret_cast<SANE_Byte*>(buffer), sizeof buffer, &length);
        read.bytes.append(buffer, length);
    }
    return read;
}

void TestVscanSane::offersTheOptionList()
{
    const QList<QPair<int, QString>> expected{
        {2, "Flatbed|ADF Front|ADF Back|ADF Duplex|Automatic Document Feeder"},
        {4, "FULL|A4|Letter|A5|B5|LEG|USER"},
        {6, "文字效果|图片效果|文字和图片"},
        {7, "彩色|灰度|黑白"},
        {9, "开|关"},
        {10, "正常|左转90度|右转90度|旋转180度"},
        {11, "无|加白边|加黑边"},
        {12, "无|0.1|0.2|0.3|0.4|0.5|0.6|0.7|0.8|0.9"},
        {13, "关|开"}};
    const Handle handle = open();
    QVERIFY(handle != nullptr);
    SANE_Int count = 0;
    QCOMPARE(sane_control_option(handle.get(), 0, SANE_ACTION_GET_VALUE, &count, nullptr), SANE_STATUS_GOOD);
    QCOMPARE(count, 14);
    QVERIFY(!sane_get_option_descriptor(handle.get(), 14));
    for (int group : {3, 5, 8})
        QCOMPARE(sane_get_option_descriptor(handle.get(), group)->type, SANE_TYPE_GROUP);
    QCOMPARE(sane_get_option_descriptor(handle.get(), 1)->type, SANE_TYPE_INT);
    for (const auto& [number, words] : expected) {
        const SANE_Option_Descriptor* option = sane_get_option_descriptor(handle.get(), number);
        QCOMPARE(option->constraint_type, SANE_CONSTRAINT_STRING_LIST);
        for (const QString& word : words.split('|')) {
            QCOMPARE(set(handle, number, word.toUtf8().constData()), SANE_STATUS_GOOD);
            QByteArray value(option->size, '\0');
            QCOMPARE(sane_control_option(handle.get(), number, SANE_ACTION_GET_VALUE, value.data(), nullptr),
                     SANE_STATUS_GOOD);
            QCOMPARE(QString::fromUtf8(value.constData()), word);
        }
    }
}

void TestVscanSane::checksValues()
{
    const Handle handle = open();
    QCOMPARE(set(handle, 2, "adf front"), SANE_STATUS_INVAL);
    QCOMPARE(set(handle, 3, "A4"), SANE_STATUS_INVAL);
    SANE_Int value = 250, info = 0;
    QCOMPARE(sane_control_option(handle.get(), 1, SANE_ACTION_SET_VALUE, &value, &info), SANE_STATUS_GOOD);
    QVERIFY((info & SANE_INFO_INEXACT) && (value == 200 || value == 300));
    QCOMPARE(setResolution(handle, 400), SANE_STATUS_GOOD);
    QCOMPARE(sane_start(handle.get()), SANE_STATUS_GOOD);
    QCOMPARE(sane_start(handle.get()), SANE_STATUS_DEVICE_BUSY);
    QCOMPARE(set(handle, 2, "Flatbed"), SANE_STATUS_DEVICE_BUSY);
    SANE_Parameters parameters;
    QCOMPARE(sane_get_parameters(handle.get(), &parameters), SANE_STATUS_GOOD);
    QCOMPARE(parameters.pixels_per_line, 1200); // the sheet has 600 at 300 dpi
    QCOMPARE(parameters.lines, 1800);
    sane_cancel(handle.get());
    QCOMPARE(set(handle, 2, "Flatbed"), SANE_STATUS_GOOD);
    QCOMPARE(page(handle).status, SANE_STATUS_EOF);
    QCOMPARE(page(handle).status, SANE_STATUS_EOF); // the glass gives its page again
}

void TestVscanSane::reportsDeviceAndModel()
{
    const auto model = [] {
        const SANE_Device** list = nullptr;
        sane_get_devices(&list, SANE_TRUE);
        return QString(list && list[0] ? list[0]->model : "none");
    };
    QCOMPARE(model(), QString("qwd200"));
    QVERIFY(command("model QWD200"));
    QCOMPARE(model(), QString("QWD200"));
    QVERIFY(command("unplug"));
    QCOMPARE(model(), QString("none"));
    SANE_Status status;
    QVERIFY(!open(&status));
    QCOMPARE(status, SANE_STATUS_IO_ERROR);
    QVERIFY(command("replug"));
    QVERIFY(open() != nullptr);
}

void TestVscanSane::deliversDuplexInOrder()
{
    const Handle handle = open();
    set(handle, 2, "ADF Duplex");
    for (int level : {10, 11, 20, 21, 30, 255}) {
        const Read read = page(handle);
        QCOMPARE(read.status, SANE_STATUS_EOF);
        QCOMPARE(read.bytes.size(), 600 * 900);
        QCOMPARE(read.first(), level);
    }
    QCOMPARE(page(handle).status, SANE_STATUS_NO_DOCS);
}

void TestVscanSane::answersFaults_data()
{
    QTest::addColumn<QString>("order");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("bytes"); // of the second page that arrive
    QTest::addColumn<int>("next");  // what the start after it answers
    QTest::newRow("jam at the start") << "jam-at 2" << 6 << 0 << 6;
    QTest::newRow("jam in the middle") << "jam-at 2 100000" << 6 << 100000 << 6;
    QTest::newRow("jam at the very end") << "jam-at 2 999999999" << 6 << 540000 << 6;
    QTest::newRow("error at the start") << "error-at 2" << 9 << 0 << 5;
    QTest::newRow("error in the middle") << "error-at 2 77" << 9 << 77 << 5;
    QTest::newRow("no documents") << "no-docs-at 2 0" << 7 << 0 << 5;
}

void TestVscanSane::answersFaults()
{
    QFETCH(QString, order);
    QFETCH(int, status);
    QFETCH(int, bytes);
    QFETCH(int, next);
    QVERIFY(command(order));
    const Handle handle = open();
    QCOMPARE(page(handle).first(), 10);
    const Read bad = page(handle);
    QCOMPARE(int(bad.status), status);
    QCOMPARE(bad.bytes.size(), bytes);
    QCOMPARE(int(page(handle).status), next);
    sane_cancel(handle.get());
    QVERIFY(command("clear"));
    const Read after = page(handle);
    // The jammed sheet is back in the feeder, after other faults all three have passed.
    QCOMPARE(int(after.status), status == 6 ? 5 : 7);
    if (status == 6)
        QCOMPARE(after.first(), 20);
}

void TestVscanSane::busyOpens()
{
    QVERIFY(command("busy 2"));
    SANE_Status status;
    for (SANE_Status expected : {SANE_STATUS_DEVICE_BUSY, SANE_STATUS_DEVICE_BUSY, SANE_STATUS_GOOD}) {
        const Handle handle = open(&status);
        QCOMPARE(status, expected);
    }
    const Handle first = open();
    const Handle second = open(&status);
    QCOMPARE(status, SANE_STATUS_DEVICE_BUSY);
    QCOMPARE(page(first).status, SANE_STATUS_EOF); // the refused open has not disturbed it
}

void TestVscanSane::cancelFromAnotherThread()
{
    QVERIFY(command("pace 20000")); // ten seconds a page
    const Handle handle = open();
    QElapsedTimer clock;
    clock.start();
    std::thread canceller([&] {
        QThread::msleep(50);
        QElapsedTimer call;
        call.start();
        sane_cancel(handle.get());
        QVERIFY(call.elapsed() < 50);
    });
    const Read read = page(handle);
    canceller.join();
    QCOMPARE(read.status, SANE_STATUS_CANCELLED);
    QVERIFY(clock.elapsed() < 3000);
    QVERIFY(command("pace fast"));
    QCOMPARE(page(handle).first(), 20);
}

void TestVscanSane::unpluggedMidPage()
{
    QVERIFY(command("pace 20000"));
    const Handle handle = open();
    QCOMPARE(sane_start(handle.get()), SANE_STATUS_GOOD);
    QVERIFY(command("unplug"));
    SANE_Byte buffer[4096];
    SANE_Int length = 1;
    QCOMPARE(sane_read(handle.get(), buffer, sizeof buffer, &length), SANE_STATUS_IO_ERROR);
    QCOMPARE(length, 0);
    QVERIFY(command("replug"));
    QCOMPARE(sane_start(handle.get()), SANE_STATUS_IO_ERROR);
}

void TestVscanSane::clearKeyMidPage()
{
    const Handle handle = open();
    QCOMPARE(sane_start(handle.get()), SANE_STATUS_GOOD);
    QVERIFY(command("press 3"));
    SANE_Byte buffer[4096];
    SANE_Int length = 0;
    QCOMPARE(sane_read(handle.get(), buffer, sizeof buffer, &length), SANE_STATUS_CANCELLED);
    QCOMPARE(sane_start(handle.get()), SANE_STATUS_CANCELLED);
    sane_cancel(handle.get());
    QCOMPARE(page(handle).first(), 20);
}

void TestVscanSane::lidMidPage()
{
    const Handle handle = open();
    QCOMPARE(sane_start(handle.get()), SANE_STATUS_GOOD);
    QVERIFY(command("cover open"));
    SANE_Byte buffer[4096];
    SANE_Int length = 0;
    QCOMPARE(sane_read(handle.get(), buffer, sizeof buffer, &length), SANE_STATUS_COVER_OPEN);
    QCOMPARE(sane_start(handle.get()), SANE_STATUS_COVER_OPEN);
    QVERIFY(command("cover closed"));
    QCOMPARE(page(handle).first(), 10);
}

void TestVscanSane::killedClientFreesTheScanner()
{
    QVERIFY(command("pace 20000"));
    QProcess client;
    client.setStandardOutputFile(QProcess::nullDevice());
    client.start("scanimage", {"-d", "vscan:one", "--format=pnm"});
    QVERIFY(client.waitForStarted());
    const auto scanning = [] {
        QProcess status;
        status.start(DaemonFixture::program(), {"status"});
        status.waitForFinished();
        return status.readAllStandardOutput().contains("scanning=yes");
    };
    QTRY_VERIFY(scanning());
    SANE_Status status = SANE_STATUS_GOOD;
    QVERIFY(!open(&status));
    QCOMPARE(status, SANE_STATUS_DEVICE_BUSY);
    ::kill(static_cast<pid_t>(client.processId()), SIGKILL);
    client.waitForFinished();
    QVERIFY(open() != nullptr);
}

void TestVscanSane::deadDaemonIsAnError()
{
    const Handle handle = open();
    QCOMPARE(sane_start(handle.get()), SANE_STATUS_GOOD);
    m_daemon->process().kill();
    m_daemon->process().waitForFinished();
    SANE_Byte buffer[4096];
    SANE_Int length = 0;
    QCOMPARE(sane_read(handle.get(), buffer, sizeof buffer, &length), SANE_STATUS_IO_ERROR);
    QCOMPARE(sane_start(handle.get()), SANE_STATUS_IO_ERROR);
    QProcess taker; // its stale socket file is no obstacle
    QVERIFY(QFile::exists(m_daemon->socket()));
    taker.start(DaemonFixture::program(), {"daemon", "--sock", m_daemon->socket()});
    QVERIFY(taker.waitForStarted() && taker.waitForReadyRead());
    taker.terminate();
    QVERIFY(taker.waitForFinished());
    QVERIFY(!QFile::exists(m_daemon->socket()));
}

// Neither the daemon nor its pages pile up.
void TestVscanSane::staysSmall()
{
    const auto resident = [this] {
        QFile file(QString("/proc/%1/statm").arg(m_daemon->process().processId()));
        return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toLong() : -1;
    };
    const auto descriptors = [this] {
        return QDir(QString("/proc/%1/fd").arg(m_daemon->process().processId()))
            .entryList(QDir::Files | QDir::System)
            .size();
    };
    const Handle handle = open();
    set(handle, 2, "Flatbed");
    for (int i = 0; i < 20; ++i)
        QCOMPARE(page(handle).status, SANE_STATUS_EOF);
    const long before = resident();
    const auto descriptorsBefore = descriptors();
    for (int i = 0; i < 200; ++i)
        QCOMPARE(page(handle).status, SANE_STATUS_EOF);
    QVERIFY2(resident() - before < 2048, qPrintable(QString("%1 -> %2 pages").arg(before).arg(resident())));
    QCOMPARE(descriptors(), descriptorsBefore);
}

void TestVscanSane::socketFiles()
{
    const auto refused = [](const QString& path) {
        return QProcess::execute(DaemonFixture::program(), {"daemon", "--sock", path}) == 125;
    };
    QVERIFY(refused(m_daemon->socket())); // taken
    QVERIFY(refused("/tmp/" + QString(120, 'x')));
    QTemporaryDir folder;
    QFile precious(folder.filePath("precious"));
    QVERIFY(precious.open(QIODevice::WriteOnly));
    QVERIFY(refused(precious.fileName()));
    QVERIFY(precious.exists());
    QVERIFY(command("status"));
}

QTEST_GUILESS_MAIN(TestVscanSane)
#include "tst_vscansane.moc"
