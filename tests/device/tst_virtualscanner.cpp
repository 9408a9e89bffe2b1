// SPDX-License-Identifier: GPL-3.0-or-later
// The scan thread with the real libsane and the scanner in software, started here as a daemon.
#include "config/installroot.h"
#include "config/paths.h"
#include "device/cancelflag.h"
#include "device/saneapi.h"
#include "device/scanthread.h"
#include "device/statefile.h"
#include "device/waitclock.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>
#include <functional>

namespace {

constexpr int width = 600, height = 800; // of every sheet, in pixels

// Does not sleep the busy wait out.
class FastClock : public WaitClock
{
public:
    explicit FastClock(std::function<void()> onPause) : m_onPause(std::move(onPause)) {}
    void pause(int) override
    {
        if (m_onPause)
            m_onPause();
    }

private:
    std::function<void()> m_onPause;
};

// A sheet whose grey level says which one it is.
void makeSheet(const QString& path, int level)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("P5\n%1 %2\n255\n")
                   .replace("%1", QByteArray::number(width))
                   .replace("%2", QByteArray::number(height)));
    file.write(QByteArray(width * height, char(level)));
}

// The grey level in the middle of a complete colour page, -1 when the file is anything else.
int levelOf(const QString& path)
{
    QFile file(path);
    const QByteArray header =
        QByteArray("P6\n") + QByteArray::number(width) + ' ' + QByteArray::number(height) + "\n255\n";
    if (!file.open(QIODevice::ReadOnly) || file.size() != header.size() + 3 * width * height)
        return -1;
    const QByteArray content = file.readAll();
    return content.startsWith(header) ? uchar(content[header.size() + 3 * (width * height / 2)]) : -1;
}

} // namespace

class TestVirtualScanner : public QObject
{
    Q_OBJECT
    using Outcome = scanThread::Outcome;

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void duplexBatch();
    void twoBatchesInOneProcess();
    void resolutionAndSizeReachTheDevice();
    void flatbedIsOnePage();
    void automaticSource();
    void busyTwiceThenGood();
    void emptyFeeder();
    void jamInsideAPage();
    void jamAtTheStart();
    void coverOpen();
    void cancelInsideAPage();
    void clearKeyInsideAPage();
    void unplugInsideAPage();
    void unpluggedOrAnotherModel();

private:
    QByteArray vscan(const QStringList& words)
    {
        QProcess process;
        process.start(VSCAN_PROGRAM, words);
        if (!process.waitForFinished(10000) || process.exitCode() != 0)
            QTest::qFail(qPrintable("vscan " + words.join(' ') + ": " + process.readAllStandardError()),
                         __FILE__, __LINE__);
        return process.readAllStandardOutput();
    }
    // One batch to its end; true when the end was announced.
    bool run(int source, int resolution = 300, int paperSize = 1)
    {
        QSignalSpy over(m_thread.get(), &scanThread::scanOverSignals);
        m_thread->setScanParamaters(resolution, source, paperSize, 2, 1, 2, 1, 1, 1, 1);
        m_thread->start(QThread::InheritPriority);
        return m_thread->wait(60000) && over.count() == 1;
    }
    // Calls `action` once page `page` is being read.
    void duringPage(int page, std::function<void()> action)
    {
        connect(
            m_thread.get(), &scanThread::pageStarted, this,
            [page, action](int started) {
                if (started == page)
                    action();
            },
            Qt::DirectConnection);
    }
    QStringList pageNames() const
    {
        return QDir(paths::tempFolder()).entryList({"zarnqwd*"}, QDir::Files, QDir::Name);
    }
    QList<int> levels() const
    {
        QList<int> all;
        for (const QString& name : pageNames())
            all << levelOf(paths::tempFolder() + name);
        return all;
    }

    QTemporaryDir m_folder;
    QProcess m_daemon;
    std::function<void()> m_onPause;
    std::unique_ptr<scanThread> m_thread;
};

