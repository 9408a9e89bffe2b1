// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDir>
#include <QtTest>

#include "config/installroot.h"
#include "config/keys.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "mainform.h"

using Side = ScanPageLogic::Side;

// The rules of a template page and its settings, on both pages of the real form.
class TestScanPage : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void deviceResolution_data();
    void deviceResolution();
    void resolutionField();
    void paperAndSource();
    void sidesFollowSource();
    void mergeAndSplit();
    void formatPerColorMode();
    void rotationStates();
    void rotationTexts();
    void valueLabels();
    void disabledPageKeepsChoices();
    void defaults();
    void roundTrip_data();
    void roundTrip();
    void missingAndBadValues();
    void storedStates();

private:
    std::unique_ptr<QSettings> fresh(const QString& group);
};

namespace {

QVector<QComboBox*> combos(const ScanPageControls& c)
{
    return {c.source,   c.paperSize, c.colorMode,   c.resolution, c.threshold, c.colorFilter,
            c.deScreen, c.filter,    c.colorFormat, c.greyFormat, c.bwFormat,  c.application};
}

QVector<QAbstractButton*> switches(const ScanPageControls& c)
{
    return {c.contiScan, c.colorMatch, c.autoCrowed, c.autoCut,       c.autoRight, c.delBlank,
            c.imgMend,   c.outMutiImg, c.fillHole,   c.delBackground, c.delColor,  c.characEnhance,
            c.redFile,   c.combine,    c.split,      c.appStart};
}

QVector<QAbstractButton*> radios(const ScanPageControls& c)
{
    return {c.front, c.back, c.duplex, c.horizontal, c.vertical};
}

// Everything that is stored, as text to compare.
QStringList state(const PageUnderTest& page)
{
    QStringList all;
    for (const QComboBox* combo : combos(page.c))
        all << combo->objectName() + '=' + QString::number(combo->currentIndex());
    for (const QAbstractButton* button :
         switches(page.c) + radios(page.c) + QVector<QAbstractButton*>{page.c.handAdjust})
        all << button->objectName() + '=' + QString::number(button->isChecked()) +
                   QString::number(button->isEnabled());
    for (const QSlider* slider : {page.c.lightness, page.c.contrast, page.c.gamma})
        all << slider->objectName() + '=' + QString::number(slider->value());
    for (const QLabel* label :
         {page.c.frontRotation, page.c.backRotation, page.c.gammaValue, page.c.lightnessValue})
        all << label->objectName() + '=' + label->text() + QString::number(label->isEnabled());
    all << page.c.resolutionText->text() << page.logic.customResolutionText()
        << QString::number(page.c.fileType->currentIndex());
    return all;
}

} // namespace

void TestScanPage::init()
{
    QDir(installRoot()).removeRecursively();
    QVERIFY(QDir().mkpath(installRoot()));
}

std::unique_ptr<QSettings> TestScanPage::fresh(const QString& group)
{
    auto file = openMainSettings();
    file->beginGroup(group);
    return file;
}

void TestScanPage::deviceResolution_data()
{
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("device");
    QTest::addColumn<int>("field");
    QTest::addColumn<bool>("resampled");
    QTest::newRow("150") << 1 << QString() << 150 << 150 << false;
    QTest::newRow("400") << 4 << QString() << 400 << 400 << false;
    QTest::newRow("custom 300") << 6 << "300" << 300 << 300 << true;
    QTest::newRow("custom 301") << 6 << "301" << 600 << 301 << true;
    QTest::newRow("custom 400") << 6 << "400" << 600 << 400 << true;
    QTest::newRow("custom least") << 6 << "50" << 300 << 50 << true;
    QTest::newRow("custom too small") << 6 << "49" << 300 << 300 << false;
    QTest::newRow("custom too large") << 6 << "1201" << 600 << 600 << false;
    QTest::newRow("custom empty") << 6 << "" << 300 << 300 << false;
}

