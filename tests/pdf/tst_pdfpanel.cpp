// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/leftovers.h"
#include "forms/panelfixture.h"
#include "pdf/documentjob.h"
#include "pdf/pdfpanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>

class TestPdfPanel : public QObject, private PanelFixture<pdfpanel>
{
    Q_OBJECT

private slots:
    void init() { startAnew(); }
    void cleanup() { panel.reset(); }

    void documentTypeByColourMode()
    {
        for (int mode = 0; mode < 3; ++mode) {
            control<QComboBox>("scanTypeComboBox_2")->setCurrentIndex(mode);
            const char* const combos[] = {"wbComboBox", "grayComboBox", "colorComboBox"};
            for (int other = 0; other < 3; ++other)
                control<QComboBox>(combos[other])->setCurrentIndex(other == mode ? 3 : 1);
            QCOMPARE(panel->getSaveType(), "ofd");
            control<QComboBox>("fileTypeComboBox")->setCurrentIndex(2); // what the user sees and changes
            QCOMPARE(control<QComboBox>(combos[mode])->currentIndex(), 2);
            QCOMPARE(panel->getSaveType(), "pdf");
        }
    }

    void scanParameters()
    {
        control<QComboBox>("papersizeComboBox")->setCurrentIndex(5);
        control<QComboBox>("scanTypeComboBox")->setCurrentIndex(3);
        control<QComboBox>("resolutionComboBox")->setCurrentIndex(6);
        for (const auto& [typed, scanned] : {std::pair{"250", 300}, {"301", 600}}) {
            control<QLineEdit>("resolutionLineEdit")->setText(typed);
            scannerIsAskedFor(scanned);
        }
        host->accepts = false;
        host->started = {};
        panel->scanButtonClicked();
        QCOMPARE(host->started.source, 1);
    }

    void previewLeavesTheFormAsItWas()
    {
        auto* combine = control<QCheckBox>("combineCheckBox");
        auto* split = control<QCheckBox>("handcombineCheckBox");
        control<QComboBox>("scanTypeComboBox")->setCurrentIndex(3);
        combine->setChecked(true);
        split->setChecked(true);
        QSignalSpy words(panel.get(), &pdfpanel::sendPDFProcessMessg);
        control<QPushButton>("previewPushButton")->click();
        QCOMPARE(words.first().first().toString(), QStringLiteral("4444"));
        QVERIFY(host->lastPreview);
        QCOMPARE(host->started.option13, 2);
        QVERIFY(!combine->isChecked() && !split->isChecked());
        QVERIFY(!control<QRadioButton>("horizontalRadioButton")->isEnabled());
        QVERIFY(!control<QPushButton>("previewPushButton")->isEnabled());
        panel->jobEnded();
        QVERIFY(combine->isChecked() && split->isChecked());
        QVERIFY(control<QRadioButton>("horizontalRadioButton")->isEnabled());
        panel->scanButtonClicked();
        QCOMPARE(host->started.option13, 1);
    }

    // Nothing of the scans is lost, and nothing half done is left beside them.
    void cancelBetweenPagesAndBetweenDocuments()
    {
        control<QCheckBox>("handcombineCheckBox")->setChecked(true); // pages 1, 2 and page 3
        control<QCheckBox>("autocutCheckBox")->setChecked(false);
        const auto scanThree = [&](int cancelAt) { scan(3, '\x20', cancelAt); };
        const QDir temp(paths::tempFolder());
        scanThree(2); // in the second page
        QCOMPARE(pageFiles().size(), 3);
        QVERIFY(host->pagesLeft);
        QVERIFY(temp.entryList({"page-*"}).isEmpty());
        QVERIFY(saved().isEmpty());
        QVERIFY2(host->summary.contains(QStringLiteral("3 页")), qPrintable(host->summary));

        scanThree(6); // shown 4 times for the pages, then for each document
        QCOMPARE(saved(), QStringList{"image.pdf"});
        QCOMPARE(pageFiles(), QStringList{paths::pagePrefix() + "-0003.pnm"});
        QVERIFY(host->pagesLeft);

        QSignalSpy words(panel.get(), &pdfpanel::sendPDFProcessMessg);
        scanThree(1000);
        QCOMPARE(saved(), (QStringList{"image-1.pdf", "image-2.pdf", "image.pdf"}));
        QVERIFY(pageFiles().isEmpty() && temp.entryList({"page-*"}).isEmpty());
        QCOMPARE(texts(words), (QStringList{"正在准备扫描", "正在处理第1张图像", "正在处理第2张图像",
                                            "正在处理第3张图像", "正在生成版式文件数据", "1234"}));
    }
};

QTEST_MAIN(TestPdfPanel)
#include "tst_pdfpanel.moc"
