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
    // Three small grey sheets: 10, 20, 30.
    void initTestCase()
    {
        for (int number = 1; number <= 3; ++number) {
            QFile file(m_sheets.filePath(QString("00%1-front.pgm").arg(number)));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("P5\n600 900\n255\n" + QByteArray(600 * 900, static_cast<char>(number * 10)));
        }
    }

    void init()
    {
        m_daemon = std::make_unique<DaemonFixture>();
        QVERIFY(m_daemon->start({"--feeder", m_sheets.path()}));
        QCOMPARE(sane_init(nullptr, nullptr), SANE_STATUS_GOOD);
    }

    void cleanup()
    {
        sane_exit();
        m_daemon.reset();
    }

    void offersTheOptionList()
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
        QCOMPARE(sane_control_option(handle.get(), 0, SANE_ACTION_GET_VALUE, &count, nullptr),
                 SANE_STATUS_GOOD);
        QCOMPARE(count, 14);
        QVERIFY(!sane_get_option_descriptor(handle.get(), 14));
        for (int group : {3, 5, 8})
            QCOMPARE(sane_get_option_descriptor(handle.get(), group)->type, SANE_TYPE_GROUP);
        for (const auto& [number, words] : expected) {
            const SANE_Option_Descriptor* option = sane_get_option_descriptor(handle.get(), number);
            QCOMPARE(option->constraint_type, SANE_CONSTRAINT_STRING_LIST);
            for (const QString& word : words.split('|')) {
                QCOMPARE(set(handle, number, word.toUtf8().constData()), SANE_STATUS_GOOD);
                QByteArray value(option->size, '\0');
                QCOMPARE(
                    sane_control_option(handle.get(), number, SANE_ACTION_GET_VALUE, value.data(), nullptr),
                    SANE_STATUS_GOOD);
                QCOMPARE(QString::fromUtf8(value.constData()), word);
            }
        }
    }

    void checksValues()
    {
        const Handle handle = open();
        QCOMPARE(set(handle, 2, "adf front"), SANE_STATUS_INVAL);
        QCOMPARE(set(handle, 3, "A4"), SANE_STATUS_INVAL);
        SANE_Int value = 250, info = 0;
        QCOMPARE(sane_control_option(handle.get(), 1, SANE_ACTION_SET_VALUE, &value, &info),
                 SANE_STATUS_GOOD);
        QVERIFY((info & SANE_INFO_INEXACT) && (value == 200 || value == 300));
        value = 400;
        QCOMPARE(sane_control_option(handle.get(), 1, SANE_ACTION_SET_VALUE, &value, nullptr),
                 SANE_STATUS_GOOD);
        QCOMPARE(sane_start(handle.get()), SANE_STATUS_GOOD);
        QCOMPARE(sane_start(handle.get()), SANE_STATUS_DEVICE_BUSY);
        QCOMPARE(set(handle, 2, "Flatbed"), SANE_STATUS_DEVICE_BUSY);
        SANE_Parameters parameters;
        QCOMPARE(sane_get_parameters(handle.get(), &parameters), SANE_STATUS_GOOD);
        QCOMPARE(parameters.pixels_per_line, 1200); // the sheet has 600 at 300 dpi
        QCOMPARE(parameters.lines, 1800);
        sane_cancel(handle.get());
    }

    void answersFaults()
    {
        const struct
        {
            const char* order;
            int status, bytes; // bytes of the second page that arrive
            int next;          // what the start after it answers
        } rows[] = {
            {"jam-at 2", 6, 0, 6},   {"jam-at 2 100000", 6, 100000, 6}, {"jam-at 2 999999999", 6, 540000, 6},
            {"error-at 2", 9, 0, 5}, {"error-at 2 77", 9, 77, 5},       {"no-docs-at 2 0", 7, 0, 5}};
        for (const auto& [order, status, bytes, next] : rows) {
            QVERIFY(command("load " + m_sheets.path()) && command(order));
            const Handle handle = open();
            QCOMPARE(page(handle).first(), 10);
            const Read bad = page(handle);
            QCOMPARE(int(bad.status), status);
            QCOMPARE(bad.bytes.size(), bytes);
            QCOMPARE(int(page(handle).status), next);
            sane_cancel(handle.get());
            QVERIFY(command("clear"));
            // The jammed sheet is back in the feeder, after other faults all three have passed.
            QCOMPARE(page(handle).first(), status == 6 ? 20 : -1);
        }
    }

    void cancelFromAnotherThread()
    {
        QVERIFY(command("pace 20000")); // ten seconds a page
        const Handle handle = open();
        QElapsedTimer clock;
        clock.start();
        std::thread canceller([&] {
            QThread::msleep(50);
            sane_cancel(handle.get());
        });
        const Read read = page(handle);
        canceller.join();
        QCOMPARE(read.status, SANE_STATUS_CANCELLED);
        QVERIFY(clock.elapsed() < 3000);
        QVERIFY(command("pace fast"));
        QCOMPARE(page(handle).first(), 20);
    }

    void stopsMidPage()
    {
        const struct
        {
            const char* order;
            int status; // of the read, and of the starts after it
            QString remedy;
            int first; // of the page after the remedy, -1 when the handle stays dead
        } rows[] = {{"unplug", SANE_STATUS_IO_ERROR, "replug", -1},
                    {"press 3", SANE_STATUS_CANCELLED, "", 20},
                    {"cover open", SANE_STATUS_COVER_OPEN, "cover closed", 10}};
        for (const auto& [order, status, remedy, first] : rows) {
            QVERIFY(command("load " + m_sheets.path()));
            const Handle handle = open();
            set(handle, 2, "ADF Duplex");
            QCOMPARE(page(handle).first(), 10);
            QCOMPARE(sane_start(handle.get()), SANE_STATUS_GOOD); // the back of the sheet
            QVERIFY(command(order));
            QCOMPARE(int(rest(handle).status), status);
            QCOMPARE(int(sane_start(handle.get())), status);
            if (remedy.isEmpty())
                sane_cancel(handle.get());
            else
                QVERIFY(command(remedy));
            QCOMPARE(page(handle).first(), first); // a stopped sheet is fed again, a cancelled one has passed
        }
    }

    void killedClientFreesTheScanner()
    {
        QVERIFY(command("pace 20000"));
        QProcess client;
        client.setStandardOutputFile(QProcess::nullDevice());
        client.start("scanimage", {"-d", "vscan:one", "--format=pnm"});
        QVERIFY(client.waitForStarted());
        QTRY_VERIFY(DaemonFixture::output({"status"}).contains("scanning=yes"));
        SANE_Status status = SANE_STATUS_GOOD;
        QVERIFY(!open(&status));
        QCOMPARE(status, SANE_STATUS_DEVICE_BUSY);
        ::kill(static_cast<pid_t>(client.processId()), SIGKILL);
        client.waitForFinished();
        QVERIFY(open() != nullptr);
    }

    void deadDaemonIsAnError()
    {
        const auto serves = [](const QString& socket) {
            QProcess daemon;
            daemon.start(DaemonFixture::program(), {"daemon", "--sock", socket});
            const bool ready = daemon.waitForReadyRead();
            daemon.terminate();
            daemon.waitForFinished();
            return ready;
        };
        const Handle handle = open();
        QCOMPARE(sane_start(handle.get()), SANE_STATUS_GOOD);
        QVERIFY(!serves(m_daemon->socket())); // taken
        m_daemon->process().kill();
        m_daemon->process().waitForFinished();
        QCOMPARE(rest(handle).status, SANE_STATUS_IO_ERROR);
        QCOMPARE(sane_start(handle.get()), SANE_STATUS_IO_ERROR);
        QVERIFY(serves(m_daemon->socket())); // the stale socket file is no obstacle
        QVERIFY(!QFile::exists(m_daemon->socket()));
        const QString precious = m_sheets.filePath("001-front.pgm");
        QVERIFY(!serves(precious));
        QVERIFY(QFile::exists(precious));
    }

    // No page stays open in the daemon.
    void keepsNoPage()
    {
        const Handle handle = open();
        set(handle, 2, "Flatbed");
        QCOMPARE(page(handle).status, SANE_STATUS_EOF);
        const int before = openDescriptors(m_daemon->process().processId());
        for (int i = 0; i < 50; ++i)
            QCOMPARE(page(handle).status, SANE_STATUS_EOF);
        QCOMPARE(openDescriptors(m_daemon->process().processId()), before);
    }

