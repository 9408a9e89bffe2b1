// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "config/templates.h"
#include "freshroot.h"

#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

static int storedPaper()
{
    return openMainSettings()->value("Scan_Scan/paperSize").toInt();
}

static void storePaper(int index)
{
    const auto main = openMainSettings();
    main->setValue("Scan_Scan/paperSize", index);
    QVERIFY(saveSettings(*main));
}

class TemplatesTest : public QObject
{
    Q_OBJECT

private slots:
    // An install root that a shell would misunderstand: the commands have to cope with it.
    void initTestCase()
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
        qputenv("QWD200_ROOT", qgetenv("QWD200_ROOT") + "it's a $HOME/");
        QVERIFY(installRoot().contains(' '));
    }

    void init()
    {
        QVERIFY(freshRoot());
        QVERIFY(ensureFactorySettings());
    }

    void storeLoadRemove()
    {
        storePaper(3);
        const auto path = openPathSettings();
        path->setValue("Scan_Scan_FilePath/savepath", QStringLiteral("/home/合同"));
        QVERIFY(saveSettings(*path));
        QVERIFY(storeTemplate(QStringLiteral("合同-2026")));
        storePaper(5);
        QVERIFY(loadTemplate(defaultTemplate));
        QCOMPARE(storedPaper(), 1);
        QVERIFY(loadTemplate(QStringLiteral("合同-2026")));
        QCOMPARE(storedPaper(), 3);
        QCOMPARE(openPathSettings()->value("Scan_Scan_FilePath/savepath").toString(),
                 QStringLiteral("/home/合同"));
        // overwriting and removing leave the live settings alone
        storePaper(4);
        QVERIFY(storeTemplate(QStringLiteral("合同-2026")));
        QVERIFY(loadTemplate(QStringLiteral("合同-2026")));
        QCOMPARE(storedPaper(), 4);
        QVERIFY(removeTemplate(QStringLiteral("合同-2026")));
        QVERIFY(!removeTemplate(defaultTemplate));
        QCOMPARE(templateNames(), QStringList{defaultTemplate});
        QCOMPARE(storedPaper(), 4);
    }

    void namesOfTheListing()
    {
        for (const char* file : {"my_scan_path.conf", "my_path.conf", "__x_path.conf", "other.conf"})
            QVERIFY(putFile(paths::templateFolder() + file, "\n"));
        QVERIFY(QDir().mkpath(paths::templateFolder() + "folder_path.conf"));
        QVERIFY(QFile::link(paths::pathSettings(), paths::templateFolder() + "link_path.conf"));
        QStringList names = templateNames();
        names.sort();
        QCOMPARE(names, (QStringList{defaultTemplate, "my", "my", "x"}));
    }

    void missingFiles()
    {
        QVERIFY(!templateComplete("never"));
        QVERIFY(!loadTemplate("never"));
        QVERIFY(!QFile::exists(paths::mainSettings()));
        // without live files nothing is stored, and the former template is not lost
        QVERIFY(!storeTemplate(defaultTemplate));
        QVERIFY(templateComplete(defaultTemplate));
    }

    void unsafeNames()
    {
        const QTemporaryDir work;
        QVERIFY(QDir::setCurrent(work.path()));
        const QByteArray before = fileContent(paths::mainSettings());
        QStringList names{"",
                          "../x",
                          ".hidden",
                          "$(touch)",
                          "`touch`",
                          "[a]",
                          "{a,b}",
                          "~",
                          "a\u00a0b",
                          "a\u3000b",
                          "a\u202eb",
                          QString(65, 'a'),
                          QString(QChar(0x7f)),
                          QString("x").append(QChar(0)),
                          QString(QChar(0xd800)),
                          QString(64, QChar(0x4e2d)) + "x"};
        for (const char c : QByteArray(" \t\n/;|&<>*?'\"\\!"))
            names << QString("a") + c + "b";
        names << "#x";
        for (const QString& name : names) {
            QVERIFY2(!isSafeTemplateName(name), qPrintable(name));
            // what a shell would run if one saw the name
            for (const QString& bad : {name, QString(name + ";touch ran;" + name)})
                QVERIFY2(!storeTemplate(bad) && !loadTemplate(bad) && !removeTemplate(bad) &&
                             !templateComplete(bad),
                         qPrintable(bad));
        }
        QVERIFY(QDir(work.path()).isEmpty());
        QCOMPARE(fileContent(paths::mainSettings()), before);
        QCOMPARE(templateNames(), QStringList{defaultTemplate});
        QDir::setCurrent("/");
        QVERIFY(isSafeTemplateName(QString(64, QChar(0x4e2d))));
    }
};

QTEST_GUILESS_MAIN(TemplatesTest)
#include "tst_templates.moc"