void TestScanPage::deviceResolution()
{
    QFETCH(int, item);
    QFETCH(QString, typed);
    QFETCH(int, device);
    QFETCH(int, field);
    QFETCH(bool, resampled);
    MainForm form;
    for (PageUnderTest* page : {form.scan.get(), form.file.get()}) {
        page->c.resolution->setCurrentIndex(item);
        if (item == 6)
            page->c.resolutionText->setText(typed);
        QCOMPARE(page->logic.scanResolution(), device);
        QCOMPARE(page->logic.fieldDpi(), field);
        QCOMPARE(page->logic.isResolutionCustom(), resampled);
        QCOMPARE(page->logic.isFinerThan400(), item == 4);
    }
}

void TestScanPage::resolutionField()
{
    MainForm form;
    PageUnderTest& page = *form.scan;
    page.c.resolution->setCurrentIndex(6);
    QVERIFY(page.c.resolutionText->isEnabled());
    page.c.resolutionText->clear();
    QTest::keyClicks(page.c.resolutionText, "2a4x0"); // letters are not taken
    QCOMPARE(page.c.resolutionText->text(), QString("240"));
    page.c.resolution->setCurrentIndex(4);
    QCOMPARE(page.c.resolutionText->text(), QString("400"));
    QVERIFY(!page.c.resolutionText->isEnabled());
    page.c.resolution->setCurrentIndex(6); // the typed value comes back
    QCOMPARE(page.c.resolutionText->text(), QString("240"));
    const QAction* warning = page.c.resolutionText->actions().constLast();
    QVERIFY(!warning->isVisible());
    page.c.resolutionText->setText("24");
    QVERIFY(warning->isVisible());
}

void TestScanPage::paperAndSource()
{
    MainForm form;
    for (PageUnderTest* page : {form.scan.get(), form.file.get()}) {
        QVector<int> codes;
        for (int i = 0; i < page->c.paperSize->count(); ++i) {
            page->c.paperSize->setCurrentIndex(i);
            codes << page->logic.paperCode();
            QCOMPARE(page->logic.isPaperCustom(), i == 5);
        }
        QCOMPARE(codes, (QVector<int>{2, 3, 4, 5, 6, 2}));
        for (int i = 0; i < page->c.source->count(); ++i) {
            page->c.source->setCurrentIndex(i);
            QCOMPARE(page->logic.sourceNumber(), i + 1);
        }
    }
    // A translated or renamed item changes nothing.
    form.scan->c.paperSize->setItemText(5, "custom");
    form.scan->c.paperSize->setCurrentIndex(5);
    QCOMPARE(form.scan->logic.paperCode(), 2);
    QVERIFY(form.scan->logic.isPaperCustom());
}

void TestScanPage::sidesFollowSource()
{
    MainForm form;
    for (PageUnderTest* page : {form.scan.get(), form.file.get()}) {
        const QVector<QRadioButton*> sides = {page->c.front, page->c.front, page->c.back, page->c.duplex,
                                              page->c.front};
        for (int source = 0; source < 5; ++source) {
            page->c.source->setCurrentIndex(source);
            QVERIFY(sides[source]->isChecked());
            QCOMPARE(page->c.duplex->isEnabled(), source >= 1 && source <= 3);
        }
        page->c.source->setCurrentIndex(1);
        page->c.duplex->click();
        QCOMPARE(page->c.source->currentIndex(), 3);
        page->c.back->click();
        QCOMPARE(page->c.source->currentIndex(), 2);
        page->c.front->click();
        QCOMPARE(page->c.source->currentIndex(), 1);
    }
}

void TestScanPage::mergeAndSplit()
{
    MainForm form;
    for (PageUnderTest* page : {form.scan.get(), form.file.get()}) {
        page->c.source->setCurrentIndex(1);
        QVERIFY(!page->c.combine->isEnabled());
        QVERIFY(!page->c.horizontal->isEnabled());
        page->c.source->setCurrentIndex(3);
        page->c.combine->click();
        QVERIFY(ScanPageLogic::isOn(page->c.combine));
        QVERIFY(page->c.horizontal->isEnabled());
        page->c.source->setCurrentIndex(1); // one side only: nothing to merge
        QVERIFY(!ScanPageLogic::isOn(page->c.combine));
        QVERIFY(!page->c.vertical->isEnabled());
        page->c.source->setCurrentIndex(3);
        page->c.split->click();
        QVERIFY(!page->c.combine->isChecked());
        QVERIFY(page->c.vertical->isEnabled());
    }
}

