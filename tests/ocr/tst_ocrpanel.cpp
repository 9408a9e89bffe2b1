// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"
#include "config/freshroot.h"
#include "config/leftovers.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms-dialogs/driving.h"
#include "forms/recordinghost.h"
#include "ocr/ocrpanel.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

// The panel with a window that has no scanner. Pages of these tests have no text: reading is tested
// elsewhere.
class TestOcrPanel : public QObject
{
    Q_OBJECT

    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<ocrpanel> m_panel;

    template <typename Control>
    Control* control(const char* name)
    {
        return ::control<Control>(*m_panel, name);
    }
    static void put(const QMap<QString, QVariant>& values)
    {
        const auto file = openMainSettings();
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            file->setValue(it.key(), it.value());
        QVERIFY(saveSettings(*file));
    }
    static QString stored(const QString& key) { return openMainSettings()->value(key).toString(); }
    void restart(const QString& page = "Scan")
    {
        m_panel.reset();
        m_host = std::make_unique<RecordingHost>();
        m_panel = std::make_unique<ocrpanel>(page, *m_host);
    }
    static QStringList saved() { return QDir(defaultSaveFolder()).entryList(QDir::Files); }
    // Two white pages, as after a scan.
    void scan()
    {
        QByteArray pnm = "P5\n400 560\n255\n";
        pnm.append(400 * 560, '\xff');
        for (int page = 1; page <= 2; ++page)
            QVERIFY(putFile(paths::pagePrefix() + QString("-000%1.pnm").arg(page), pnm));
        m_host->shown = 0;
        m_panel->scanButtonClicked();
        m_host->scanOver();
    }

private slots:
    void init()
    {
        QVERIFY(freshRoot());
        QVERIFY(ensureFactorySettings());
        restart();
    }
    void cleanup() { m_panel.reset(); }

    void settingsOfItsOwnComeBackInBothGroups()
    {
        for (const QString page : {"Scan", "File"}) {
            const QString group = page + "_OCR/";
            put({{group + "docType", 1},
                 {group + "fileType", 3},
                 {group + "resolution", 2},
                 {group + "split", true}});
            restart(page);
            openMainSettings()->remove(group.chopped(1));
            QVERIFY(page == "Scan" ? m_panel->scanWriteIni() : m_panel->fileWriteIni());
            for (const Setting& setting : table(group.chopped(1)).settings) {
                if (qstrcmp(setting.key, "saveFile") == 0)
                    break; // from here on the dialogs' keys
                QVERIFY2(openMainSettings()->contains(group + setting.key), setting.key);
            }
            QCOMPARE((QStringList{stored(group + "docType"), stored(group + "fileType"),
                                  stored(group + "resolutionText"), stored(group + "split"),
                                  stored(group + "noiseMode")}),
                     (QStringList{"1", "3", "400", "true", "0"}));
            m_panel->ocrSetDefaultValue();
            QVERIFY(m_panel->scanWriteIni());
            QCOMPARE(
                (QStringList{stored(group + "docType"), stored(group + "resolutionText"),
                             stored(group + "split"), stored(group + "autoRight"), stored(group + "gamma")}),
                (QStringList{"0", "300", "false", "false", "120"}));
        }
    }

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
            m_panel->scanButtonClicked();
            const ScanParameters& p = m_host->started;
            QCOMPARE((QVector<int>{p.resolution, p.source, p.paper, p.imageType, p.colorMode, p.option9,
                                   p.rotation, p.edgeFill, p.option12, p.option13}),
                     (QVector<int>{scanned, 4, 2, 2, 1, 2, 1, 1, 1, 1}));
        }
    }

    void oneNameForADocumentAndACountForABatch()
    {
        put({{"Scan_OCR/usrDefine", true}, {"Scan_OCR/name", "稿"}, {"Scan_OCR/start", "41"}});
        restart();
        QSignalSpy words(m_panel.get(), &ocrpanel::sendOCRProcessMessg);
        scan();
        QStringList texts;
        for (const auto& word : words)
            texts << word.first().toString();
        QCOMPARE(texts, (QStringList{"正在准备扫描", "正在处理第1张图像", "正在处理第2张图像",
                                     "正在识别第1张图像", "正在识别第2张图像", "1234"}));
        QVERIFY2(m_host->board.problems().contains(QStringLiteral("未识别到文字")),
                 qPrintable(m_host->board.problems()));
        scan();
        put({{"Scan_OCR/cover", true}});
        scan();
        QCOMPARE(saved(), (QStringList{"稿-1.txt", "稿.txt"}));
        QCOMPARE(stored("Scan_OCR/start"), QStringLiteral("44"));
        QVERIFY(pageFiles().isEmpty() && QDir(paths::tempFolder()).entryList({"page-*"}).isEmpty());
    }

    void cancelInAPageLosesNothing()
    {
        control<QComboBox>("documentTypeComboBox")->setCurrentIndex(1);
        m_host->cancelAt = 4; // shown three times for the pages, then for each that is read
        scan();
        QCOMPARE(pageFiles().size(), 2);
        QVERIFY(m_host->pagesLeft && saved().isEmpty());
        QVERIFY2(m_host->summary.contains(QStringLiteral("2 页")), qPrintable(m_host->summary));
        QCOMPARE(stored("Scan_OCR/start"), QStringLiteral("1"));
    }

    void documentThatCannotBeWrittenKeepsItsPages()
    {
        QVERIFY(putFile(defaultSaveFolder(), "no folder"));
        scan();
        QCOMPARE(QDir(paths::tempFolder() + "failed-image").entryList(QDir::Files),
                 (QStringList{"page-0001.png", "page-0002.png"}));
        QVERIFY2(m_host->board.problems().contains(QStringLiteral("failed-image")),
                 qPrintable(m_host->board.problems()));
        QFile::remove(defaultSaveFolder());
    }
};

QTEST_MAIN(TestOcrPanel)
#include "tst_ocrpanel.moc"
