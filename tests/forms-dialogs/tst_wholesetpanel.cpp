// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"
#include "config/freshroot.h"
#include "config/settingsfile.h"
#include "driving.h"
#include "forms/beforeafter.h"
#include "forms/wholesetpanel.h"

#include <QCheckBox>
#include <QPainter>
#include <QSignalSpy>
#include <QSlider>
#include <QTabWidget>

class WholeSetTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(freshRoot());
        QVERIFY(ensureFactorySettings());
    }

    void applyingKeepsItOpenAndCancelTakesBack()
    {
        openMainSettings()->setValue("wholeSet/ofALaterVersion", "x");
        wholesetpanel dialog;
        QSignalSpy written(&dialog, &wholesetpanel::settingsWritten);
        open(dialog);
        auto* strength = control<QSlider>(dialog, "delValue");
        QTest::keyClick(strength, Qt::Key_End);
        QTest::keyClick(control<QSlider>(dialog, "enhanceValue"), Qt::Key_Home);
        QCOMPARE(control<QLabel>(dialog, "enhanceValueValueLabel")->text(), QString("0（关）"));
        press(dialog, QDialogButtonBox::Apply);
        QVERIFY(dialog.isVisible());
        QCOMPARE(openMainSettings()->value("wholeSet/delValue").toInt(), 10);
        strength->setValue(1);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        open(dialog);
        QCOMPARE(strength->value(), 10);
        QCOMPARE(written.size(), 1);
        QCOMPARE(openMainSettings()->value("wholeSet/ofALaterVersion").toString(), QString("x"));
    }

    void effectsAreShownOnTheLastPage()
    {
        QImage page(1240, 1748, QImage::Format_RGB888);
        page.fill(QColor(228, 224, 214));
        QPainter painter(&page);
        painter.fillRect(300, 300, 500, 14, QColor(70, 70, 70));
        painter.end();
        const QString scan = paths::tempFolder() + "zarnqwd200-0001.pnm";
        QVERIFY(page.save(scan, "PPM") && keepLastPage(scan, 300));
        wholesetpanel dialog;
        auto* preview = dialog.findChild<BeforeAfter*>();
        open(dialog);
        const auto corner = [](const QImage& picture) { return qGray(picture.pixel(5, 5)); };
        QTRY_VERIFY(!preview->after().isNull());
        QVERIFY(corner(preview->before()) < 230);
        QTest::keyClick(control<QSlider>(dialog, "delValue"), Qt::Key_End);
        QTRY_VERIFY(corner(preview->after()) > 250);
        QTest::keyClick(control<QSlider>(dialog, "enhanceValue"), Qt::Key_End);
        QTRY_VERIFY(corner(preview->after()) < 230);
        const auto says = [preview](const char* text) {
            for (const QLabel* label : preview->findChildren<QLabel*>())
                if (label->text().contains(text))
                    return true;
            return false;
        };
        QTest::keyClick(control<QSlider>(dialog, "delBlank"), Qt::Key_Home);
        QTRY_VERIFY(says("会保留"));
        page.fill(QColor(228, 224, 214));
        QVERIFY(page.save(scan, "PPM") && keepLastPage(scan, 300));
        QTest::keyClick(control<QSlider>(dialog, "delBlank"), Qt::Key_End);
        QTRY_VERIFY(says("空白页删除"));
        dialog.changeScanTypeState(0);
        QVERIFY(control<QLabel>(dialog, "splitCountHelpLabel")->text().startsWith("拆分 PDF"));
    }

    void startsAtLogin()
    {
        const QString folder = installRoot() + "config";
        const QString file = folder + "/autostart/cn.zarn.qwd200.desktop";
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder));
        const auto store = [](bool on) {
            wholesetpanel dialog;
            open(dialog);
            control<QTabWidget>(dialog, "pages")->setCurrentIndex(1);
            if (control<QCheckBox>(dialog, "autostart")->isChecked() != on)
                click(dialog, "autostart");
            press(dialog, QDialogButtonBox::Ok);
            return dialog.isVisible() ? message(dialog) : QString();
        };
        const auto shownOn = [] { return control<QCheckBox>(wholesetpanel(), "autostart")->isChecked(); };
        QVERIFY(!shownOn());
        QCOMPARE(store(true), QString());
        QVERIFY(shownOn());
        const QByteArray entry = fileContent(file);
        QVERIFY(entry.contains("\nExec=\"" + QCoreApplication::applicationFilePath().toUtf8() + "\"\n"));
        QCOMPARE(QDir(folder + "/autostart").entryList(QDir::Files), QStringList("cn.zarn.qwd200.desktop"));
        // the desktop's own settings switch it off so
        QVERIFY(putFile(file, entry + "Hidden=true\n"));
        QVERIFY(!shownOn());
        QCOMPARE(store(false), QString()); // and leave it so
        QVERIFY(fileContent(file).contains("Hidden"));
        QCOMPARE(store(true), QString());
        QCOMPARE(fileContent(file), entry);
        QCOMPARE(store(false), QString());
        QVERIFY(!QFile::exists(file));
        QVERIFY(QDir(folder + "/autostart").removeRecursively() &&
                putFile(folder + "/autostart", "in the way"));
        QVERIFY(store(true).contains(file));
        qunsetenv("XDG_CONFIG_HOME");
    }

    void settingsThatCannotBeWritten()
    {
        if (!ordinaryUserSeesRoot())
            QSKIP("an ordinary user cannot enter the build folder");
        const auto readable = QFile::ReadOwner | QFile::ReadOther;
        QVERIFY(QFile::setPermissions(installRoot(), readable | QFile::ExeOwner | QFile::ExeOther));
        QFile::setPermissions(paths::mainSettings(), readable);
        const int result = asOrdinaryUser([] {
            wholesetpanel dialog;
            dialog.show();
            dialog.accept();
            return dialog.isVisible() && !message(dialog).isEmpty() ? 1 : 2;
        });
        QFile::setPermissions(installRoot(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(result, 1);
    }
};

QTEST_MAIN(WholeSetTest)
#include "tst_wholesetpanel.moc"
