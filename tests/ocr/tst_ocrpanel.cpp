// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/leftovers.h"
#include "forms/panelfixture.h"
#include "ocr/ocrpanel.h"

#include <QComboBox>

// Pages of these tests have no text: reading is tested elsewhere.
class TestOcrPanel : public QObject, private PanelFixture<ocrpanel>
{
    Q_OBJECT

    void scanTwo(int cancelAt = 1000) { scan(2, '\xff', cancelAt); }

private slots:
    void init() { startAnew(); }
    void cleanup() { panel.reset(); }

    void scanParameters()
    {
        control<QComboBox>("papersizeComboBox")->setCurrentIndex(5);
        control<QComboBox>("scanTypeComboBox")->setCurrentIndex(3);
        auto* resolution = control<QComboBox>("resolutionComboBox");
        for (const auto& [item, typed, scanned] :
             {std::tuple{0, "", 300}, {1, "", 200}, {3, "", 600}, {4, "250", 300}, {4, "301", 600}}) {
            resolution->setCurrentIndex(item);
            if (*typed)
                control<QLineEdit>("resolutionLineEdit")->setText(typed);
            scannerIsAskedFor(scanned);
        }
    }

    void oneNameForADocumentAndACountForABatch()
    {
        put({{"Scan_OCR/usrDefine", true}, {"Scan_OCR/name", "稿"}, {"Scan_OCR/start", "41"}});
        restart();
        scanTwo();
        scanTwo();
        put({{"Scan_OCR/cover", true}});
        scanTwo();
        QCOMPARE(saved(), (QStringList{"稿-1.txt", "稿.txt"}));
        QCOMPARE(stored("Scan_OCR/start"), QString("44"));
        QVERIFY(pageFiles().isEmpty() && QDir(paths::tempFolder()).entryList({"page-*"}).isEmpty());
    }

    void cancelInAPageLosesNothing()
    {
        control<QComboBox>("documentTypeComboBox")->setCurrentIndex(1);
        scanTwo(4); // shown three times for the pages, then for each that is read
        QCOMPARE(pageFiles().size(), 2);
        QVERIFY(host->pagesLeft && saved().isEmpty());
        QVERIFY2(host->summary.contains(QString("2 页")), qPrintable(host->summary));
        QCOMPARE(stored("Scan_OCR/start"), QString("1"));
    }

    void documentThatCannotBeWrittenKeepsItsPages()
    {
        QVERIFY(putFile(defaultSaveFolder(), "no folder"));
        scanTwo();
        QCOMPARE(QDir(paths::tempFolder() + "failed-image").entryList(QDir::Files),
                 (QStringList{"page-0001.png", "page-0002.png"}));
        QVERIFY2(host->board.problems().contains(QString("failed-image")),
                 qPrintable(host->board.problems()));
        QFile::remove(defaultSaveFolder());
    }
};

QTEST_MAIN(TestOcrPanel)
#include "tst_ocrpanel.moc"
