// SPDX-License-Identifier: GPL-3.0-or-later
// The scan thread with the real libsane and the scanner in software, started here as a daemon.
#include "config/installroot.h"
#include "config/paths.h"
#include "device/cancelflag.h"
#include "device/scanthread.h"
#include "device/statefile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int width = 600, height = 800; // of every sheet, in pixels

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

    void sources_data();
    void sources();
    void resolutionAndSizeReachTheDevice();
    void endsInsideAPage_data();
    void endsInsideAPage();
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
    m_thread = std::make_unique<scanThread>();
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

void TestVirtualScanner::sources_data()
{
    QTest::addColumn<int>("source");
    QTest::addColumn<QList<int>>("expected"); // grey levels
    QTest::newRow("duplex") << 4 << QList<int>{50, 60, 70, 80};
    QTest::newRow("backs") << 3 << QList<int>{60, 80};
    QTest::newRow("glass") << 1 << QList<int>{200};
    QTest::newRow("automatic") << 5 << QList<int>{50, 70};
}

void TestVirtualScanner::sources()
{
    QFETCH(int, source);
    QVERIFY(run(source));
    QCOMPARE(m_thread->outcome(), Outcome::Scanned);
    QTEST(levels(), "expected");
    QCOMPARE(state::read(), int(state::Idle));
    if (source != 5)
        return;
    QVERIFY(run(5)); // the feeder is empty now
    QCOMPARE(m_thread->pagesScanned(), 1);
    QCOMPARE(levels().first(), 200);
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

void TestVirtualScanner::endsInsideAPage_data()
{
    QTest::addColumn<QString>("how"); // during page 2
    QTest::addColumn<int>("outcome");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("again"); // makes the scanner work again
    QTest::newRow("jam") << "jam-at 2 100000" << int(Outcome::Jam) << 1009 << "clear";
    QTest::newRow("cover") << "cover open" << int(Outcome::CoverOpen) << 1009 << "cover closed";
    QTest::newRow("unplugged") << "unplug" << int(Outcome::IoError) << 1006 << "replug";
    QTest::newRow("cancelled") << "" << int(Outcome::Cancelled) << 1011 << "";
}

void TestVirtualScanner::endsInsideAPage()
{
    QFETCH(QString, how);
    QFETCH(QString, again);
    vscan({"pace", "1000"}); // ms per MiB: the page takes more than a second
    const auto act = [&](int page) {
        if (page == (how.startsWith("jam") ? 1 : 2)) {
            if (how.isEmpty())
                cancelflag::set();
            else
                vscan(how.split(' '));
        }
    };
    connect(m_thread.get(), &scanThread::pageStarted, this, act, Qt::DirectConnection);
    QVERIFY(run(4));
    QTEST(int(m_thread->outcome()), "outcome");
    QTEST(state::read(), "code");
    QCOMPARE(m_thread->pagesScanned(), 1);
    QCOMPARE(pageNames(), QStringList({"zarnqwd200-0001.pnm", "zarnqwd200-0002.pnm.part"}));

    m_thread->disconnect(this);
    vscan({"pace", "fast"});
    if (how.startsWith("jam")) {
        QVERIFY(run(4)); // the paper is still in there
        QCOMPARE(m_thread->outcome(), Outcome::Jam);
        QCOMPARE(m_thread->pagesScanned(), 0);
    }
    if (!again.isEmpty())
        vscan(again.split(' '));
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
