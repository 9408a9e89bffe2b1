// SPDX-License-Identifier: GPL-3.0-or-later
#include <QSet>
#include <QtTest>

#include "mainform.h"

// The main window's form: every control that the window's slots are named after exists, every control has a
// name for screen readers and can be reached by keyboard, and nothing is cut off or too large.
class TestMainForm : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void slotControlsExist_data();
    void slotControlsExist();
    void fixedTexts();
    void accessibleNames();
    void keyboardReach_data();
    void keyboardReach();
    void accessKeysAreUnique_data() { keyboardReach_data(); }
    void accessKeysAreUnique();
    void nothingCutOff_data() { keyboardReach_data(); }
    void nothingCutOff();
    void laterFeaturesAreMarked();
    void screenshot();
};

void TestMainForm::initTestCase()
{
    // 9 point at the 96 dpi of a usual screen, whatever the platform plugin counts as an inch
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(12);
    QApplication::setFont(font);
}

void TestMainForm::slotControlsExist_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("buttons") << "QPushButton"
                             << QStringList{"wholesetPushButton",
                                            "savePushButton",
                                            "appendPushButton",
                                            "editPushButton",
                                            "revolvesetPushButton",
                                            "setPushButton",
                                            "appendPushButton_2",
                                            "editPushButton_5",
                                            "savePushButton_5",
                                            "confirmPushButton",
                                            "setPushButton_5",
                                            "revolvesetPushButton_5",
                                            "applyPushButton",
                                            "cancelPushButton",
                                            "helpPushButton",
                                            "previewPushButton_5",
                                            "deletePushButton_5",
                                            "deletePushButton",
                                            "scanButton",
                                            "defaultvaluePushButton_5",
                                            "morePushButton_5",
                                            "saveBtn",
                                            "delBtn",
                                            "loadBtn"};
    QTest::newRow("combos") << "QComboBox" << QStringList{"templetBtncomboBox",  "templetBtncomboBox_3",
                                                          "scanTypeComboBox_10", "resolutionComboBox_5",
                                                          "scanTypeComboBox_9",  "fileTypeComboBox_5",
                                                          "scanTypeComboBox",    "resolutionComboBox",
                                                          "scanTypeComboBox_2",  "fileTypeComboBox",
                                                          "papersizeComboBox_5"};
    QTest::newRow("sliders") << "QSlider"
                             << QStringList{"lightnessSlider_5", "contrastSlider_5", "gammaSlider_5",
                                            "lightnessSlider",   "contrastSlider",   "gammaSlider"};
    QTest::newRow("radio buttons") << "QRadioButton"
                                   << QStringList{"filePushButton",      "scanPushButton",
                                                  "frontRadioButton_5",  "backRadioButton_5",
                                                  "doubleRadioButton_5", "frontRadioBtn",
                                                  "backRadioBtn",        "doubleRadioBtn"};
    QTest::newRow("check boxes") << "QCheckBox"
                                 << QStringList{"combineCheckBox_5", "combineCheckBox", "redfileCheckBox_5",
                                                "autocutCheckBox_5", "redfileCheckBox", "autocutCheckBox"};
    QTest::newRow("tool buttons") << "QToolButton" << QStringList{"splitCheckBox", "splitCheckBox_5"};
    QTest::newRow("fields") << "QLineEdit" << QStringList{"resolutionLineEdit_5"};
}

void TestMainForm::slotControlsExist()
{
    QFETCH(QString, type);
    QFETCH(QStringList, names);
    MainForm form;
    for (const QString& name : names) {
        const auto* control = form.window.findChild<QWidget*>(name);
        QVERIFY2(control, qPrintable(name));
        QVERIFY2(control->inherits(qPrintable(type)), qPrintable(name));
    }
}