void TestVirtualScanner::initTestCase()
{
    const QString socket = m_folder.filePath("socket"), home = QFileInfo(VSCAN_PROGRAM).path();
    QDir(m_folder.path()).mkdir("sheets");
    const QStringList sides = {"001-front", "001-back", "002-front", "002-back"};
    for (int i = 0; i < sides.size(); ++i)
        makeSheet(m_folder.filePath("sheets/" + sides[i] + ".pgm"), 50 + 10 * i);
    makeSheet(m_folder.filePath("glass.pgm"), 200);

    qputenv("VSCAN_SOCKET", socket.toUtf8());
    qputenv("SANE_CONFIG_DIR", (home + "/sane.d").toUtf8());
    qputenv("LD_LIBRARY_PATH", (home + "/lib").toUtf8());
    m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_daemon.start(VSCAN_PROGRAM, {"daemon", "--no-usb", "--speed", "fast", "--sock", socket});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(socket), 10000);
}

void TestVirtualScanner::cleanupTestCase()
{
    m_thread.reset();
    m_daemon.terminate();
    QVERIFY(m_daemon.waitForFinished(5000));
}

void TestVirtualScanner::init()
{
    m_thread.reset();
    m_onPause = nullptr;
    m_thread = std::make_unique<scanThread>(makeLibSane(), std::make_unique<FastClock>([this] {
                                                if (m_onPause)
                                                    m_onPause();
                                            }));
    QVERIFY(QDir(installRoot()).removeRecursively());
    QVERIFY(paths::ensureFolders());
    for (const QStringList& words : {QStringList{"replug"},
                                     {"clear"},
                                     {"cover", "closed"},
                                     {"busy", "0"},
                                     {"model", "qwd200"},
                                     {"pace", "fast"}})
        vscan(words);
    vscan({"load", m_folder.filePath("sheets")});
    vscan({"flatbed", m_folder.filePath("glass.pgm")});
}

void TestVirtualScanner::duplexBatch()
{
    QVERIFY(run(4));
    QCOMPARE(m_thread->outcome(), Outcome::Scanned);
    QCOMPARE(pageNames(), QStringList({"zarnqwd200-0001.pnm", "zarnqwd200-0002.pnm", "zarnqwd200-0003.pnm",
                                       "zarnqwd200-0004.pnm"}));
    QCOMPARE(levels(), QList<int>({50, 60, 70, 80}));
    QCOMPARE(state::read(), int(state::Idle));
}

void TestVirtualScanner::twoBatchesInOneProcess()
{
    QVERIFY(run(2));
    QCOMPARE(levels(), QList<int>({50, 70}));
    vscan({"load", m_folder.filePath("sheets")});
    QVERIFY(run(3));
    QCOMPARE(m_thread->outcome(), Outcome::Scanned);
    QCOMPARE(levels(), QList<int>({60, 80}));
}

void TestVirtualScanner::resolutionAndSizeReachTheDevice()
{
    QVERIFY(run(2, 150, 2)); // A4: 8.27 inches wide
    QFile file(paths::tempFolder() + "zarnqwd200-0001.pnm");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readLine(), QByteArray("P6\n"));
    const int pixels = file.readLine().split(' ').value(0).toInt();
    QVERIFY2(std::abs(pixels - 1240) < 10, qPrintable(QString::number(pixels)));
}

void TestVirtualScanner::flatbedIsOnePage()
{
    QVERIFY(run(1));
    QCOMPARE(m_thread->outcome(), Outcome::Scanned);
    QCOMPARE(levels(), QList<int>({200}));
    QCOMPARE(state::read(), int(state::Idle));
}

void TestVirtualScanner::automaticSource()
{
    QVERIFY(run(5));
    QCOMPARE(levels(), QList<int>({50, 70}));
    QVERIFY(run(5)); // the feeder is empty now
    QCOMPARE(m_thread->outcome(), Outcome::Scanned);
    QCOMPARE(m_thread->pagesScanned(), 1);
    QCOMPARE(levelOf(paths::tempFolder() + "zarnqwd200-0001.pnm"), 200);
}

void TestVirtualScanner::busyTwiceThenGood()
{
    vscan({"busy", "2"});
    int pauses = 0;
    m_onPause = [&pauses] { ++pauses; };
    QVERIFY(run(4));
    QCOMPARE(pauses, 2 * 50); // 5 s each, in slices of 100 ms
    QCOMPARE(m_thread->outcome(), Outcome::Scanned);
    QCOMPARE(m_thread->pagesScanned(), 4);
}