private:
    // An opened scanner that delivers small grey pages.
    Handle open(SANE_Status* status = nullptr)
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
    static SANE_Status set(const Handle& handle, int option, const char* word)
    {
        QByteArray value(word);
        return sane_control_option(handle.get(), option, SANE_ACTION_SET_VALUE, value.data(), nullptr);
    }
    // The rest of a started page with the status that ended it; EOF when all went well.
    static Read rest(const Handle& handle)
    {
        Read read{SANE_STATUS_GOOD, {}};
        char buffer[32768];
        SANE_Int length = 0;
        while (read.status == SANE_STATUS_GOOD) {
            read.status =
                sane_read(handle.get(), reinterpret_cast<SANE_Byte*>(buffer), sizeof buffer, &length);
            read.bytes.append(buffer, length);
        }
        return read;
    }
    static Read page(const Handle& handle)
    {
        const SANE_Status started = sane_start(handle.get());
        return started == SANE_STATUS_GOOD ? rest(handle) : Read{started, {}};
    }
    bool command(const QString& words) { return DaemonFixture::command(words.split(' ')) == 0; }

    std::unique_ptr<DaemonFixture> m_daemon;
    QTemporaryDir m_sheets;
};

QTEST_GUILESS_MAIN(TestVscanSane)
#include "tst_vscansane.moc"
