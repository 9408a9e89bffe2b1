// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "config/templates.h"
#include "freshroot.h"

#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

class TemplatesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void storeChangeLoad();
    void overwriteAndRemove();
    void defaultTemplateStays();
    void namesOfTheListing();
    void missingFiles();
    void unsafeNames_data();
    void unsafeNames();
    void safeNames();
};

// An install root that a shell would misunderstand: the commands have to cope with it.
void TemplatesTest::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    qputenv("QWD200_ROOT", qgetenv("QWD200_ROOT") + "it's a $HOME/");
    QVERIFY(installRoot().contains(' '));
}

void TemplatesTest::init()
{
    QVERIFY(freshRoot());
    QVERIFY(ensureFactorySettings());
}

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

void TemplatesTest::storeChangeLoad()
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
    QCOMPARE(fileContent(paths::mainSettings()),
             fileContent(paths::templateFolder() + QStringLiteral("合同-2026.conf")));
}

void TemplatesTest::overwriteAndRemove()
{
    QVERIFY(storeTemplate("office"));
    storePaper(4);
    QVERIFY(storeTemplate("office"));
    QCOMPARE(templateNames(), (QStringList{defaultTemplate, "office"}));
    storePaper(2);
    QVERIFY(loadTemplate("office"));
    QCOMPARE(storedPaper(), 4);
    QVERIFY(removeTemplate("office"));
    QVERIFY(!templateComplete("office"));
    QCOMPARE(templateNames(), QStringList{defaultTemplate});
    QCOMPARE(storedPaper(), 4);
}

void TemplatesTest::defaultTemplateStays()
{
    QVERIFY(!removeTemplate(defaultTemplate));
    QVERIFY(templateComplete(defaultTemplate));
}

void TemplatesTest::namesOfTheListing()
{
    for (const char* file : {"my_scan_path.conf", "my_path.conf", "__x_path.conf", "other.conf"})
        QVERIFY(putFile(paths::templateFolder() + file, "\n"));
    QVERIFY(QDir().mkpath(paths::templateFolder() + "folder_path.conf"));
    QVERIFY(QFile::link(paths::pathSettings(), paths::templateFolder() + "link_path.conf"));
    QStringList names = templateNames();
    names.sort();
    QCOMPARE(names, (QStringList{defaultTemplate, "my", "my", "x"}));
}

void TemplatesTest::missingFiles()
{
    QVERIFY(!templateComplete("never"));
    QVERIFY(!loadTemplate("never"));
    QVERIFY(!QFile::exists(paths::mainSettings()));
    // without live files nothing is stored, and the former template is not lost
    QVERIFY(!storeTemplate(defaultTemplate));
    QVERIFY(templateComplete(defaultTemplate));
}

void TemplatesTest::unsafeNames_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names = {"",
                               " ",
                               "a b",
                               "a\tb",
                               "a\nb",
                               "../x",
                               "a/b",
                               ".hidden",
                               "x;touch",
                               "$(touch)",
                               "`touch`",
                               "x|y",
                               "x&y",
                               "x>y",
                               "x<y",
                               "*",
                               "?",
                               "[a]",
                               "{a,b}",
                               "~",
                               "'",
                               "\"",
                               "\\",
                               "!",
                               "#x",
                               "a\u00a0b",
                               "a\u3000b",
                               "a\u202eb",
                               QString(65, 'a'),
                               QString("x").append(QChar(0)),
                               QString(QChar(0x7f)),
                               QString(QChar(0xd800)),
                               QString(64, QChar(0x4e2d)) + "x"};
    for (int i = 0; i < names.size(); ++i)
        QTest::addRow("%d", i) << names[i];
}

void TemplatesTest::unsafeNames()
{
    QFETCH(QString, name);
    QVERIFY(!isSafeTemplateName(name));
    const QTemporaryDir work;
    QVERIFY(QDir::setCurrent(work.path()));
    const QByteArray before = fileContent(paths::mainSettings());
    // what a shell would run if one saw the name
    const QString hostile = name + ";touch ran;" + name;
    for (const QString& bad : {name, hostile}) {
        QVERIFY(!storeTemplate(bad));
        QVERIFY(!loadTemplate(bad));
        QVERIFY(!removeTemplate(bad));
        QVERIFY(!templateComplete(bad));
    }
    QVERIFY(QDir(work.path()).isEmpty());
    QCOMPARE(fileContent(paths::mainSettings()), before);
    QCOMPARE(templateNames(), QStringList{defaultTemplate});
    QDir::setCurrent("/");
}

void TemplatesTest::safeNames()
{
    for (const QString& name : {QString("a"), QString("my_scan"), QString("A4.duplex-300"),
                                QStringLiteral("红头文件"), QString(64, 'a'), QString(64, QChar(0x4e2d))})
        QVERIFY2(isSafeTemplateName(name), qPrintable(name));
}

QTEST_GUILESS_MAIN(TemplatesTest)
#include "tst_templates.moc"