void TestVirtualScanner::emptyFeeder()
{
    vscan({"empty"});
    QVERIFY(run(4));
    QCOMPARE(m_thread->outcome(), Outcome::FeederEmpty);
    QCOMPARE(state::read(), int(state::FeederEmpty));
    QVERIFY(pageNames().isEmpty());
}

void TestVirtualScanner::jamInsideAPage()
{
    vscan({"jam-at", "2", "100000"});
    QVERIFY(run(4));
    QCOMPARE(m_thread->outcome(), Outcome::Jam);
    QCOMPARE(state::read(), int(state::JamOrCoverOpen));
    QCOMPARE(pageNames(), QStringList({"zarnqwd200-0001.pnm", "zarnqwd200-0002.pnm.part"}));
    QVERIFY(QFileInfo(paths::tempFolder() + "zarnqwd200-0002.pnm.part").size() >= 100000);

    QVERIFY(run(4)); // the paper is still in there
    QCOMPARE(m_thread->outcome(), Outcome::Jam);
    QCOMPARE(m_thread->pagesScanned(), 0);
    vscan({"clear"});
    QVERIFY(run(4));
    QCOMPARE(m_thread->outcome(), Outcome::Scanned);
}

void TestVirtualScanner::jamAtTheStart()
{
    vscan({"jam-at", "1"});
    QVERIFY(run(4));
    QCOMPARE(m_thread->outcome(), Outcome::Jam);
    QVERIFY(pageNames().isEmpty());
}

void TestVirtualScanner::coverOpen()
{
    vscan({"cover", "open"});
    QVERIFY(run(4));
    QCOMPARE(m_thread->outcome(), Outcome::CoverOpen);
    QCOMPARE(state::read(), int(state::JamOrCoverOpen));
    vscan({"cover", "closed"});
    QVERIFY(run(4));
    QCOMPARE(m_thread->outcome(), Outcome::Scanned);
}

void TestVirtualScanner::cancelInsideAPage()
{
    duringPage(2, [] { cancelflag::set(); });
    QVERIFY(run(4));
    QCOMPARE(m_thread->outcome(), Outcome::Cancelled);
    QCOMPARE(state::read(), int(state::Cancelled));
    QCOMPARE(pageNames(), QStringList({"zarnqwd200-0001.pnm", "zarnqwd200-0002.pnm.part"}));
    QCOMPARE(m_thread->pagesScanned(), 1);
    m_thread->disconnect(this);
    QVERIFY(run(4)); // the device is free again
    QCOMPARE(m_thread->outcome(), Outcome::Scanned);
}

// Cancelled at the device: no further sheet is asked for.
void TestVirtualScanner::clearKeyInsideAPage()
{
    vscan({"pace", "500"});
    duringPage(2, [this] { vscan({"press", "3"}); });
    QVERIFY(run(4));
    QCOMPARE(m_thread->outcome(), Outcome::Cancelled);
    QVERIFY(cancelflag::isSet());
    QCOMPARE(state::read(), int(state::Cancelled));
    QCOMPARE(pageNames(), QStringList({"zarnqwd200-0001.pnm", "zarnqwd200-0002.pnm.part"}));
}

void TestVirtualScanner::unplugInsideAPage()
{
    vscan({"pace", "1000"}); // ms per MiB: the page takes more than a second
    duringPage(2, [this] { vscan({"unplug"}); });
    QVERIFY(run(4));
    QCOMPARE(m_thread->outcome(), Outcome::IoError);
    QCOMPARE(state::read(), int(state::CommunicationError));
    QCOMPARE(pageNames(), QStringList({"zarnqwd200-0001.pnm", "zarnqwd200-0002.pnm.part"}));
    m_thread->disconnect(this);
    vscan({"pace", "fast"});
    vscan({"replug"});
    QVERIFY(run(4));
    QCOMPARE(m_thread->outcome(), Outcome::Scanned);
}

void TestVirtualScanner::unpluggedOrAnotherModel()
{
    vscan({"unplug"});
    QVERIFY(!run(4));
    QCOMPARE(m_thread->outcome(), Outcome::NoScanner);
    vscan({"replug"});
    vscan({"model", "QWD200"});
    QVERIFY(!run(4));
    QCOMPARE(m_thread->outcome(), Outcome::NoScanner);
    QVERIFY(pageNames().isEmpty());
}

QTEST_GUILESS_MAIN(TestVirtualScanner)
#include "tst_virtualscanner.moc"
