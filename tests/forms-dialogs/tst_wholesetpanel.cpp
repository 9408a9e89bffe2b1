// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"
#include "config/freshroot.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "driving.h"
#include "forms/wholesetpanel.h"

#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>

class WholeSetTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void factoryValuesAreShown();
    void valuesAreStored();
    void cancelStoresNothing();
    void otherKeysAreKept();
    void badValues();
    void settingsThatCannotBeWritten();
    void keyboard();

private:
    static QVariantList shown(const QWidget& dialog)
    {
        QVariantList values;
        for (const char* name : {"delValue", "enhanceValue", "delBlank"})
            values << control<QSlider>(dialog, name)->value();
        values << control<QSpinBox>(dialog, "splitCount")->value();
        for (const char* name : {"longShortRotate", "fGrayDpi", "fWBDpi"})
            values << control<QComboBox>(dialog, name)->currentIndex();
        return values;
    }
    static QVariantList stored()
    {
        const auto settings = openMainSettings();
        const GroupScope scope(*settings, groups::wholeSet);
        QVariantList values;
        for (const char* key : {keys::delValue, keys::enhanceValue, keys::delBlank, keys::splitCount,
                                keys::longShortRotate, keys::fGrayDpi, keys::fWBDpi})
            values << readInt(*settings, key);
        return values;
    }
};

void WholeSetTest::init()
{
    QVERIFY(freshRoot());
    QVERIFY(ensureFactorySettings());
}

void WholeSetTest::factoryValuesAreShown()
{
    wholesetpanel dialog;
    QCOMPARE(dialog.windowTitle(), QString("整体设定"));
    QCOMPARE(shown(dialog), QVariantList({5, 5, 8, 2, 0, 2, 2}));
}

void WholeSetTest::valuesAreStored()
{
    wholesetpanel dialog;
    QSignalSpy written(&dialog, &wholesetpanel::settingsWritten);
    open(dialog);
    QTest::keyClick(control<QSlider>(dialog, "delValue"), Qt::Key_End);
    QTest::keyClick(control<QSlider>(dialog, "enhanceValue"), Qt::Key_Home);
    QCOMPARE(control<QLabel>(dialog, "enhanceValueValueLabel")->text(), QString("0（关）"));
    QTest::keyClick(control<QSlider>(dialog, "delBlank"), Qt::Key_Right);
    control<QSpinBox>(dialog, "splitCount")->setValue(12);
    control<QComboBox>(dialog, "longShortRotate")->setCurrentIndex(1);
    pick(dialog, "fGrayDpi", "100 dpi");
    pick(dialog, "fWBDpi", "600 dpi");
    press(dialog, QDialogButtonBox::Apply);
    QVERIFY(dialog.isVisible());
    QCOMPARE(stored(), QVariantList({10, 0, 9, 12, 1, 0, 3}));
    QTest::keyClick(control<QSlider>(dialog, "delBlank"), Qt::Key_End);
    press(dialog, QDialogButtonBox::Ok);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(stored(), QVariantList({10, 0, 15, 12, 1, 0, 3}));
    QCOMPARE(written.size(), 2);
    QCOMPARE(shown(wholesetpanel()), stored());
}

void WholeSetTest::cancelStoresNothing()
{
    wholesetpanel dialog;
    open(dialog);
    control<QSlider>(dialog, "delValue")->setValue(1);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(stored().first().toInt(), 5);
    QCOMPARE(shown(dialog).first().toInt(), 5);

    { // a template that was loaded while the dialog was closed
        const auto settings = openMainSettings();
        settings->setValue("wholeSet/delValue", 3);
        QVERIFY(saveSettings(*settings));
    }
    open(dialog);
    QCOMPARE(shown(dialog).first().toInt(), 3);
}

void WholeSetTest::otherKeysAreKept()
{
    {
        const auto settings = openMainSettings();
        settings->setValue("wholeSet/imgMendUp", 2.5);
        settings->setValue("wholeSet/ofALaterVersion", "x");
        QVERIFY(saveSettings(*settings));
    }
    wholesetpanel dialog;
    QVERIFY(dialog.writeIni());
    const auto settings = openMainSettings();
    QCOMPARE(settings->value("wholeSet/imgMendUp").toDouble(), 2.5);
    QCOMPARE(settings->value("wholeSet/ofALaterVersion").toString(), QString("x"));
    QCOMPARE(settings->value("wholeSet/sleeptime").toInt(), 15);
}

void WholeSetTest::badValues()
{
    QFile::remove(paths::mainSettings());
    QVERIFY(putFile(paths::mainSettings(), "[wholeSet]\ndelValue=99\nenhanceValue=strong\ndelBlank=16\n"
                                           "splitCount=0\nlongShortRotate=2\nfGrayDpi=77\nfWBDpi=-1\n"));
    const wholesetpanel dialog;
    QCOMPARE(shown(dialog), QVariantList({5, 5, 8, 2, 0, 3, 2}));
}

void WholeSetTest::settingsThatCannotBeWritten()
{
    if (!ordinaryUserSeesRoot())
        QSKIP("an ordinary user cannot enter the build folder");
    QVERIFY(QFile::setPermissions(installRoot(),
                                  QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther));
    QFile::setPermissions(paths::mainSettings(), QFile::ReadOwner | QFile::ReadOther);
    const int result = asOrdinaryUser([] {
        wholesetpanel dialog;
        dialog.show();
        dialog.accept();
        return dialog.isVisible() && !message(dialog).isEmpty() ? 1 : 2;
    });
    QFile::setPermissions(installRoot(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QCOMPARE(result, 1);
}

void WholeSetTest::keyboard()
{
    wholesetpanel dialog;
    open(dialog);
    checkReachable(dialog);
    for (const char* name : {"delValue", "enhanceValue", "delBlank"}) {
        auto* face = QAccessible::queryAccessibleInterface(control<QSlider>(dialog, name));
        QVERIFY2(face && !face->text(QAccessible::Name).isEmpty(), name);
    }
    QTest::keyClick(&dialog, Qt::Key_K, Qt::AltModifier);
    QCOMPARE(QApplication::focusWidget()->objectName(), QString("delBlank"));
}

QTEST_MAIN(WholeSetTest)
#include "tst_wholesetpanel.moc"
