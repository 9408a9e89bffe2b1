// SPDX-License-Identifier: GPL-3.0-or-later
#include "driving.h"
#include "forms/prefixdialog.h"
#include "forms/rotateset.h"

class SmallDialogsTest : public QObject
{
    Q_OBJECT

private slots:
    void onlyScannedSidesAreOffered()
    {
        for (const ScanSides sides : {ScanSides::Front, ScanSides::Back}) {
            RotateSet dialog({false, 1, 2}, sides);
            open(dialog);
            QCOMPARE(control<QWidget>(dialog, "frontGroup")->isVisible(), sides == ScanSides::Front);
            QCOMPARE(control<QWidget>(dialog, "backGroup")->isVisible(), sides == ScanSides::Back);
            QCOMPARE(dialog.choice().front, 1);
            QCOMPARE(dialog.choice().back, 2);
        }
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
};

QTEST_MAIN(SmallDialogsTest)
#include "tst_smalldialogs.moc"