void TestScanPage::formatPerColorMode()
{
    MainForm form;
    for (PageUnderTest* page : {form.scan.get(), form.file.get()}) {
        for (int mode = 0; mode < 3; ++mode) {
            page->c.colorMode->setCurrentIndex(mode);
            QCOMPARE(page->c.fileType->currentIndex(), 0);
            page->c.fileType->setCurrentIndex(mode + 1);
            QCOMPARE(page->c.threshold->isEnabled(), mode == 0);
            QCOMPARE(page->c.outMutiImg->isEnabled(), mode != 0);
        }
        QCOMPARE(page->c.bwFormat->currentIndex(), 1);
        QCOMPARE(page->c.greyFormat->currentIndex(), 2);
        QCOMPARE(page->c.colorFormat->currentIndex(), 3);
        page->c.colorMode->setCurrentIndex(0);
        QCOMPARE(page->c.fileType->currentIndex(), 1);
        QCOMPARE(page->logic.fileFormat(), 1);
    }
}

void TestScanPage::rotationStates()
{
    MainForm form;
    PageUnderTest& page = *form.scan;
    const auto used = [&page] {
        return QString::number(page.c.frontRotation->isEnabled()) +
               QString::number(page.c.backRotation->isEnabled());
    };
    QVERIFY(page.logic.isAutoRotate());
    page.c.source->setCurrentIndex(1);
    page.c.handAdjust->click();
    QCOMPARE(used(), QString("10"));
    page.c.source->setCurrentIndex(2);
    QCOMPARE(used(), QString("01"));
    page.c.source->setCurrentIndex(3);
    QCOMPARE(used(), QString("11"));
    page.logic.setAutoRotateState();
    QCOMPARE(used(), QString("00"));
    QVERIFY(!page.c.handAdjust->isChecked());
    page.c.source->setCurrentIndex(2); // stays automatic
    QCOMPARE(used(), QString("00"));
    page.logic.setRotateState();
    QCOMPARE(used(), QString("01"));
    QVERIFY(page.c.handAdjust->isChecked());
    page.logic.doubleRotateState();
    QCOMPARE(used(), QString("11"));
    page.logic.cancelAutoRotateState();
    QCOMPARE(used(), QString("01"));
    page.c.handAdjust->click();
    QVERIFY(page.logic.isAutoRotate());
}

void TestScanPage::rotationTexts()
{
    MainForm form;
    PageUnderTest& page = *form.file;
    const QStringList turns = {"旋转0°", "左转90°", "旋转180°", "右转90°"};
    const QVector<double> degrees = {0, 270, 180, 90};
    for (int code = 0; code < 4; ++code) {
        page.logic.setRotation(Side::Front, code);
        page.logic.setRotation(Side::Back, 3 - code);
        QCOMPARE(page.c.frontRotation->text(), QStringLiteral("正面") + turns[code]);
        QCOMPARE(page.c.backRotation->text(), QStringLiteral("反面") + turns[3 - code]);
        QCOMPARE(page.logic.rotation(Side::Back), 3 - code);
        QCOMPARE(ScanPageLogic::rotationCode(page.c.frontRotation->text()), code);
        QCOMPARE(ScanPageLogic::rotationCode(page.c.backRotation->text()), 3 - code);
        QCOMPARE(ScanPageLogic::clockwiseDegrees(code), degrees[code]);
    }
    QCOMPARE(ScanPageLogic::rotationCode("?"), 3);
    page.logic.setRotation(Side::Front, 7);
    QCOMPARE(page.logic.rotation(Side::Front), 3);
}

void TestScanPage::valueLabels()
{
    MainForm form;
    for (PageUnderTest* page : {form.scan.get(), form.file.get()}) {
        page->c.lightness->setValue(-40);
        page->c.contrast->setValue(7);
        page->c.gamma->setValue(95);
        QCOMPARE(page->c.lightnessValue->text(), QString("-40"));
        QCOMPARE(page->c.contrastValue->text(), QString("7"));
        QCOMPARE(page->c.gammaValue->text(), QString("0.95"));
    }
}

