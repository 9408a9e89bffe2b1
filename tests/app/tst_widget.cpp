// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/globals.h"
#include "app/windowfixture.h"
#include "config/settingsfile.h"
#include "config/templates.h"
#include "device/stateinfopanel.h"
#include "ocr/ocrpanel.h"
#include "pdf/pdfpanel.h"

#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QMessageBox>
#include <QRadioButton>
#include <QSettings>
#include <QSignalSpy>
#include <QSlider>

class TestWidget : public WindowFixture
{
    Q_OBJECT

private:
    bool canScan()
    {
        return control<QPushButton>("scanButton")->isEnabled() &&
               control<QPushButton>("previewPushButton_5")->isEnabled();
    }
    void setPresent(bool present)
    {
        const std::lock_guard lock(m_usb.mutex);
        m_usb.present = present;
    }
    void press(int code)
    {
        const std::lock_guard lock(m_usb.mutex);
        m_usb.press(code);
    }

private slots:
    void init()
    {
        setPresent(true);
        WindowFixture::init();
    }

    void firstStartShowsTheScanPageAndWritesEveryDefault()
    {
        QCOMPARE(control<QComboBox>("templetBtncomboBox_3")->currentText(), QStringLiteral("Scan  Utility"));
        QCOMPARE(control<QComboBox>("templetBtncomboBox")->currentText(), QStringLiteral("PDF  Utility"));
        QVERIFY(control<QRadioButton>("scanPushButton")->isChecked());
        QCOMPARE(control<QComboBox>("templateComboBox")->currentText(), QLatin1String(defaultTemplate));
        QCOMPARE(control<QSlider>("gammaSlider_5")->value(), 120);
        const auto file = openMainSettings();
        QCOMPARE(file->value("ScanModel").toInt(), 0);
        QCOMPARE(file->value("wholeSet/delBlank").toInt(), 8);
        // The next start looks the same.
        control<QPushButton>("applyPushButton")->click();
        restart();
        QCOMPARE(control<QSlider>("gammaSlider_5")->value(), 120);
        QCOMPARE(control<QComboBox>("scanTypeComboBox_9")->currentIndex(), 2); // "3" has no item
    }

