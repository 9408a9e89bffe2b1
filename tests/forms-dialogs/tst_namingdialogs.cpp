// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "config/paths.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "driving.h"
#include "forms/append.h"
#include "forms/filenameset.h"
#include "forms/saveset.h"
#include "output/savefolder.h"

#include <QSpinBox>

class NamingDialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(freshRoot()); }
    void fixedTexts();
    void namesAreStored();
    void cancelStoresNothing();
    void previewIsTheNextName();
    void stampPreview();
    void dateFieldsStayDistinct();
    void badInputIsRefused();
    void folderIsStoredAndMade();
    void unusableFolderIsWarnedAbout();
    void fileNamesFromTheSaveDialog();
    void groupsDoNotMix();
    void applicationsOfThePdfFunction();
    void keyboard();
};

static QVariant stored(const char* group, const char* key)
{
    // read by other means than the product's
    QSettings file(paths::mainSettings(), QSettings::IniFormat);
    file.setIniCodec("UTF-8");
    return file.value(QLatin1String(group) + QLatin1Char('/') + QLatin1String(key));
}

static QString nextName(const QWidget& dialog)
{
    return control<QLabel>(dialog, "nextNameLabel")->text();
}

void NamingDialogsTest::fixedTexts()
{
    fileNameSet dialog("Scan_Scan");
    QCOMPARE(dialog.windowTitle(), QString("文件名设置"));
    QStringList texts;
    for (const auto* label : dialog.findChildren<QLabel*>())
        texts << label->text();
    for (const auto* button : dialog.findChildren<QAbstractButton*>())
        texts << button->text();
    for (const char* text :
         {"日期和时间", "使用操作系统设置", "用户定义:", "(例如：年=yyyy/yy，月=mm，日=dd)",
          "分隔符:", "24小时制", "自定义", "前缀:", "起始:", "位数:", "覆盖相同名称的文件",
          "每次扫描后显示确认文件前置文件名对话框", "跳出提示对话框以确认文件的前缀名", "扫描完成后开启程序"})
        QVERIFY2(texts.contains(QString::fromUtf8(text)), text);
}

void NamingDialogsTest::namesAreStored()
{
    fileNameSet dialog("Scan_Scan");
    open(dialog);
    click(dialog, "dateAndtimeCheckBox");
    click(dialog, "usrRadioButton");
    pick(dialog, "yearComboBox", "dd");
    pick(dialog, "separatorComboBox", ".");
    click(dialog, "timeTypeCheckBox");
    click(dialog, "usrDefineCheckBox");
    type(dialog, "nameEdit", "合同");
    type(dialog, "startEdit", "41");
    control<QSpinBox>(dialog, "lengthSpinBox")->setValue(4);
    click(dialog, "coverCheckBox");
    click(dialog, "messgBoxCheckBox");
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));

    // stepping from yyyy over mm to dd exchanged the first field twice: dd, yyyy, mm
    const std::pair<const char*, const char*> expected[] = {
        {"dateAndtime", "true"}, {"system", "false"},
        {"usr", "true"},         {"year", "2"},
        {"month", "0"},          {"date", "1"},
        {"separator", "2"},      {"timeType", "false"},
        {"usrDefine", "true"},   {"name", "合同"},
        {"start", "41"},         {"length", "4"},
        {"cover", "true"},       {"showConfirmBox", "false"},
        {"messgBox", "true"},    {"finishStarApp", "false"},
        {"yearState", "true"},   {"systemState", "true"},
        {"startState", "true"},  {"finishStarAppNameState", "false"}};
    for (const auto& [key, value] : expected)
        QCOMPARE(stored("Scan_Scan", key).toString(), QString::fromUtf8(value));

    fileNameSet again("Scan_Scan");
    open(again);
    click(again, "dateAndtimeCheckBox");
    click(again, "usrDefineCheckBox");
    QVERIFY(!control<QWidget>(again, "nameEdit")->isEnabled());
    press(again, QDialogButtonBox::Ok);
    for (const char* key : {"yearState", "monthState", "dateState", "separatorState", "systemState",
                            "usrState", "timeTypeState", "nameState", "startState", "lengthState"})
        QCOMPARE(stored("Scan_Scan", key).toString(), QString("false"));
    QCOMPARE(stored("Scan_Scan", "name").toString(), QString("合同"));
}

void NamingDialogsTest::cancelStoresNothing()
{
    saveSet dialog("Scan_Scan", "Scan_Scan_FilePath");
    open(dialog);
    type(dialog, "folderEdit", installRoot() + "elsewhere");
    pick(dialog, "saveFileComboBox", "前缀和编号");
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    QVERIFY(!stored("Scan_Scan", "usrDefine").isValid());
    QVERIFY(!QFileInfo::exists(installRoot() + "elsewhere"));
}

void NamingDialogsTest::previewIsTheNextName()
{
    saveSet dialog("Scan_Scan", "Scan_Scan_FilePath");
    open(dialog);
    QCOMPARE(nextName(dialog), QString("image"));
    pick(dialog, "saveFileComboBox", "前缀和编号");
    QCOMPARE(nextName(dialog), QString("image1"));
    type(dialog, "nameEdit", "page-");
    type(dialog, "startEdit", "7");
    control<QSpinBox>(dialog, "lengthSpinBox")->setValue(3);
    const QString shown = nextName(dialog);
    QCOMPARE(shown, QString("page-007"));
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(takeImageName("Scan_Scan", false), shown);
    QCOMPARE(stored("Scan_Scan", "start").toString(), QString("8"));
    QCOMPARE(stored("Scan_Scan", "saveFile").toInt(), 1);
    saveSet after("Scan_Scan", "Scan_Scan_FilePath");
    QCOMPARE(nextName(after), QString("page-008"));
}

