// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/carryover.h"
#include "config/leftovers.h"
#include "config/settingsfile.h"
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

    void whatKilledProcessesLeftIsSwept()
    {
        const pid_t dead = fork();
        if (dead == 0)
            _exit(0);
        QCOMPARE(waitpid(dead, nullptr, 0), dead);
        const QString gone = QString(".page-%1-0.part").arg(dead);
        const QString running = QString(".page-%1-7.part").arg(getpid());
        const QString chosen = defaultSaveFolder() + "-chosen/", left = defaultSaveFolder() + "/";
        openPathSettings()->setValue("File_PDF_FilePath/savepath", chosen.chopped(1));
        const QString workshop = paths::tempFolder() + "searchable-a1B2c3";
        for (const QString& folder : {chosen + "Doc_0", left + "Doc_0/Pages", workshop})
            QVERIFY(QDir().mkpath(folder));
        for (const QString& folder : {paths::tempFolder(), chosen, left})
            QVERIFY(putFile(folder + gone, "half") && putFile(folder + running, "half"));
        QVERIFY(putFile(chosen + ".page-notes-0.part", "the user's") &&
                putFile(chosen + "OFD.xml", "the user's"));
        QVERIFY(putFile(left + "OFD.xml", "") && putFile(left + ".zarn-ofd-parts", ""));
        QVERIFY(putFile(workshop + "/text.pdf", "half") && putFile(left + "image.pdf", "whole"));
        const auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;

        sweepAbandonedFiles();
        QCOMPARE(QDir(left).entryList(all, QDir::Name), (QStringList{running, "image.pdf"}));
        QCOMPARE(QDir(chosen).entryList(all, QDir::Name),
                 (QStringList{running, ".page-notes-0.part", "Doc_0", "OFD.xml"}));
        QVERIFY(QFile::exists(paths::tempFolder() + running) && !QFile::exists(paths::tempFolder() + gone));
        QVERIFY(!QFile::exists(workshop));
        QVERIFY(QDir(chosen).removeRecursively());
    }
};

QTEST_GUILESS_MAIN(LeftoversTest)
#include "tst_leftovers.moc"
