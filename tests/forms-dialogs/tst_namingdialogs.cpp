// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "config/paths.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "driving.h"
#include "forms/append.h"
#include "forms/filenameset.h"
#include "forms/prefixdialog.h"
#include "forms/saveset.h"
#include "output/savefolder.h"

#include <QSpinBox>

static QString stored(const char* group, const QString& key)
{
    // read by other means than the product's
    QSettings file(paths::mainSettings(), QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    return file.value(QLatin1String(group) + QLatin1Char('/') + key).toString();
}

static QString nextName(const QWidget& dialog)
{
    return control<QLabel>(dialog, "nextNameLabel")->text();
}

class NamingDialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(freshRoot()); }

    void enabledStatesAreStored()
    {
        fileNameSet dialog("Scan_Scan");
        open(dialog);
        click(dialog, "dateAndtimeCheckBox");
        click(dialog, "usrRadioButton");
        click(dialog, "usrDefineCheckBox");
        press(dialog, QDialogButtonBox::Ok);
        for (const char* used : {"yearState", "separatorState", "systemState", "startState"})
            QCOMPARE(stored("Scan_Scan", used), QString("true"));
        QCOMPARE(stored("Scan_Scan", "finishStarAppNameState"), QString("false"));
        QCOMPARE(stored("File_Scan", "name"), QString());
    }

    void previewIsTheNextName()
    {
        saveSet dialog("Scan_Scan", "Scan_Scan_FilePath");
        open(dialog);
        QCOMPARE(nextName(dialog), QString("image"));
        pick(dialog, "saveFileComboBox", "前缀和编号");
        type(dialog, "nameEdit", "page-");
        control<QSpinBox>(dialog, "lengthSpinBox")->setValue(3);
        inModal<fileNameSet>([](fileNameSet& names) {
            type(names, "startEdit", "7");
            click(names, "messgBoxCheckBox");
            press(names, QDialogButtonBox::Ok);
        });
        click(dialog, "fileNameButton");
        QCOMPARE(nextName(dialog), QString("page-007"));
        QCOMPARE(stored("Scan_Scan", "messgBox"), QString("true"));
        press(dialog, QDialogButtonBox::Ok);
        QCOMPARE(takeImageName("Scan_Scan", false), nextName(dialog));
        QCOMPARE(nextName(saveSet("Scan_Scan", "Scan_Scan_FilePath")), QString("page-008"));
    }

    void datesAreDistinctAndGoOn()
    {
        fileNameSet dialog("Scan_Scan");
        open(dialog);
        click(dialog, "dateAndtimeCheckBox");
        click(dialog, "usrRadioButton");
        for (const char* place : {"yearComboBox", "monthComboBox", "dateComboBox"}) {
            for (const char* field : {"yyyy", "mm", "dd"}) {
                pick(dialog, place, field);
                const NamingRules rules = dialog.rules();
                QCOMPARE((QSet<int>{rules.order[0], rules.order[1], rules.order[2]}), (QSet<int>{0, 1, 2}));
            }
        }
        const QString first = nextName(dialog);
        QTRY_VERIFY(nextName(dialog) != first); // the clock goes on while the dialog is open
    }

    void badInputIsRefused()
    {
        fileNameSet dialog("Scan_Scan");
        open(dialog);
        click(dialog, "usrDefineCheckBox");
        for (const QString& bad :
             {QString("a/b"), QString("a\tb"), QString(".hidden"), QString(100, QChar(0x5408))}) {
            control<QLineEdit>(dialog, "nameEdit")->setText(bad);
            press(dialog, QDialogButtonBox::Ok);
            QVERIFY2(dialog.isVisible() && !message(dialog).isEmpty(), qPrintable(bad));
            QCOMPARE(QApplication::focusWidget()->objectName(), QString("nameEdit"));
        }
        type(dialog, "nameEdit", "good");
        QVERIFY(message(dialog).isEmpty());
        type(dialog, "startEdit", "-1x2");
        QCOMPARE(control<QLineEdit>(dialog, "startEdit")->text(), QString("12"));
        type(dialog, "startEdit", "");
        press(dialog, QDialogButtonBox::Ok);
        QVERIFY(dialog.isVisible() && stored("Scan_Scan", "name").isEmpty());
        click(dialog, "usrDefineCheckBox"); // what cannot be used is not in the way
        press(dialog, QDialogButtonBox::Ok);
        QVERIFY(!dialog.isVisible());
    }

    void folderIsStoredAndMade()
    {
        const QString folder = installRoot() + "文件/2026";
        saveSet dialog("File_Scan", "File_Scan_FilePath");
        open(dialog);
        QCOMPARE(dialog.folder(), defaultSaveFolder());
        type(dialog, "folderEdit", folder + "/");
        press(dialog, QDialogButtonBox::Ok);
        QVERIFY2(!dialog.isVisible(), qPrintable(message(dialog)));
        QVERIFY(QFileInfo(folder).isDir());

        saveSet again("File_Scan", "File_Scan_FilePath");
        open(again);
        QCOMPARE(again.folder(), folder);
        click(again, "defaultButton");
        press(again, QDialogButtonBox::Ok);
        QCOMPARE(storedSaveFolder("File_Scan_FilePath"), defaultSaveFolder());
    }

    void unusableFolderIsWarnedAbout()
    {
        const QString file = installRoot() + "a-file";
        QVERIFY(putFile(file, ""));
        saveSet dialog("Scan_Scan", "Scan_Scan_FilePath");
        open(dialog);
        for (const QString& refused : {QString("relative"), file}) {
            type(dialog, "folderEdit", refused);
            press(dialog, QDialogButtonBox::Ok);
            press(dialog, QDialogButtonBox::Ok);
            QVERIFY2(dialog.isVisible() && !message(dialog).isEmpty(), qPrintable(refused));
        }
        type(dialog, "folderEdit", "/proc/nothing/here");
        press(dialog, QDialogButtonBox::Ok);
        QVERIFY2(message(dialog).contains("/proc/nothing/here"), qPrintable(message(dialog)));
        press(dialog, QDialogButtonBox::Ok);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(storedSaveFolder("Scan_Scan_FilePath"), QString("/proc/nothing/here"));
    }

    void prefixes()
    {
        NamingRules rules;
        rules.userDefined = true;
        rules.prefix = "image";
        rules.start = "7";
        rules.digits = 3;
        PrefixDialog dialog(PrefixDialog::Moment::BeforeBatch, rules);
        open(dialog);
        QTest::keyClicks(QApplication::focusWidget(), "bill"); // replaces the selected text at once
        QCOMPARE(control<QLabel>(dialog, "nameLabel")->text(), QString("bill007"));
        QTest::keyClicks(QApplication::focusWidget(), "/");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(dialog.isVisible() && !message(dialog).isEmpty());
        checkReachable(dialog);
        type(dialog, "prefixEdit", "bill");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.prefix(), QString("bill"));

        PrefixDialog after(PrefixDialog::Moment::AfterBatch, rules);
        open(after);
        QVERIFY(!control<QWidget>(after, "nameLabel")->isVisible()); // the files have their numbers already
    }

    void applicationsOfThePdfFunction()
    {
        QVERIFY(control<QWidget>(fileNameSet("Scan_Scan"), "appendAppButton")->isHidden());
        fileNameSet dialog("File_PDF");
        open(dialog);
        click(dialog, "finishStarAppCheckBox");
        inModal<append>([](append& entry) {
            type(entry, "nameEdit", "Lister");
            type(entry, "programEdit", "ls");
            press(entry, QDialogButtonBox::Ok);
        });
        click(dialog, "appendAppButton");
        press(dialog, QDialogButtonBox::Ok);
        QCOMPARE(stored("File_PDF", "appName"), QString("Lister"));
        QCOMPARE(applicationCommand(readApplications(*openMainSettings(), "File_PDF_app"), "Lister"),
                 QString("ls"));
    }
};

QTEST_MAIN(NamingDialogsTest)
#include "tst_namingdialogs.moc"