// The window disables whole pages while a batch runs; what was chosen on them still holds.
void TestScanPage::disabledPageKeepsChoices()
{
    MainForm form;
    PageUnderTest& page = *form.scan;
    page.logic.doubleRotateState();
    form.ui.functionStack->setEnabled(false);
    QVERIFY(ScanPageLogic::isOn(page.c.autoCut));
    QVERIFY(!page.logic.isAutoRotate());
    page.c.autoCut->setEnabled(false);
    QVERIFY(!ScanPageLogic::isOn(page.c.autoCut));
}

void TestScanPage::defaults()
{
    MainForm form;
    for (PageUnderTest* page : {form.scan.get(), form.file.get()}) {
        for (QAbstractButton* button : switches(page->c))
            button->setChecked(true);
        for (QComboBox* combo : combos(page->c))
            combo->setCurrentIndex(combo->count() - 1);
        page->c.gamma->setValue(30);
        page->c.horizontal->setChecked(true);
        page->logic.setRotation(Side::Front, 2);
        page->logic.doubleRotateState();
        page->logic.setDefaults();

        QStringList checked;
        for (const QAbstractButton* button : switches(page->c))
            if (button->isChecked())
                checked << button->text();
        QCOMPARE(checked, (QStringList{"自动密集", "自动匡正"}));
        QCOMPARE(page->c.source->currentIndex(), 1);
        QCOMPARE(page->c.paperSize->currentIndex(), 1);
        QCOMPARE(page->c.colorMode->currentIndex(), 2);
        QCOMPARE(page->c.resolution->currentIndex(), 3);
        QCOMPARE(page->c.resolutionText->text(), QString("300"));
        QVERIFY(!page->c.resolutionText->isEnabled());
        QCOMPARE(page->c.lightness->value(), 15);
        QCOMPARE(page->c.contrast->value(), 35);
        QCOMPARE(page->c.gamma->value(), 120);
        QVERIFY(page->c.front->isChecked());
        QVERIFY(page->c.vertical->isChecked());
        QVERIFY(page->logic.isAutoRotate());
        QCOMPARE(page->c.frontRotation->text(), QStringLiteral("正面旋转0°"));
    }
}

void TestScanPage::roundTrip_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<bool>("scanPage");
    QTest::newRow("scan page") << "Scan_Scan" << true;
    QTest::newRow("file page") << "File_Scan" << false;
}

void TestScanPage::roundTrip()
{
    QFETCH(QString, group);
    QFETCH(bool, scanPage);
    MainForm before;
    MainForm after;
    PageUnderTest& page = scanPage ? *before.scan : *before.file;
    PageUnderTest& copy = scanPage ? *after.scan : *after.file;
    for (int pass = 0; pass < 2; ++pass) { // every control away from its default, then another way
        page.logic.setDefaults();
        for (QComboBox* combo : combos(page.c))
            combo->setCurrentIndex(qMax(0, combo->count() - 1 - pass));
        page.c.colorFormat->setCurrentIndex(1 + pass);
        page.c.source->setCurrentIndex(3 - pass);
        if (pass == 0)
            page.c.resolutionText->setText("240");
        for (QAbstractButton* button : switches(page.c))
            button->setChecked(button->isChecked() == (pass == 1));
        page.c.lightness->setValue(-33);
        page.c.contrast->setValue(12 + pass);
        page.c.gamma->setValue(87 + pass);
        (pass == 0 ? page.c.horizontal : page.c.vertical)->setChecked(true);
        page.logic.setRotation(Side::Front, 1 + pass);
        page.logic.setRotation(Side::Back, 3);
        page.logic.cancelAutoRotateState();
        page.c.delBlank->setEnabled(pass == 1);
        page.logic.settingsLoaded();

        auto file = fresh(group);
        page.settings.write(*file);
        file->endGroup();
        QVERIFY(saveSettings(*file));
        copy.settings.read(*fresh(group));
        QCOMPARE(state(copy), state(page));
    }
    const auto file = fresh(group);
    for (const Setting& setting : table(group).settings)
        if (setting.inFactoryFile && group == QLatin1String("Scan_Scan"))
            QVERIFY2(file->contains(setting.key), setting.key);
    QCOMPARE(file->value(keys::gamma).toDouble(), 0.88);
    QCOMPARE(file->value(keys::resolutionText).toString(), QString("600"));
    QCOMPARE(file->value(keys::pageSetFrontText).toInt(), 2);
    QCOMPARE(file->value(keys::pageSetBack).toString(), QString("true"));
}