void NamingDialogsTest::stampPreview()
{
    fileNameSet dialog("Scan_Scan");
    open(dialog);
    click(dialog, "dateAndtimeCheckBox");
    click(dialog, "usrRadioButton");
    pick(dialog, "separatorComboBox", "-");
    const QString year = QString::number(QDate::currentDate().year());
    QVERIFY2(nextName(dialog).startsWith(year + "-"), qPrintable(nextName(dialog)));
    QCOMPARE(nextName(dialog).count('-'), 6);
    const QString first = nextName(dialog);
    QTRY_VERIFY(nextName(dialog) != first); // the clock goes on while the dialog is open
}

void NamingDialogsTest::dateFieldsStayDistinct()
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
}

void NamingDialogsTest::badInputIsRefused()
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
    QVERIFY(dialog.isVisible());
    QVERIFY(!stored("Scan_Scan", "name").isValid());
    click(dialog, "usrDefineCheckBox"); // what cannot be used is not in the way
    press(dialog, QDialogButtonBox::Ok);
    QVERIFY(!dialog.isVisible());
}

void NamingDialogsTest::folderIsStoredAndMade()
{
    const QString folder = installRoot() + "文件/2026";
    saveSet dialog("File_Scan", "File_Scan_FilePath");
    open(dialog);
    QCOMPARE(control<QLineEdit>(dialog, "folderEdit")->text(), defaultSaveFolder());
    type(dialog, "folderEdit", folder + "/");
    press(dialog, QDialogButtonBox::Ok);
    QVERIFY2(!dialog.isVisible(), qPrintable(message(dialog)));
    QVERIFY(QFileInfo(folder).isDir());
    QCOMPARE(storedSaveFolder("File_Scan_FilePath"), folder);

    saveSet again("File_Scan", "File_Scan_FilePath");
    open(again);
    QCOMPARE(again.folder(), folder);
    click(again, "defaultButton");
    press(again, QDialogButtonBox::Ok);
    QCOMPARE(storedSaveFolder("File_Scan_FilePath"), defaultSaveFolder());
}

void NamingDialogsTest::unusableFolderIsWarnedAbout()
{
    const QString file = installRoot() + "a-file";
    QFile(file).open(QIODevice::WriteOnly);
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
    QVERIFY(dialog.isVisible());
    QVERIFY2(message(dialog).contains("/proc/nothing/here"), qPrintable(message(dialog)));
    press(dialog, QDialogButtonBox::Ok);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(storedSaveFolder("Scan_Scan_FilePath"), QString("/proc/nothing/here"));
}

void NamingDialogsTest::fileNamesFromTheSaveDialog()
{
    saveSet dialog("Scan_Scan", "Scan_Scan_FilePath");
    open(dialog);
    pick(dialog, "saveFileComboBox", "前缀和编号");
    type(dialog, "nameEdit", "from-save-");
    inModal<fileNameSet>([](fileNameSet& names) {
        QCOMPARE(control<QLineEdit>(names, "nameEdit")->text(), QString("from-save-"));
        type(names, "startEdit", "500");
        click(names, "messgBoxCheckBox");
        press(names, QDialogButtonBox::Ok);
    });
    click(dialog, "fileNameButton");
    QCOMPARE(nextName(dialog), QString("from-save-500"));
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(stored("Scan_Scan", "messgBox").toString(), QString("true"));
    QCOMPARE(takeImageName("Scan_Scan", false), QString("from-save-500"));
}

void NamingDialogsTest::groupsDoNotMix()
{
    for (const char* group : {"Scan_Scan", "File_Scan", "File_PDF"}) {
        fileNameSet dialog(group);
        open(dialog);
        click(dialog, "usrDefineCheckBox");
        type(dialog, "nameEdit", group);
        press(dialog, QDialogButtonBox::Ok);
    }
    for (const char* group : {"Scan_Scan", "File_Scan", "File_PDF"})
        QCOMPARE(stored(group, "name").toString(), QString(group));
}

void NamingDialogsTest::applicationsOfThePdfFunction()
{
    fileNameSet image("Scan_Scan");
    QVERIFY(control<QWidget>(image, "appendAppButton")->isHidden());

    fileNameSet dialog("File_PDF");
    open(dialog);
    click(dialog, "finishStarAppCheckBox");
    inModal<append>([](append& entry) {
        type(entry, "nameEdit", "Lister");
        type(entry, "programEdit", "ls");
        press(entry, QDialogButtonBox::Ok);
    });
    click(dialog, "appendAppButton");
    QCOMPARE(dialog.rules().appName, QString("Lister"));
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(stored("File_PDF", "appName").toString(), QString("Lister"));
    QCOMPARE(applicationCommand(readApplications(*openMainSettings(), "File_PDF_app"), "Lister"),
             QString("ls"));

    fileNameSet again("File_PDF");
    open(again);
    click(again, "delAppButton");
    QVERIFY(readApplications(*openMainSettings(), "File_PDF_app").empty());
    QCOMPARE(again.rules().appName, QString());
}

void NamingDialogsTest::keyboard()
{
    fileNameSet names("Scan_PDF");
    open(names);
    for (const char* button :
         {"dateAndtimeCheckBox", "usrRadioButton", "usrDefineCheckBox", "finishStarAppCheckBox"})
        click(names, button);
    checkReachable(names);
    QTest::keyClick(&names, Qt::Key_Z, Qt::AltModifier);
    QVERIFY(!names.rules().userDefined);
    names.hide();

    saveSet save("Scan_Scan", "Scan_Scan_FilePath");
    open(save);
    pick(save, "saveFileComboBox", "前缀和编号");
    checkReachable(save);
}

QTEST_MAIN(NamingDialogsTest)
#include "tst_namingdialogs.moc"
