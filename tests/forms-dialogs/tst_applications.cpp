// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "driving.h"
#include "forms/append.h"
#include "forms/desktopentrydialog.h"
#include "imageconvert/launcher.h"

#include <QListWidget>
#include <QTemporaryDir>

// From a desktop entry or the editor's fields to the words that a started program gets.
class ApplicationsTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    DesktopEntry entryOf(const QByteArray& exec, const QByteArray& more = QByteArray())
    {
        const QString file = m_folder.filePath("it.desktop");
        putFile(
            file,
            "# a comment\n[Desktop Entry]\nType=Application\nName=Viewer\nName[zh_CN]=看图\nIcon=eog\nExec=" +
                exec + "\n" + more + "\n[Desktop Action x]\nExec=touch never\n");
        return readDesktopEntry(file);
    }

private slots:
    void initTestCase() { QLocale::setDefault(QLocale("zh_CN")); }

    void execLines_data()
    {
        QTest::addColumn<QByteArray>("exec");
        QTest::addColumn<QStringList>("words"); // for the file "/d/a b.jpg"; empty: refused
        const QString file = "/d/a b.jpg";
        const auto row = [](const char* exec, const QStringList& words) {
            QTest::newRow(exec) << QByteArray(exec) << words;
        };
        row("true %F", {"true", file});
        row("true", {"true", file});
        row("/bin/true --new %u", {"/bin/true", "--new", "file:///d/a%20b.jpg"});
        row("true %i --title=%c %f", {"true", "--icon", "eog", "--title=看图", file});
        row("true %k %f", {"true", m_folder.filePath("it.desktop"), file});
        row("true %d %m %f", {"true", file});
        row("true 100%% %f", {"true", "100%", file});
        row(R"(true "a b" "c \\"d\\" \\$HOME \\\\ %f" %f)", {"true", "a b", R"(c "d" $HOME \ %f)", file});
        row(R"("true" "" %f)", {"true", "", file});
        row(R"(true a\sb)", {"true", "a", "b", file});
        // hostile and broken ones
        for (const char* bad : {"", "%f", "true %x", "true %", "true \"a", "true; touch x", "true $(touch x)",
                                "true `touch x`", "true > x", "true | sh", "true $HOME", "sh -c \"touch x\"",
                                "/bin/bash -lc \"x %f\"", "env A=1 sh -c \"x\"", "no-such-program %f",
                                "../true", "bin/true", "/etc/passwd", "true \\n touch x"})
            row(bad, {});
    }
    void execLines()
    {
        QFETCH(QByteArray, exec);
        QFETCH(QStringList, words);
        const DesktopEntry entry = entryOf(exec);
        QCOMPARE(entry.problem.isEmpty(), !words.isEmpty());
        QCOMPARE(entry.application.command.isEmpty(), words.isEmpty());
        if (words.isEmpty())
            return;
        // the editor shows it and stores the same
        append editor(entry.application, {});
        QCOMPARE(editor.entry(), entry.application);
        const auto command = imageconvert::commandFor(editor.entry().command, "/d/a b.jpg");
        QCOMPARE(command.error, QString());
        QCOMPARE(QStringList(command.program) + command.arguments, words);
    }

    void entriesThatAreNoApplications()
    {
        QCOMPARE(entryOf("true").application.text, QStringLiteral("看图"));
        QVERIFY(entryOf("true").inMenu);
        QVERIFY(!entryOf("true", "NoDisplay=true").inMenu);
        QVERIFY(!entryOf("true", "Terminal=true").problem.isEmpty());
        QVERIFY(!entryOf("true", "TryExec=no-such-program").problem.isEmpty());
        for (const QByteArray& bad :
             {QByteArray(), QByteArray("\0\1", 2), QByteArray("Exec=true\nName=x\nType=Application\n"),
              QByteArray("[Desktop Entry]\nType=Link\nName=x\nExec=true\n"), QByteArray(1 << 20, '[')}) {
            putFile(m_folder.filePath("bad.desktop"), bad);
            QVERIFY(!readDesktopEntry(m_folder.filePath("bad.desktop")).problem.isEmpty());
        }
        QVERIFY(!readDesktopEntry("/dev/zero").problem.isEmpty());
    }

    // What the editor stores is what runs, word for word, and no shell sees it.
    void whatIsStoredIsStarted()
    {
        QDir::setCurrent(m_folder.path());
        const QString program = m_folder.filePath("my viewer");
        QVERIFY(putFile(program, "#!/bin/sh\nfor w in \"$@\"; do printf '%s\\n' \"$w\"; done > words.part; "
                                 "mv words.part words\n"));
        QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner));
        append editor({}, {QStringLiteral("已有")});
        open(editor);
        type(editor, "nameEdit", QStringLiteral("我的看图"));
        type(editor, "programEdit", program);
        type(editor, "argumentsEdit", R"(-x "$(touch ran);\`id\`" '%f')");
        press(editor, QDialogButtonBox::Ok);
        QCOMPARE(editor.result(), int(QDialog::Accepted));
        const QString page = m_folder.filePath("$(touch ran) `touch ran`;\"x'.jpg");
        QCOMPARE(imageconvert::startCommand(imageconvert::commandFor(editor.entry().command, page)),
                 QString());
        QTRY_VERIFY(QFile::exists("words"));
        QCOMPARE(QString::fromUtf8(fileContent("words")), "-x\n$(touch ran);`id`\n'" + page + "'\n");
        QVERIFY(!QFile::exists("ran"));
        QDir::setCurrent("/");
    }

    void theEditorRefuses()
    {
        append editor({}, {QStringLiteral("已有")});
        open(editor);
        const auto refused = [&](const char* name, const char* program, const char* arguments) {
            for (const auto& [field, text] : {std::pair{"nameEdit", name}, std::pair{"programEdit", program},
                                              std::pair{"argumentsEdit", arguments}})
                control<QLineEdit>(editor, field)->setText(QString::fromUtf8(text));
            press(editor, QDialogButtonBox::Ok);
            return editor.isVisible() && !message(editor).isEmpty();
        };
        QVERIFY(refused("", "true", ""));
        QVERIFY(refused("已有", "true", ""));
        for (const char* program : {"no-such-program", "/nowhere/at/all", "/etc/passwd", "bin/ls"})
            QVERIFY2(refused("a", program, ""), program);
        QVERIFY(refused("a", "true", "\x01"));
        QVERIFY(refused("a", "", "-x"));
        QVERIFY(refused("a", "true", "\"x"));
        QVERIFY(refused("a", "sh", "-c \"touch x\""));
        QVERIFY(!refused("a", "true", ""));
        append filled({"x", "gone -y", "icon"}, {});
        auto* presets = control<QComboBox>(filled, "presetComboBox");
        QVERIFY(presets->count() >= 2);
        open(filled);
        presets->setFocus();
        QTest::keyClick(presets, Qt::Key_Down); // the desktop's default
        QCOMPARE(filled.entry(), (AppEntry{QStringLiteral("系统默认程序"), QString()}));
    }

    void aListOfEntriesIsChosenFrom()
    {
        QTemporaryDir menu;
        putFile(menu.filePath("a.desktop"), "[Desktop Entry]\nType=Application\nName=Alpha\nExec=true %f\n");
        putFile(menu.filePath("b.desktop"),
                "[Desktop Entry]\nType=Application\nName=Beta\nExec=sh -c \"touch x\"\n");
        putFile(menu.filePath("c.desktop"),
                "[Desktop Entry]\nType=Application\nName=Hidden\nExec=true\nNoDisplay=true\n");
        DesktopEntryDialog dialog(menu.path());
        open(dialog);
        auto* list = control<QListWidget>(dialog, "entryList");
        QTRY_COMPARE(list->count(), 2);
        list->setCurrentRow(1);
        press(dialog, QDialogButtonBox::Ok);
        QVERIFY(dialog.isVisible() && message(dialog).contains("Beta"));
        type(dialog, "filterEdit", "alp");
        press(dialog, QDialogButtonBox::Ok); // the selected one is not seen now
        QVERIFY(dialog.isVisible());
        list->setCurrentRow(0);
        press(dialog, QDialogButtonBox::Ok);
        QCOMPARE(dialog.application().command, QStringLiteral("true %f"));
        QCOMPARE(dialog.application().text, QStringLiteral("Alpha"));
    }
};

QTEST_MAIN(ApplicationsTest)
#include "tst_applications.moc"
