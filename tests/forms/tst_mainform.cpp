// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms-dialogs/driving.h"
#include "mainform.h"

// The main window's form: every control has a name for screen readers and can be reached by keyboard in
// reading order, no two share an access key, and nothing is cut off or too large.
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
        checkTexts(form.window);
        checkReachable(form.window);

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

    static void checkTexts(const QWidget& window)
    {
        for (const QWidget* control : window.findChildren<QWidget*>()) {
            if (!control->isVisible())
                continue;
            const std::string name = control->objectName().toStdString();
            QString text = control->property("text").toString();
            const auto* label = qobject_cast<const QLabel*>(control);
            QVERIFY2(!label || !text.endsWith(QLatin1Char(':')) || label->buddy(), name.c_str());
            if (const auto* combo = qobject_cast<const QComboBox*>(control))
                QVERIFY2(combo->sizeAdjustPolicy() == QComboBox::AdjustToMinimumContentsLengthWithIcon ||
                             combo->width() >= combo->minimumSizeHint().width(),
                         name.c_str());
            if (text.isEmpty() || control->inherits("QLineEdit") || (label && label->wordWrap()))
                continue;
            text.remove(QLatin1Char('&'));
            QVERIFY2(control->contentsRect().width() >= control->fontMetrics().horizontalAdvance(text),
                     name.c_str());
            QVERIFY2(control->height() >= control->fontMetrics().height() - 2, name.c_str());
        }
    }
};

QTEST_MAIN(TestMainForm)
#include "tst_mainform.moc"
