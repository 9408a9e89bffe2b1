// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms-dialogs/driving.h"
#include "mainform.h"

// The main window's form fits on a small screen, and the Tab key goes through it in reading order.
class TestMainForm : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { useUsualFont(); }
    void scanPage() { pageIsUsable(true); }
    void filePage() { pageIsUsable(false); }

private:
    static void pageIsUsable(bool scanPage)
    {
        MainForm form;
        const auto& ui = form.ui;
        const ScanPageControls& c = scanPage ? form.scan->c : form.file->c;
        for (QWidget* other :
             scanPage ? QVector<QWidget*>{ui.fileFunctionLabel, ui.templetBtncomboBox, ui.fileDescribeLabel}
                      : QVector<QWidget*>{ui.functionLabel, ui.templetBtncomboBox_3, ui.scanDescribeLabel})
            other->hide();
        ui.functionStack->setCurrentWidget(scanPage ? ui.scanPage : ui.filePage);
        form.window.setFixedSize(form.window.sizeHint());
        QVERIFY2(form.window.width() <= 1180 && form.window.height() <= 640,
                 qPrintable(QStringLiteral("%1x%2").arg(form.window.width()).arg(form.window.height())));
        c.source->setCurrentIndex(3); // enables what a duplex scan can use
        c.resolution->setCurrentIndex(6);
        c.colorMode->setCurrentIndex(0);
        c.combine->click();
        open(form.window);

        ui.scanButton->setFocus();
        QTest::keyClick(ui.scanButton, Qt::Key_Tab);
        const QVector<QWidget*> reached = tabOrder(form.window);
        const QVector<QWidget*> reading = {scanPage ? ui.templetBtncomboBox_3 : ui.templetBtncomboBox,
                                           c.source,
                                           c.resolution,
                                           c.resolutionText,
                                           c.lightness,
                                           c.autoCut,
                                           c.fileType,
                                           ui.helpPushButton,
                                           ui.scanButton};
        for (int i = 1; i < reading.size(); ++i)
            QVERIFY2(reached.indexOf(reading[i - 1]) < reached.indexOf(reading[i]),
                     qPrintable(reading[i]->objectName()));
    }
};

QTEST_MAIN(TestMainForm)
#include "tst_mainform.moc"
