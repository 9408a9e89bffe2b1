// SPDX-License-Identifier: GPL-3.0-or-later
#include "driving.h"
#include "forms/append.h"
#include "forms/prefixdialog.h"
#include "forms/rotateset.h"

#include <QTemporaryDir>

class SmallDialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void turnsAreChosen();
    void onlyScannedSidesAreOffered();
    void applicationIsEntered();
    void applicationIsChanged();
    void badApplicationsAreRefused();
    void programWithBlanks();
    void prefixBeforeABatch();
    void prefixAfterABatch();
    void keyboard();
};

void SmallDialogsTest::turnsAreChosen()
{
    RotateSet dialog(RotationChoice(), ScanSides::Both);
    open(dialog);
    QVERIFY(!control<QWidget>(dialog, "frontTurn1")->isEnabled());
    click(dialog, "fixedButton");
    click(dialog, "frontTurn1");
    click(dialog, "backTurn3");
    press(dialog, QDialogButtonBox::Ok);
    const RotationChoice choice = dialog.choice();
    QVERIFY(!choice.automatic);
    QCOMPARE(choice.front, 1);
    QCOMPARE(choice.back, 3);
    QCOMPARE(choice.frontText(), QString("正面左转90°"));
    QCOMPARE(choice.backText(), QString("反面右转90°"));
    const RotationChoice upsideDown{false, 2, 2};
    QCOMPARE(upsideDown.frontText() + upsideDown.backText(), QString("正面旋转180°反面旋转180°"));
    QCOMPARE((RotationChoice{false, -5, 99}).backText(), QString("反面右转90°"));

    RotateSet again(choice, ScanSides::Both);
    open(again);
    click(again, "automaticButton");
    QVERIFY(again.choice().automatic);
    QCOMPARE(again.choice().front, 1); // kept for the next time
}

void SmallDialogsTest::onlyScannedSidesAreOffered()
{
    RotateSet front({false, 0, 2}, ScanSides::Front);
    open(front);
    QVERIFY(control<QWidget>(front, "frontGroup")->isVisible());
    QVERIFY(!control<QWidget>(front, "backGroup")->isVisible());
    QCOMPARE(front.choice().back, 2);
    RotateSet back({false, 0, 2}, ScanSides::Back);
    open(back);
    QVERIFY(!control<QWidget>(back, "frontGroup")->isVisible());
    QVERIFY(control<QWidget>(back, "backGroup")->isVisible());
}

void SmallDialogsTest::applicationIsEntered()
{
    append dialog(AppEntry(), {"MS Paint"});
    open(dialog);
    type(dialog, "nameEdit", " 查看器 ");
    type(dialog, "programEdit", "ls");
    type(dialog, "argumentsEdit", "-l \"two words\"");
    press(dialog, QDialogButtonBox::Ok);
    QVERIFY2(!dialog.isVisible(), qPrintable(message(dialog)));
    QCOMPARE(dialog.entry().text, QString("查看器"));
    QCOMPARE(dialog.entry().command, QString("ls -l \"two words\""));

    append plain(AppEntry(), {});
    open(plain);
    type(plain, "nameEdit", "default");
    press(plain, QDialogButtonBox::Ok);
    QVERIFY(!plain.isVisible()); // no program: the desktop's default
    QCOMPARE(plain.entry().command, QString());
}

void SmallDialogsTest::applicationIsChanged()
{
    append dialog({"List", "ls -l \"two words\" %f"}, {});
    open(dialog);
    QCOMPARE(control<QLineEdit>(dialog, "programEdit")->text(), QString("ls"));
    type(dialog, "nameEdit", "Other");
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(dialog.entry().text, QString("Other"));
    QCOMPARE(dialog.entry().command, QString("ls -l \"two words\" %f"));
}

void SmallDialogsTest::badApplicationsAreRefused()
{
    const struct
    {
        QString name, program, arguments;
    } bad[] = {{"", "ls", ""},
               {"MS Paint", "ls", ""},
               {"x", "/nowhere/at/all", ""},
               {"x", "no-such-command-here", ""},
               {"x", "/etc/passwd", ""},
               {"x", "bin/ls", ""},
               {"x", "", "-l"},
               {"x", "ls", "\"open"},
               {"x", "ls", "a\x01"}};
    for (const auto& entry : bad) {
        append dialog(AppEntry(), {"MS Paint"});
        open(dialog);
        control<QLineEdit>(dialog, "nameEdit")->setText(entry.name);
        control<QLineEdit>(dialog, "programEdit")->setText(entry.program);
        control<QLineEdit>(dialog, "argumentsEdit")->setText(entry.arguments);
        press(dialog, QDialogButtonBox::Ok);
        QVERIFY2(dialog.isVisible() && !message(dialog).isEmpty(),
                 qPrintable(entry.name + "|" + entry.program + "|" + entry.arguments));
    }
}

void SmallDialogsTest::programWithBlanks()
{
    QTemporaryDir folder;
    const QString program = folder.path() + "/my $pro\"gram";
    QFile file(program);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    file.close();
    append dialog(AppEntry(), {});
    open(dialog);
    type(dialog, "nameEdit", "odd");
    type(dialog, "programEdit", program);
    type(dialog, "argumentsEdit", "-x");
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(dialog.entry().command, "\"" + folder.path() + "/my \\$pro\\\"gram\" -x");
    append again(dialog.entry(), {});
    QCOMPARE(control<QLineEdit>(again, "programEdit")->text(), program);
    QCOMPARE(control<QLineEdit>(again, "argumentsEdit")->text(), QString("-x"));
}

static NamingRules counted()
{
    NamingRules rules;
    rules.userDefined = true;
    rules.prefix = "image";
    rules.start = "7";
    rules.digits = 3;
    return rules;
}

void SmallDialogsTest::prefixBeforeABatch()
{
    PrefixDialog dialog(PrefixDialog::Moment::BeforeBatch, counted());
    open(dialog);
    QCOMPARE(control<QLabel>(dialog, "nameLabel")->text(), QString("image007"));
    QTest::keyClicks(QApplication::focusWidget(), "bill"); // replaces the selected text at once
    QCOMPARE(control<QLabel>(dialog, "nameLabel")->text(), QString("bill007"));
    QTest::keyClicks(QApplication::focusWidget(), "/");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(dialog.isVisible() && !message(dialog).isEmpty());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    type(dialog, "prefixEdit", "bill");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.prefix(), QString("bill"));
}

void SmallDialogsTest::prefixAfterABatch()
{
    PrefixDialog dialog(PrefixDialog::Moment::AfterBatch, counted());
    open(dialog);
    QVERIFY(!control<QWidget>(dialog, "nameLabel")->isVisible()); // the files have their numbers already
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
}

void SmallDialogsTest::keyboard()
{
    RotateSet turns({false, 0, 0}, ScanSides::Both);
    open(turns);
    checkReachable(turns);
    QTest::keyClick(&turns, Qt::Key_8, Qt::AltModifier);
    QCOMPARE(turns.choice().back, 3);
    turns.hide();
    append entry(AppEntry(), {});
    open(entry);
    checkReachable(entry);
    entry.hide();
    PrefixDialog prefix(PrefixDialog::Moment::BeforeBatch, counted());
    open(prefix);
    checkReachable(prefix);
}

QTEST_MAIN(SmallDialogsTest)
#include "tst_smalldialogs.moc"