// Texts that other parts of the system and the manual rely on, on both pages.
void TestMainForm::fixedTexts()
{
    MainForm form;
    for (const PageUnderTest* page : {form.scan.get(), form.file.get()}) {
        QCOMPARE(page->c.delBlank->text(), QStringLiteral("删除空白页"));
        QCOMPARE(page->c.autoRight->text(), QStringLiteral("自动匡正"));
        QCOMPARE(page->c.autoCrowed->text(), QStringLiteral("自动密集"));
        QCOMPARE(page->c.frontRotation->text(), QStringLiteral("正面旋转0°"));
        QCOMPARE(page->c.backRotation->text(), QStringLiteral("反面旋转0°"));
        QCOMPARE(page->c.filter->itemText(6), QStringLiteral("反锐利"));
        QCOMPARE(page->c.resolution->itemText(6), QStringLiteral("自定义"));
        QCOMPARE(page->c.paperSize->itemText(page->c.paperSize->count() - 1), QStringLiteral("自定义..."));
        for (const QComboBox* formats :
             {page->c.fileType, page->c.colorFormat, page->c.greyFormat, page->c.bwFormat}) {
            QCOMPARE(formats->count(), 4);
            QCOMPARE(formats->itemText(3), QStringLiteral("Windows  Bitmap"));
        }
        QVERIFY(page->c.split->isCheckable());
        QVERIFY(!page->c.split->icon().isNull());
    }
}

void TestMainForm::accessibleNames()
{
    MainForm form;
    for (const QWidget* control : form.window.findChildren<QWidget*>()) {
        if (control->focusPolicy() == Qt::NoFocus || control->objectName().isEmpty() ||
            control->objectName().startsWith("qt_"))
            continue;
        QVERIFY2(!control->accessibleName().trimmed().isEmpty(), qPrintable(control->objectName()));
    }
    for (const QLabel* label : form.window.findChildren<QLabel*>())
        if (label->text().endsWith(QLatin1Char(':')))
            QVERIFY2(label->buddy(), qPrintable(label->objectName()));
}

void TestMainForm::keyboardReach_data()
{
    QTest::addColumn<bool>("scanPage");
    QTest::newRow("scan page") << true;
    QTest::newRow("file page") << false;
}

void TestMainForm::keyboardReach()
{
    QFETCH(bool, scanPage);
    MainForm form;
    form.showPage(scanPage);
    PageUnderTest& page = scanPage ? *form.scan : *form.file;
    page.c.source->setCurrentIndex(3); // enables what a duplex scan can use
    page.c.resolution->setCurrentIndex(6);
    page.c.colorMode->setCurrentIndex(0);
    page.c.combine->click();
    QVERIFY(QTest::qWaitForWindowActive(&form.window));

    QVector<QWidget*> reached;
    form.ui.scanButton->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    while (QApplication::focusWidget() && !reached.contains(QApplication::focusWidget())) {
        reached << QApplication::focusWidget();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (QWidget* control : form.window.findChildren<QWidget*>()) {
        if (!(control->focusPolicy() & Qt::TabFocus) || !control->isVisible() || !control->isEnabled())
            continue;
        auto* radio = qobject_cast<QRadioButton*>(control);
        if (radio && !radio->isChecked())
            continue; // the arrow keys lead there from the checked one
        QVERIFY2(reached.contains(control), qPrintable(control->objectName()));
    }
    // From the top to the page to the buttons below, as one reads.
    const auto position = [&](QWidget* control) { return reached.indexOf(control); };
    const QVector<QWidget*> order = {scanPage ? form.ui.templetBtncomboBox_3 : form.ui.templetBtncomboBox,
                                     page.c.source,
                                     page.c.resolution,
                                     page.c.resolutionText,
                                     page.c.lightness,
                                     page.c.autoCut,
                                     page.c.fileType,
                                     form.ui.helpPushButton,
                                     form.ui.scanButton};
    for (int i = 1; i < order.size(); ++i)
        QVERIFY2(position(order[i - 1]) < position(order[i]), qPrintable(order[i]->objectName()));
}

void TestMainForm::accessKeysAreUnique()
{
    QFETCH(bool, scanPage);
    MainForm form;
    form.showPage(scanPage);
    QSet<QString> taken;
    for (const QWidget* control : form.window.findChildren<QWidget*>()) {
        if (!control->isVisible())
            continue;
        for (const char* property : {"text", "title"}) {
            const QKeySequence key = QKeySequence::mnemonic(control->property(property).toString());
            if (key.isEmpty())
                continue;
            QVERIFY2(!taken.contains(key.toString()),
                     qPrintable(control->objectName() + " " + key.toString()));
            taken.insert(key.toString());
        }
    }
    QVERIFY(taken.size() >= 12);
    QCOMPARE(form.ui.scanButton->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Return));
    QCOMPARE(form.ui.helpPushButton->shortcut(), QKeySequence(Qt::Key_F1));
}