    void everySlotOfAControlHasItsControl()
    {
        const QMetaObject* meta = m_window->metaObject();
        for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
            const QString name = QString::fromLatin1(meta->method(i).name());
            if (!name.startsWith("on_"))
                continue;
            const QString object = name.section('_', 1, -2);
            QVERIFY2(m_window->findChild<QWidget*>(object), qPrintable(name));
        }
    }

    void everyFunctionHasItsPanelAndDescription()
    {
        auto* functions = control<QComboBox>("templetBtncomboBox_3");
        QSet<QWidget*> panels;
        QSet<QString> descriptions;
        for (int i = 0; i < functions->count(); ++i) {
            functions->setCurrentIndex(i);
            QCOMPARE(currentMode == "OCR", functions->currentText().startsWith("OCR"));
            panels << shownPanel();
            descriptions << control<QLabel>("scanDescribeLabel")->text();
        }
        QCOMPARE(panels.size(), functions->count());
        QCOMPARE(descriptions.size(), functions->count());
    }

    void pagesHaveTheirOwnControlsAndComeBack()
    {
        control<QRadioButton>("filePushButton")->click();
        QCOMPARE(ScanorFile, 1);
        QVERIFY(qobject_cast<pdfpanel*>(shownPanel()));
        QVERIFY(control<QComboBox>("templetBtncomboBox")->isVisible());
        QVERIFY(!control<QComboBox>("templetBtncomboBox_3")->isVisible());
        control<QComboBox>("templetBtncomboBox")->setCurrentText("Scan  Utility");
        QCOMPARE(shownPanel()->objectName(), QStringLiteral("filePage"));
        control<QSlider>("lightnessSlider")->setValue(-7);
        control<QPushButton>("applyPushButton")->click();
        QCOMPARE(openMainSettings()->value("File_Scan/lightness").toInt(), -7);
        QCOMPARE(openMainSettings()->value("Scan_Scan/lightness").toInt(), 15);
        restart();
        QVERIFY(control<QRadioButton>("filePushButton")->isChecked());
        QCOMPARE(control<QSlider>("lightnessSlider")->value(), -7);
        control<QRadioButton>("scanPushButton")->click();
        QCOMPARE(ScanorFile, 0);
        QCOMPARE(shownPanel()->objectName(), QStringLiteral("scanPage"));
    }

    void defaultsComeBackToControlsAndFiles()
    {
        openPathSettings()->setValue("Scan_Scan_FilePath/savepath", "/elsewhere");
        control<QCheckBox>("delBlankCheckBox_5")->setChecked(true);
        control<QSlider>("gammaSlider_5")->setValue(50);
        control<QPushButton>("defaultvaluePushButton_5")->click();
        QCOMPARE(control<QSlider>("gammaSlider_5")->value(), 120);
        QVERIFY(!control<QCheckBox>("delBlankCheckBox_5")->isChecked());
        QVERIFY(control<QCheckBox>("autoRightCheckBox_5")->isChecked());
        QCOMPARE(openPathSettings()->value("Scan_Scan_FilePath/savepath").toString(), defaultSaveFolder());
    }

    void withoutAScannerTheControlsComeBack()
    {
        QSignalSpy progress(m_window.get(), &Widget::sendProcessMessg);
        control<QPushButton>("scanButton")->click();
        QVERIFY(!canScan());
        QCOMPARE(progress.value(0).value(0).toString(), QStringLiteral("正在准备扫描"));
        QTRY_VERIFY_WITH_TIMEOUT(canScan(), 20000);
        QCOMPARE(status(), QStringLiteral("未找到扫描仪"));
        QCOMPARE(progress.last().value(0).toString(), QStringLiteral("1234"));
        // The preview as well, and the next batch is an ordinary one again.
        control<QPushButton>("previewPushButton_5")->click();
        QVERIFY(!canScan());
        QTRY_VERIFY_WITH_TIMEOUT(canScan(), 20000);
    }

    void ocrPanelIsStoredAndScansFromItsPage()
    {
        control<QComboBox>("templetBtncomboBox_3")->setCurrentText("OCR  Utility");
        auto* panel = qobject_cast<ocrpanel*>(shownPanel());
        QVERIFY(panel);
        panel->findChild<QComboBox*>("documentTypeComboBox")->setCurrentIndex(1);
        control<QPushButton>("scanButton")->click();
        QVERIFY(!canScan());
        QCOMPARE(openMainSettings()->value("Scan_OCR/docType").toInt(), 1);
        QCOMPARE(openMainSettings()->value("File_OCR/docType").toInt(), 0);
        QCOMPARE(ocrConnection, 1);
        QTRY_VERIFY_WITH_TIMEOUT(canScan(), 20000);
        control<QPushButton>("defaultvaluePushButton_5")->click();
        QCOMPARE(panel->findChild<QComboBox*>("documentTypeComboBox")->currentIndex(), 0);
    }

    void controlWordsSwitchTheControls()
    {
        m_window->scanProcressSlot("4444");
        QVERIFY(!control<QPushButton>("scanButton")->isEnabled());
        m_window->scanProcressSlot("1234");
        QVERIFY(canScan());
        m_window->scanProcressSlot("3333");
        QVERIFY(!canScan() && !control<QPushButton>("applyPushButton")->isEnabled());
        m_window->scanProcressSlot("正在处理第1张图像");
        QVERIFY(!canScan());
        m_window->scanProcressSlot("2222");
        QVERIFY(canScan() && control<QPushButton>("applyPushButton")->isEnabled());
    }

    void offlineAndOnlineActOnceEach()
    {
        auto* tray = m_window->findChild<QSystemTrayIcon*>();
        QVERIFY(tray);
        QSignalSpy reports(m_window.get(), &Widget::windowIconChanged); // each message sets the icon anew
        setPresent(false);
        QTRY_VERIFY(!canScan());
        QCOMPARE(tray->toolTip(), QStringLiteral("Error"));
        QVERIFY(m_window->isMinimized() || !m_window->isVisible());
        m_window->showNormal();
        QTest::qWait(150); // further reports do not hide what the user has brought back
        QVERIFY(m_window->isVisible() && !m_window->isMinimized());
        setPresent(true);
        QTRY_VERIFY(canScan());
        QCOMPARE(tray->toolTip(), QStringLiteral("Ready"));
        QTest::qWait(150);
        QCOMPARE(reports.count(), 2);
        press(77); // a key without a function
        QTest::qWait(100);
        QVERIFY(canScan());
    }

    void panelIsStoredWithItsPage()
    {
        control<QRadioButton>("filePushButton")->click(); // shows the PDF function
        auto* panel = qobject_cast<pdfpanel*>(shownPanel());
        QVERIFY(panel);
        panel->findChild<QSlider*>("lightnessSlider")->setValue(-9);
        panel->findChild<QComboBox*>("applicationComboBox")->setEditText("/home/elsewhere/");
        control<QPushButton>("applyPushButton")->click();
        QCOMPARE(openMainSettings()->value("File_PDF/lightness").toInt(), -9);
        QCOMPARE(openMainSettings()->value("Scan_PDF/lightness").toInt(), 15);
        QCOMPARE(openPathSettings()->value("File_PDF_FilePath/savepath").toString(),
                 QStringLiteral("/home/elsewhere"));
        panel->findChild<QSlider*>("lightnessSlider")->setValue(0);
        control<QPushButton>("cancelPushButton")->click(); // as stored again
        QCOMPARE(panel->findChild<QSlider*>("lightnessSlider")->value(), -9);
        QVERIFY(m_window->isMinimized() || !m_window->isVisible());
    }

    void trayMenuIsInOrderAndNeedsAScannerToShowTheWindow()
    {
        auto* tray = m_window->findChild<QSystemTrayIcon*>();
        const QList<QAction*> actions = tray->contextMenu()->actions();
        QStringList texts;
        for (const QAction* action : actions)
            texts << (action->isSeparator() ? "-" : action->text());
        QCOMPARE(texts, (QStringList{"最小化", "显示窗体", "-", "退出"}));
        setPresent(false);
        QTRY_VERIFY(!actions[1]->isEnabled());
        m_window->hide();
        m_window->iconActivated(QSystemTrayIcon::DoubleClick);
        QVERIFY(!m_window->isVisible());
        setPresent(true);
        QTRY_VERIFY(actions[1]->isEnabled());
        m_window->iconActivated(QSystemTrayIcon::DoubleClick);
        QVERIFY(m_window->isVisible());
    }

    void applicationsAreKeptAcrossStartsAndDeletedKeysGo()
    {
        m_window->scanAddApp("看图", "/usr/bin/viewer -f %f");
        QCOMPARE(control<QComboBox>("applicationComboBox_5")->currentText(), QStringLiteral("看图"));
        control<QPushButton>("applyPushButton")->click();
        restart();
        QCOMPARE(control<QComboBox>("applicationComboBox_5")->count(), 2);
        QCOMPARE(openMainSettings()->value("Scan_app_exec/1").toString(),
                 QStringLiteral("/usr/bin/viewer -f %f"));
        control<QComboBox>("applicationComboBox_5")->setCurrentIndex(0);
        control<QPushButton>("deletePushButton_5")->click();
        control<QPushButton>("applyPushButton")->click();
        QCOMPARE(openMainSettings()->value("Scan_app/0").toString(), QStringLiteral("看图"));
        QVERIFY(!openMainSettings()->contains("Scan_app/1"));
    }

    void damagedSettingsStartWithDefaults()
    {
        m_window.reset();
        QVERIFY(putFile(paths::mainSettings(), QByteArray("\0\1\2garbage", 10)));
        restart();
        QCOMPARE(control<QSlider>("gammaSlider_5")->value(), 120);
    }
};

QTEST_MAIN(TestWidget)
#include "tst_widget.moc"
