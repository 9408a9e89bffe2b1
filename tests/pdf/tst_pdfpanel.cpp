// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"
#include "config/freshroot.h"
#include "config/leftovers.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms-dialogs/driving.h"
#include "forms/recordinghost.h"
#include "pdf/documentjob.h"
#include "pdf/pdfpanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QtTest>

class TestPdfPanel : public QObject
{
    Q_OBJECT

    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<pdfpanel> m_panel;

    template <typename Control>
    Control* control(const char* name)
    {
        return ::control<Control>(*m_panel, name);
    }
    static void put(const QString& key, const QVariant& value)
    {
        const auto file = openMainSettings();
        file->setValue(key, value);
        QVERIFY(saveSettings(*file));
    }
    void restart(const QString& page = "Scan")
    {
        m_panel.reset();
        m_host = std::make_unique<RecordingHost>();
        m_panel = std::make_unique<pdfpanel>(page, *m_host);
    }

private slots:
    void init()
    {
        QVERIFY(freshRoot());
        QVERIFY(ensureFactorySettings());
        restart();
    }
    void cleanup() { m_panel.reset(); }

    // Every key gets a value that is not its factory value; the rules of the form leave these as they are.
    void everySettingComesBack()
    {
        const QMap<QString, QVariant> odd{{"App", 0},
                                          {"specifiedApp", true},
                                          {"scanType", 3},
                                          {"handAdjust", true},
                                          {"hRBtn", true},
                                          {"frontRBtn", false},
                                          {"backRBtn", false},
                                          {"doubleRBtn", true},
                                          {"split", true},
                                          {"combine", true},
                                          {"vRBtn", false},
                                          {"handState", true},
                                          {"paperSize", 5},
                                          {"scanMode", 0},
                                          {"horizontalState", true},
                                          {"verticalState", true},
                                          {"fileColor", 3},
                                          {"fileGrey", 0},
                                          {"fileBW", 2},
                                          {"resolution", 6},
                                          {"lightness", -7},
                                          {"contrast", 9},
                                          {"gamma", 85},
                                          {"threshold", 1},
                                          {"colorFilter", 2},
                                          {"deScreen", 1},
                                          {"filter", 4},
                                          {"pageSetFront", 1},
                                          {"pageSetBack", 2},
                                          {"contiScan", true},
                                          {"colorMatch", true},
                                          {"autoCrowed", true},
                                          {"autoCut", false},
                                          {"autoRight", false},
                                          {"delBlank", true},
                                          {"delBlankState", false},
                                          {"imgMend", true},
                                          {"outMutiImg", true},
                                          {"fillHole", true},
                                          {"delBackground", true},
                                          {"delColor", true},
                                          {"characenhance", true},
                                          {"readFile", true},
                                          {"frontRotateState", true},
                                          {"backRotateState", false},
                                          {"noiseMode", 2},
                                          {"selfResolution", "250"},
                                          {"resolutionText", "自定义"},
                                          {"pageSetFrontText", "正面左转90°"},
                                          {"pageSetBackText", "反面旋转180°"},
                                          {"resolutinState", true}};
        for (const QString page : {"Scan", "File"}) {
            const QString group = page + "_PDF/";
            for (auto it = odd.cbegin(); it != odd.cend(); ++it)
                put(group + it.key(), it.value());
            restart(page);
            openMainSettings()->remove(group.chopped(1));
            QVERIFY(page == "Scan" ? m_panel->scanWriteIni() : m_panel->fileWriteIni());
            const auto file = openMainSettings();
            for (auto it = odd.cbegin(); it != odd.cend(); ++it)
                QVERIFY2(file->value(group + it.key()).toString() == it.value().toString(),
                         qPrintable(it.key() + " = " + file->value(group + it.key()).toString()));
            for (const Setting& setting : table(group.chopped(1)).settings) {
                const bool naming = qstrcmp(setting.key, "dateAndtime") == 0;
                if (naming)
                    break; // from here on the dialogs' keys
                const QStringList dialogs{"fileName", "saveFile"};
                QVERIFY2(file->contains(group + setting.key) || dialogs.contains(setting.key), setting.key);
            }
        }
        m_panel->setDefaultValue();
        QVERIFY(m_panel->fileWriteIni());
        QCOMPARE(openMainSettings()->value("File_PDF/gamma").toInt(), 120);
        QCOMPARE(openMainSettings()->value("File_PDF/fileBW").toInt(), 1);
        QCOMPARE(openPathSettings()->value("File_PDF_FilePath/savepath").toString(), defaultSaveFolder());
    }

    void documentTypeByColourMode()
    {
        for (int mode = 0; mode < 3; ++mode) {
            control<QComboBox>("scanTypeComboBox_2")->setCurrentIndex(mode);
            const char* const combos[] = {"wbComboBox", "grayComboBox", "colorComboBox"};
            for (int other = 0; other < 3; ++other)
                control<QComboBox>(combos[other])->setCurrentIndex(other == mode ? 3 : 1);
            QCOMPARE(m_panel->getSaveType(), "ofd");
            control<QComboBox>("fileTypeComboBox")->setCurrentIndex(2); // what the user sees and changes
            QCOMPARE(control<QComboBox>(combos[mode])->currentIndex(), 2);
            QCOMPARE(m_panel->getSaveType(), "pdf");
        }
    }

