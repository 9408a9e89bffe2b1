// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/carryover.h"
#include "config/leftovers.h"
#include "freshroot.h"

#include <QFileInfo>
#include <QtTest>

static void makeFiles()
{
    for (const char* name : {"zarnqwd200-0010.pnm", "zarnqwd200-0002.pnm", "zarnqwd200-0011.pnm.part",
                             "crop01.bmp", "autoRotate.bmp", "lastPage.ppm", "other.pnm"})
        QVERIFY(putFile(paths::tempFolder() + name, name));
    QVERIFY(QFile::link("/etc/passwd", paths::tempFolder() + "zarnqwd200-0001.pnm"));
    QVERIFY(QDir().mkpath(paths::tempFolder() + "zarnqwd200-0003.pnm"));
}

static QStringList names(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::NoSymLinks, QDir::Name);
}

class LeftoversTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(freshRoot()); }
    void keptFolder()
    {
        QCOMPARE(keepLeftovers(), QString());
        QVERIFY(!QFile::exists(paths::keptFolder()));
        const QDateTime now(QDate(2026, 11, 15), QTime(6, 14, 46));
        makeFiles();
        QCOMPARE(pageFiles(), (QStringList{paths::tempFolder() + "zarnqwd200-0002.pnm",
                                           paths::tempFolder() + "zarnqwd200-0010.pnm"}));
        QCOMPARE(keepLeftovers(now), paths::keptFolder() + "20261115-061446/");
        QCOMPARE(names(paths::keptFolder() + "20261115-061446"),
                 (QStringList{"crop01.bmp", "zarnqwd200-0002.pnm", "zarnqwd200-0010.pnm",
                              "zarnqwd200-0011.pnm.part"}));
        QCOMPARE(names(paths::tempFolder()), (QStringList{"autoRotate.bmp", "lastPage.ppm", "other.pnm"}));
        // a second rescue within the same second replaces nothing
        QVERIFY(putFile(paths::tempFolder() + "zarnqwd200-0002.pnm", "new"));
        QCOMPARE(keepLeftovers(now), paths::keptFolder() + "20261115-061446-1/");
        QCOMPARE(fileContent(paths::keptFolder() + "20261115-061446/zarnqwd200-0002.pnm"),
                 QByteArray("zarnqwd200-0002.pnm"));
    }

    void cancelledPagesStandBeforeTheNextBatch()
    {
        const auto page = [](const char* name) { return putFile(paths::tempFolder() + name, name); };
        QVERIFY(page("zarnqwd200-0001.pnm") && page("zarnqwd200-0003.pnm") &&
                page("zarnqwd200-0004.pnm.part"));
        QCOMPARE(carryOverPages(), 2);
        QVERIFY(page("zarnqwd200-0001.pnm") && page("zarnqwd200-0002.pnm")); // the next batch, cancelled too
        QCOMPARE(carryOverPages(), 4);
        // Nothing is overwritten, the order stays, and fronts keep odd numbers.
        QCOMPARE(names(paths::tempFolder()),
                 (QStringList{"zarnqwd200-0000-0001.pnm", "zarnqwd200-0000-0003.pnm",
                              "zarnqwd200-0000-0005.pnm", "zarnqwd200-0000-0006.pnm"}));
        QVERIFY(page("zarnqwd200-0001.pnm"));
        QVERIFY(pageFiles().last().endsWith("zarnqwd200-0001.pnm"));
        QVERIFY(!pageFiles().last().contains("-0000-"));
    }
};

QTEST_GUILESS_MAIN(LeftoversTest)
#include "tst_leftovers.moc"
