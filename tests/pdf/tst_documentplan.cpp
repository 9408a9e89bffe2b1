// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "config/settingsfile.h"
#include "output/documentnames.h"
#include "pdf/documentplan.h"

#include <QFileInfo>
#include <QtTest>

// Which pages become which document under which name.
class TestDocumentPlan : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        QVERIFY(freshRoot());
        QVERIFY(QDir().mkpath(defaultSaveFolder()));
    }

    void pagesAreGroupedInOrder()
    {
        for (const int pages : {0, 1, 2, 3, 6, 7}) {
            QVector<DocumentPage> all;
            for (int i = 0; i < pages; ++i)
                all << DocumentPage{QString::number(i), {QString::number(100 + i)}};
            for (const int splitCount : {0, 1, 2, 3, 9}) {
                const int full = splitCount == 0 ? 2 : splitCount; // 0 means 2
                const auto documents = groupPages(all, true, splitCount);
                QCOMPARE(documents.size(), (pages + full - 1) / full);
                QStringList files, sources;
                for (const auto& document : documents) {
                    QVERIFY(document.size() == qMin(full, pages - files.size()));
                    files << filesOf(document);
                    sources << sourcesOf(document);
                }
                QCOMPARE(files, filesOf(all));
                QCOMPARE(sources, sourcesOf(all));
            }
            QCOMPARE(groupPages(all, false, 3).size(), pages > 0 ? 1 : 0);
        }
    }

    void typeFollowsTheFormat()
    {
        QCOMPARE(documentType(0), "ofd");
        QCOMPARE(documentType(1), "pdf");
        QCOMPARE(documentType(2), "pdf");
        QCOMPARE(documentType(3), "ofd");
        QVERIFY(!documentType(4) && !documentType(-1));
        QVERIFY(!isSearchable(1) && isSearchable(2) && isSearchable(3));
    }

    // Two sessions: the counter goes on, names that were there before are evaded, an own one is never reused.
    void userDefinedNames()
    {
        set({{"usrDefine", true}, {"name", QStringLiteral("卷")}, {"start", "9"}});
        touch(QStringLiteral("卷10.pdf"));
        DocumentNames first("Scan_PDF");
        QCOMPARE(first.next(0, defaultSaveFolder(), "pdf"), QStringLiteral("卷9"));
        QCOMPARE(first.next(1, defaultSaveFolder(), "pdf"), QStringLiteral("卷10-1"));
        first.advance(2);
        DocumentNames second("Scan_PDF");
        QCOMPARE(second.next(0, defaultSaveFolder(), "pdf"), QStringLiteral("卷11"));
        second.advance(0);
        QCOMPARE(openMainSettings()->value("Scan_PDF/start").toString(), QStringLiteral("11"));
        QVERIFY(!openMainSettings()->contains("File_PDF/start"));

        set({{"cover", true}, {"start", "ten"}});
        touch(QStringLiteral("卷0.pdf"));
        DocumentNames covering("Scan_PDF");
        QCOMPARE(covering.next(0, defaultSaveFolder(), "pdf"), QStringLiteral("卷0"));
        covering.advance(1);
        QCOMPARE(openMainSettings()->value("Scan_PDF/start").toString(), QStringLiteral("1"));
    }

    // Without any naming rule all documents of a batch want the same name; overwriting is about older files.
    void sameNamesWithinABatchStayApart()
    {
        set({{"usrDefine", false}, {"dateAndtime", false}, {"cover", true}});
        touch("image.ofd");
        DocumentNames names("Scan_PDF");
        QStringList given;
        for (int k = 0; k < 3; ++k) {
            given << names.next(k, defaultSaveFolder(), "ofd");
            if (k != 1) // the second one fails
                touch(given.last() + ".ofd");
        }
        QCOMPARE(given, (QStringList{"image", "image-1", "image-2"}));
    }

    void pagesOfAFailedDocumentAreKept()
    {
        const QString page = paths::tempFolder() + "page-0001.jpg";
        for (const char* folder : {"failed-a_b", "failed-a_b-1"}) {
            QVERIFY(putFile(page, "picture"));
            QCOMPARE(keepFailedPages({page}, "a/b"), paths::tempFolder() + folder);
            QCOMPARE(fileContent(paths::tempFolder() + folder + "/page-0001.jpg"), QByteArray("picture"));
            QVERIFY(!QFile::exists(page));
        }
    }

    // Two pieces of scan 1, a page of scans 2 and 3, a page of scan 4: a damaged piece wants its scan kept.
    void damagedPagesKnowTheirScans()
    {
        const QVector<DocumentPage> pages{{"a", {}}, {"b", {"1"}}, {"c", {"2", "3"}}, {"d", {"4"}}};
        QCOMPARE(scansOf(pages, {"a"}), QStringList{"1"});
        QCOMPARE(scansOf(pages, {"b", "c"}), (QStringList{"1", "2", "3"}));
        QCOMPARE(scansOf(pages, {}), QStringList{});
    }

private:
    static void set(const QVector<QPair<QString, QVariant>>& values)
    {
        const auto file = openMainSettings();
        for (const auto& [key, value] : values)
            file->setValue("Scan_PDF/" + key, value);
        QVERIFY(saveSettings(*file));
    }
    static void touch(const QString& name) { QVERIFY(putFile(defaultSaveFolder() + '/' + name, "x")); }
};

QTEST_GUILESS_MAIN(TestDocumentPlan)
#include "tst_documentplan.moc"