    void scanParameters()
    {
        control<QComboBox>("papersizeComboBox")->setCurrentIndex(5);
        control<QComboBox>("scanTypeComboBox")->setCurrentIndex(3);
        control<QComboBox>("resolutionComboBox")->setCurrentIndex(6);
        for (const auto& [typed, scanned] : {std::pair{"250", 300}, {"301", 600}}) {
            control<QLineEdit>("resolutionLineEdit")->setText(typed);
            m_panel->scanButtonClicked();
            const ScanParameters& p = m_host->started;
            QCOMPARE((QVector<int>{p.resolution, p.source, p.paper, p.imageType, p.colorMode, p.option9,
                                   p.rotation, p.edgeFill, p.option12, p.option13}),
                     (QVector<int>{scanned, 4, 2, 2, 1, 2, 1, 1, 1, 1}));
        }
        m_host->accepts = false;
        m_host->started = {};
        m_panel->scanButtonClicked();
        QCOMPARE(m_host->started.source, 1);
    }

    void previewLeavesTheFormAsItWas()
    {
        auto* combine = control<QCheckBox>("combineCheckBox");
        auto* split = control<QCheckBox>("handcombineCheckBox");
        control<QComboBox>("scanTypeComboBox")->setCurrentIndex(3);
        combine->setChecked(true);
        split->setChecked(true);
        QSignalSpy words(m_panel.get(), &pdfpanel::sendPDFProcessMessg);
        control<QPushButton>("previewPushButton")->click();
        QCOMPARE(words.first().first().toString(), QStringLiteral("4444"));
        QVERIFY(m_host->lastPreview);
        QCOMPARE(m_host->started.option13, 2);
        QVERIFY(!combine->isChecked() && !split->isChecked());
        QVERIFY(!control<QRadioButton>("horizontalRadioButton")->isEnabled());
        QVERIFY(!control<QPushButton>("previewPushButton")->isEnabled());
        m_panel->jobEnded();
        QVERIFY(combine->isChecked() && split->isChecked());
        QVERIFY(control<QRadioButton>("horizontalRadioButton")->isEnabled());
        m_panel->scanButtonClicked();
        QCOMPARE(m_host->started.option13, 1);
    }

    // Nothing of the scans is lost, and nothing half done is left beside them.
    void cancelBetweenPagesAndBetweenDocuments()
    {
        control<QCheckBox>("handcombineCheckBox")->setChecked(true); // pages 1, 2 and page 3
        control<QCheckBox>("autocutCheckBox")->setChecked(false);
        QByteArray pnm = "P5\n400 560\n255\n";
        pnm.append(400 * 560, '\x20');
        const auto scan = [&](int cancelAt) {
            for (int page = 1; page <= 3; ++page)
                QVERIFY(putFile(paths::pagePrefix() + QString("-000%1.pnm").arg(page), pnm));
            m_host->shown = 0;
            m_host->cancelAt = cancelAt;
            m_host->pagesLeft = false;
            m_panel->scanButtonClicked();
            m_host->scanOver();
        };
        const QDir temp(paths::tempFolder());
        const QDir saved(defaultSaveFolder());
        scan(2); // in the second page
        QCOMPARE(pageFiles().size(), 3);
        QVERIFY(m_host->pagesLeft);
        QVERIFY(temp.entryList({"page-*"}).isEmpty());
        QVERIFY(saved.entryList(QDir::Files).isEmpty());
        QVERIFY2(m_host->summary.contains(QStringLiteral("3 页")), qPrintable(m_host->summary));

        scan(6); // shown 4 times for the pages, then for each document
        QCOMPARE(saved.entryList(QDir::Files), QStringList{"image.pdf"});
        QCOMPARE(pageFiles(), QStringList{paths::pagePrefix() + "-0003.pnm"});
        QVERIFY(m_host->pagesLeft);

        QSignalSpy words(m_panel.get(), &pdfpanel::sendPDFProcessMessg);
        scan(1000);
        QCOMPARE(saved.entryList(QDir::Files), (QStringList{"image-1.pdf", "image-2.pdf", "image.pdf"}));
        QVERIFY(pageFiles().isEmpty() && temp.entryList({"page-*"}).isEmpty());
        QStringList texts;
        for (const auto& word : words)
            texts << word.first().toString();
        QCOMPARE(texts, (QStringList{"正在准备扫描", "正在处理第1张图像", "正在处理第2张图像",
                                     "正在处理第3张图像", "正在生成版式文件数据", "1234"}));
    }
};

QTEST_MAIN(TestPdfPanel)
#include "tst_pdfpanel.moc"
