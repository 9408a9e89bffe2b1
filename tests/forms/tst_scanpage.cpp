// SPDX-License-Identifier: GPL-3.0-or-later
#include <QAction>
#include <QtTest>

#include "config/freshroot.h"
#include "config/keys.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms-dialogs/driving.h"
#include "mainform.h"

using Side = ScanPageLogic::Side;

namespace {

std::unique_ptr<QSettings> fresh(const QString& group)
{
    auto file = openMainSettings();
    file->beginGroup(group);
    return file;
}

} // namespace

// The rules of a template page and its settings, on both pages of the real form.
class TestScanPage : public QObject
{
    Q_OBJECT
private slots:
    void init() { QVERIFY(freshRoot()); }

    // The main window's form fits on a small screen, and the Tab key goes through it in reading order.
    void pagesFitAndAreReadInOrder_data()
    {
        QTest::addColumn<bool>("scanPage");
        QTest::newRow("scan page") << true;
        QTest::newRow("file page") << false;
    }
    void pagesFitAndAreReadInOrder()
    {
        QFETCH(bool, scanPage);
        useUsualFont();
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

    void deviceResolution()
    {
        const struct
        {
            int item;
            QString typed;
            int device, field;
            bool resampled;
        } cases[] = {{1, "", 150, 150, false},   {4, "", 400, 400, false},     {6, "300", 300, 300, true},
                     {6, "301", 600, 301, true}, {6, "400", 600, 400, true},   {6, "50", 300, 50, true},
                     {6, "49", 300, 300, false}, {6, "1201", 600, 600, false}, {6, "", 300, 300, false}};
        MainForm form;
        for (PageUnderTest* page : {form.scan.get(), form.file.get()}) {
            for (const auto& one : cases) {
                page->c.resolution->setCurrentIndex(one.item);
                if (one.item == 6)
                    page->c.resolutionText->setText(one.typed);
                QCOMPARE(page->logic.scanResolution(), one.device);
                QCOMPARE(page->logic.fieldDpi(), one.field);
                QCOMPARE(page->logic.isResolutionCustom(), one.resampled);
                QCOMPARE(page->logic.isFinerThan400(), one.item == 4);
            }
        }
    }

    void resolutionField()
    {
        MainForm form;
        const ScanPageControls& c = form.scan->c;
        c.resolution->setCurrentIndex(6);
        c.resolutionText->clear();
        QTest::keyClicks(c.resolutionText, "2a4x0"); // letters are not taken
        c.resolution->setCurrentIndex(4);
        QCOMPARE(c.resolutionText->text(), QString("400"));
        QVERIFY(!c.resolutionText->isEnabled());
        c.resolution->setCurrentIndex(6); // the typed value comes back
        QCOMPARE(c.resolutionText->text(), QString("240"));
        const QAction* warning = c.resolutionText->actions().constLast();
        QVERIFY(!warning->isVisible());
        c.resolutionText->setText("24");
        QVERIFY(warning->isVisible());
    }

    void scanParameters()
    {
        MainForm form;
        form.scan->c.paperSize->setItemText(5, "custom"); // a translated item changes nothing
        for (PageUnderTest* page : {form.scan.get(), form.file.get()}) {
            const ScanPageControls& c = page->c;
            QVector<int> codes;
            for (int i = 0; i < c.paperSize->count(); ++i) {
                c.paperSize->setCurrentIndex(i);
                codes << page->logic.paperCode();
                QCOMPARE(page->logic.isPaperCustom(), i == 5);
            }
            QCOMPARE(codes, (QVector<int>{2, 3, 4, 5, 6, 2}));
            const QVector<QRadioButton*> sides = {c.front, c.front, c.back, c.duplex, c.front};
            for (int source = 0; source < 5; ++source) {
                c.source->setCurrentIndex(source);
                QCOMPARE(page->logic.sourceNumber(), source + 1);
                QVERIFY(sides[source]->isChecked());
                QCOMPARE(c.duplex->isEnabled(), source >= 1 && source <= 3);
            }
            c.source->setCurrentIndex(1);
            for (int source : {3, 2, 1}) { // the source follows the side as well
                sides[source]->click();
                QCOMPARE(c.source->currentIndex(), source);
            }
        }
    }

    void mergeAndSplit()
    {
        MainForm form;
        for (PageUnderTest* page : {form.scan.get(), form.file.get()}) {
            const ScanPageControls& c = page->c;
            c.source->setCurrentIndex(3);
            c.combine->click();
            QVERIFY(ScanPageLogic::isOn(c.combine) && c.horizontal->isEnabled());
            c.source->setCurrentIndex(1); // one side only: nothing to merge
            QVERIFY(!ScanPageLogic::isOn(c.combine) && !c.vertical->isEnabled());
            c.source->setCurrentIndex(3);
            c.split->click();
            QVERIFY(!c.combine->isChecked() && c.vertical->isEnabled());
        }
    }

    void formatPerColorMode()
    {
        MainForm form;
        for (PageUnderTest* page : {form.scan.get(), form.file.get()}) {
            const ScanPageControls& c = page->c;
            for (int mode = 0; mode < 3; ++mode) {
                c.colorMode->setCurrentIndex(mode);
                QCOMPARE(c.fileType->currentIndex(), 0);
                c.fileType->setCurrentIndex(mode + 1);
                QCOMPARE(c.threshold->isEnabled(), mode == 0);
                QCOMPARE(c.outMutiImg->isEnabled(), mode != 0);
            }
            for (int mode = 0; mode < 3; ++mode) {
                c.colorMode->setCurrentIndex(mode);
                QCOMPARE(c.fileType->currentIndex(), mode + 1);
                QCOMPARE(page->logic.fileFormat(), mode + 1);
            }
        }
    }

    void rotationStates()
    {
        MainForm form;
        PageUnderTest& page = *form.scan;
        const auto used = [&page] {
            return QString::number(page.c.frontRotation->isEnabled()) +
                   QString::number(page.c.backRotation->isEnabled());
        };
        QVERIFY(page.logic.isAutoRotate());
        page.c.handAdjust->click();
        const QStringList bySource = {"10", "10", "01", "11"};
        for (int source : {1, 2, 3}) {
            page.c.source->setCurrentIndex(source);
            QCOMPARE(used(), bySource[source]);
        }
        page.logic.setAutoRotateState();
        page.c.source->setCurrentIndex(2); // stays automatic
        QCOMPARE(used(), QString("00"));
        QVERIFY(!page.c.handAdjust->isChecked());
        page.logic.doubleRotateState();
        QCOMPARE(used(), QString("11"));
        form.ui.functionStack->setEnabled(false); // during a batch; what was chosen still holds
        QVERIFY(ScanPageLogic::isOn(page.c.autoRight) && !page.logic.isAutoRotate());
    }

    void rotationTexts()
    {
        MainForm form;
        PageUnderTest& page = *form.file;
        const QStringList turns = {"旋转0°", "左转90°", "旋转180°", "右转90°"};
        for (int code = 0; code < 4; ++code) {
            page.logic.setRotation(Side::Front, code);
            page.logic.setRotation(Side::Back, 3 - code);
            QCOMPARE(page.c.frontRotation->text(), QStringLiteral("正面") + turns[code]);
            QCOMPARE(page.c.backRotation->text(), QStringLiteral("反面") + turns[3 - code]);
            QCOMPARE(page.logic.rotation(Side::Front), code);
            QCOMPARE(page.logic.rotation(Side::Back), 3 - code);
            QCOMPARE(ScanPageLogic::clockwiseDegrees(code), (360 - 90 * code) % 360);
        }
        QCOMPARE(ScanPageLogic::rotationCode("?"), 3);
    }

    void missingAndBadValues()
    {
        MainForm form;
        PageUnderTest& page = *form.scan;
        const ScanPageControls& c = page.c;
        page.settings.read(*fresh("Scan_Scan")); // nothing stored: everything off
        QCOMPARE((QVector<int>{c.source->currentIndex(), c.lightness->value(), c.gamma->value()}),
                 (QVector<int>{0, 0, 100}));
        QVERIFY(!c.autoCut->isChecked() && c.delBlank->isEnabled() && c.vertical->isChecked());
        QVERIFY(page.logic.isAutoRotate());

        const struct
        {
            const char* key;
            QVariant stored;
            const QWidget* control;
            const char* property;
            QVariant shown;
        } bad[] = {{keys::scanMode, 3, c.colorMode, "currentIndex", 2},
                   {keys::paperSize, 99, c.paperSize, "currentIndex", 5},
                   {keys::scanType, -1, c.source, "currentIndex", 1},
                   {keys::resolution, "abc", c.resolution, "currentIndex", 3},
                   {keys::lightness, 5000, c.lightness, "value", 15},
                   {keys::gamma, "nan", c.gamma, "value", 120},
                   {keys::filter, QStringList{"a", "b"}, c.filter, "currentIndex", 0},
                   {keys::pageSetFrontText, 12, c.frontRotation, "text", "正面旋转0°"},
                   {keys::selfResolution, "99999", c.resolutionText, "text", "300"}};
        for (const auto& one : bad)
            fresh("Scan_Scan")->setValue(one.key, one.stored);
        page.settings.read(*fresh("Scan_Scan"));
        for (const auto& one : bad)
            QVERIFY2(one.control->property(one.property) == one.shown, one.key);
        QCOMPARE(page.logic.customResolutionText(), QString("300"));
    }

    // Enabled states: stored where nothing else decides, by the page's rules elsewhere.
    void storedStates()
    {
        MainForm form;
        PageUnderTest& page = *form.scan;
        const QVector<QPair<const char*, QVariant>> values = {
            {keys::scanType, 3},       {keys::combine, true},
            {keys::hRBtn, true},       {keys::horizontalState, false}, // from a time without merging
            {keys::delBlank, true},    {keys::delBlankState, false},
            {keys::pageSetBack, true}, {keys::pageSetBackText, 2},
            {keys::fileColor, 1},      {keys::scanMode, 2},
            {keys::fileType, 3}};
        for (const auto& [key, value] : values)
            fresh("Scan_Scan")->setValue(key, value);
        page.settings.read(*fresh("Scan_Scan"));
        QVERIFY(ScanPageLogic::isOn(page.c.combine));
        QVERIFY(ScanPageLogic::isOn(page.c.horizontal));
        QVERIFY(!ScanPageLogic::isOn(page.c.delBlank));
        QVERIFY(page.c.handAdjust->isChecked());
        QVERIFY(!page.c.frontRotation->isEnabled() && page.c.backRotation->isEnabled());
        QCOMPARE(page.logic.rotation(Side::Back), 2);
        QCOMPARE(page.logic.fileFormat(), 1);
    }
};

QTEST_MAIN(TestScanPage)
#include "tst_scanpage.moc"