void TestScanPage::missingAndBadValues()
{
    MainForm form;
    PageUnderTest& page = *form.scan;
    page.settings.read(*fresh("Scan_Scan")); // nothing stored: everything off
    QCOMPARE(page.c.source->currentIndex(), 0);
    QVERIFY(!page.c.autoCut->isChecked());
    QCOMPARE(page.c.lightness->value(), 0);
    QCOMPARE(page.c.gamma->value(), 100);
    QVERIFY(page.c.delBlank->isEnabled());
    QVERIFY(page.c.vertical->isChecked());
    QVERIFY(page.logic.isAutoRotate());

    const QVector<QPair<const char*, QVariant>> bad = {
        {keys::scanMode, 3},          {keys::paperSize, 99},          {keys::scanType, -1},
        {keys::resolution, "abc"},    {keys::lightness, 5000},        {keys::contrast, "1e3"},
        {keys::gamma, "nan"},         {keys::autoCrowed, "maybe"},    {keys::filter, QStringList{"a", "b"}},
        {keys::pageSetFrontText, 12}, {keys::selfResolution, "99999"}};
    {
        const auto file = fresh("Scan_Scan");
        for (const auto& [key, value] : bad)
            file->setValue(key, value);
    }
    page.settings.read(*fresh("Scan_Scan"));
    QCOMPARE(page.c.colorMode->currentIndex(), 2);
    QCOMPARE(page.c.paperSize->currentIndex(), 5);
    QCOMPARE(page.c.source->currentIndex(), 1);
    QCOMPARE(page.c.resolution->currentIndex(), 3);
    QCOMPARE(page.c.lightness->value(), 15);
    QCOMPARE(page.c.contrast->value(), 35);
    QCOMPARE(page.c.gamma->value(), 120);
    QVERIFY(page.c.autoCrowed->isChecked());
    QCOMPARE(page.c.filter->currentIndex(), 0);
    QCOMPARE(page.logic.rotation(Side::Front), 0);
    QCOMPARE(page.logic.customResolutionText(), QString("300"));
}

// Enabled states: stored where nothing else decides, by the page's rules elsewhere.
void TestScanPage::storedStates()
{
    MainForm form;
    PageUnderTest& page = *form.scan;
    {
        const auto file = fresh("Scan_Scan");
        file->setValue(keys::scanType, 3);
        file->setValue(keys::combine, true);
        file->setValue(keys::hRBtn, true);
        file->setValue(keys::horizontalState, false); // from a time without merging
        file->setValue(keys::delBlank, true);
        file->setValue(keys::delBlankState, false);
        file->setValue(keys::pageSetBack, true);
        file->setValue(keys::pageSetBackText, 2);
        file->setValue(keys::fileColor, 1);
        file->setValue(keys::scanMode, 2);
        file->setValue(keys::fileType, 3);
    }
    page.settings.read(*fresh("Scan_Scan"));
    QVERIFY(ScanPageLogic::isOn(page.c.combine));
    QVERIFY(ScanPageLogic::isOn(page.c.horizontal));
    QVERIFY(!ScanPageLogic::isOn(page.c.delBlank));
    QVERIFY(!page.c.frontRotation->isEnabled());
    QVERIFY(page.c.backRotation->isEnabled());
    QCOMPARE(page.c.backRotation->text(), QStringLiteral("反面旋转180°"));
    QVERIFY(page.c.handAdjust->isChecked());
    QCOMPARE(page.logic.fileFormat(), 1);
    QCOMPARE(page.c.fileType->currentIndex(), 1);

    fresh("Scan_Scan")->setValue(keys::combine, false);
    page.settings.read(*fresh("Scan_Scan"));
    QVERIFY(!page.c.horizontal->isEnabled());
}

QTEST_MAIN(TestScanPage)
#include "tst_scanpage.moc"