void TestMainForm::nothingCutOff()
{
    QFETCH(bool, scanPage);
    MainForm form;
    form.showPage(scanPage);
    QVERIFY2(form.window.width() <= 1180 && form.window.height() <= 640,
             qPrintable(QStringLiteral("%1x%2").arg(form.window.width()).arg(form.window.height())));
    for (const QWidget* control : form.window.findChildren<QWidget*>()) {
        const QString text = control->property("text").toString().remove(QLatin1Char('&'));
        if (!control->isVisible() || text.isEmpty() || control->inherits("QLineEdit"))
            continue;
        const auto* label = qobject_cast<const QLabel*>(control);
        if (label && label->wordWrap())
            continue;
        const int needed = control->fontMetrics().horizontalAdvance(text);
        QVERIFY2(control->contentsRect().width() >= needed, qPrintable(control->objectName()));
        QVERIFY2(control->height() >= control->fontMetrics().height() - 2, qPrintable(control->objectName()));
    }
    for (const QComboBox* combo : form.window.findChildren<QComboBox*>())
        if (combo->isVisible() &&
            combo->sizeAdjustPolicy() != QComboBox::AdjustToMinimumContentsLengthWithIcon)
            QVERIFY2(combo->width() >= combo->minimumSizeHint().width(), qPrintable(combo->objectName()));
}

void TestMainForm::laterFeaturesAreMarked()
{
    MainForm form;
    for (const QWidget* control : std::initializer_list<QWidget*>{
             form.ui.saveBtn, form.ui.loadBtn, form.ui.delBtn, form.ui.wholesetPushButton,
             form.ui.setPushButton, form.ui.setPushButton_5, form.ui.morePushButton_5}) {
        QVERIFY2(!control->isEnabled(), qPrintable(control->objectName()));
        QCOMPARE(control->toolTip(), QStringLiteral("此功能将在后续版本提供"));
    }
    const QString noEffect = QStringLiteral("此设置不改变图像");
    for (const PageUnderTest* page : {form.scan.get(), form.file.get()}) {
        for (const QWidget* control :
             std::initializer_list<QWidget*>{page->c.colorMatch, page->c.colorFilter, page->c.deScreen,
                                             page->c.fillHole, page->c.delColor})
            QCOMPARE(control->toolTip(), noEffect);
        QCOMPARE(page->c.filter->itemData(1, Qt::ToolTipRole).toString(), noEffect);
        QCOMPARE(page->c.filter->itemData(6, Qt::ToolTipRole).toString(), noEffect);
    }
}

// With QWD200_SHOTS set to a folder: pictures of both pages for the eye.
void TestMainForm::screenshot()
{
    const QString folder = qEnvironmentVariable("QWD200_SHOTS");
    if (folder.isEmpty())
        QSKIP("QWD200_SHOTS is not set");
    MainForm form;
    form.ui.templateComboBox->addItem(QStringLiteral("default-template"));
    form.showPage(true);
    QVERIFY(form.window.grab().save(folder + "/scanpage.png"));
    form.file->c.source->setCurrentIndex(3);
    form.file->c.colorMode->setCurrentIndex(0);
    form.file->c.resolution->setCurrentIndex(6);
    form.file->c.resolutionText->setText("30");
    form.file->c.handAdjust->click();
    form.file->c.split->click();
    form.showPage(false);
    QVERIFY(form.window.grab().save(folder + "/filepage.png"));
}

QTEST_MAIN(TestMainForm)
#include "tst_mainform.moc"
