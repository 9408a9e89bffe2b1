// SPDX-License-Identifier: GPL-3.0-or-later
// The scan thread with the real libsane and the scanner in software; runs below `vscan run`. What ends a
// batch early is tested with the whole program.
#include "config/freshroot.h"
#include "device/scanthread.h"
#include "device/statefile.h"
#include "virtual-scanner/daemonfixture.h"

#include <QImage>
#include <QSignalSpy>
#include <QtTest>

class TestVirtualScanner : public QObject
{
    Q_OBJECT
    using Outcome = scanThread::Outcome;

    QTemporaryDir m_folder;

    // A sheet whose grey level says which one it is.
    QString sheet(const QString& name, int level)
    {
        const QString path = m_folder.filePath(name);
        return putFile(path, "P5\n600 800\n255\n" + QByteArray(600 * 800, char(level))) ? path : QString();
    }
    static bool vscan(const QStringList& words) { return DaemonFixture::command(words) == 0; }

private slots:
    void init()
    {
        QVERIFY(freshRoot());
        QVERIFY(QDir(m_folder.path()).mkpath("sheets"));
        int level = 40;
        for (const char* side : {"001-front", "001-back", "002-front", "002-back"})
            QVERIFY(!sheet(QString("sheets/%1.pgm").arg(side), level += 10).isEmpty());
        QVERIFY(vscan({"load", m_folder.filePath("sheets")}) && vscan({"pace", "fast"}));
        QVERIFY(vscan({"flatbed", sheet("glass.pgm", 200)}));
    }

    void sources_data()
    {
        QTest::addColumn<int>("source");
        QTest::addColumn<QList<int>>("expected"); // grey levels
        QTest::newRow("duplex") << 4 << QList<int>{50, 60, 70, 80};
        QTest::newRow("fronts") << 2 << QList<int>{50, 70};
        QTest::newRow("backs") << 3 << QList<int>{60, 80};
        QTest::newRow("glass") << 1 << QList<int>{200};
        QTest::newRow("automatic") << 5 << QList<int>{50, 70};
        QTest::newRow("automatic, empty feeder") << 5 << QList<int>{200};
    }
    void sources()
    {
        QFETCH(int, source);
        QFETCH(QList<int>, expected);
        scanThread thread;
        QSignalSpy over(&thread, &scanThread::scanOverSignals);
        const auto run = [&] {
            thread.setScanParamaters(150, source, 2, 2, 1, 2, 1, 1, 1, 1); // 2: A4
            thread.start(QThread::InheritPriority);
            return thread.wait(60000);
        };
        QVERIFY(run());
        if (source == 5 && expected.size() == 1) {
            freshRoot();
            QVERIFY(run());
        }
        QCOMPARE(thread.outcome(), Outcome::Scanned);
        QCOMPARE(state::read(), int(state::Idle));
        QList<int> levels;
        for (const QString& name :
             QDir(paths::tempFolder()).entryList({"zarnqwd*"}, QDir::Files, QDir::Name)) {
            const QImage page(paths::tempFolder() + name);
            QCOMPARE(page.size(), QSize(1240, 1754));
            levels << qRed(page.pixel(100, 100));
        }
        QCOMPARE(levels, expected);

        over.clear();
        QVERIFY(vscan({"model", "QWD200"})); // another scanner
        QVERIFY(run());
        QVERIFY(vscan({"model", "qwd200"}));
        QCOMPARE(thread.outcome(), Outcome::NoScanner);
        QCOMPARE(over.count(), 0);
    }
};

QTEST_GUILESS_MAIN(TestVirtualScanner)
#include "tst_virtualscanner.moc"
