// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "config/templatearchive.h"
#include "config/templates.h"
#include "freshroot.h"

#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>
#include <sys/stat.h>
#include <zip.h>

struct ZipEntry
{
    QByteArray name;
    QByteArray content;
    mode_t mode = 0;
};

static bool zipOf(const QString& file, const QVector<ZipEntry>& entries)
{
    zip_t* archive = zip_open(QFile::encodeName(file).constData(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    for (const ZipEntry& entry : entries) {
        zip_source_t* source =
            zip_source_buffer(archive, entry.content.constData(), zip_uint64_t(entry.content.size()), 0);
        const zip_int64_t index = zip_file_add(archive, entry.name.constData(), source, ZIP_FL_ENC_UTF_8);
        if (index >= 0 && entry.mode != 0)
            zip_file_set_external_attributes(archive, zip_uint64_t(index), 0, ZIP_OPSYS_UNIX,
                                             zip_uint32_t(entry.mode) << 16);
    }
    return zip_close(archive) == 0;
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

    void damagedFilesAreSeenBeforeTheyAreLoaded()
    {
        const QString name = QStringLiteral("half");
        QVERIFY(storeTemplate(name));
        QCOMPARE(templateState(name), TemplateState::Good);
        const QByteArray whole = fileContent(templateMainFile(name));
        for (const QByteArray& bad :
             {QByteArray(), whole.left(whole.indexOf('=') - 2), QByteArray(2 << 20, 'x'),
              QByteArray("a=\0b\n", 6), QByteArray("{\"a\":1}\n")}) {
            QVERIFY(putFile(templateMainFile(name), bad));
            QCOMPARE(templateState(name), TemplateState::Damaged);
        }
        QVERIFY(QFile::remove(templatePathFile(name)));
        QCOMPARE(templateState(name), TemplateState::Missing);
    }

    void aCopyThatFailsLosesNothing()
    {
        QVERIFY(storeTemplate("kept"));
        storePaper(4);
        const QByteArray before = fileContent(paths::mainSettings());
        const QByteArray path = qgetenv("PATH");
        const QTemporaryDir tools; // a "cp" that fails as on a full disk
        QVERIFY(putFile(tools.filePath("cp"), "#!/bin/sh\nexit 1\n"));
        QVERIFY(QFile::setPermissions(tools.filePath("cp"), QFile::ReadOwner | QFile::ExeOwner));
        qputenv("PATH", QFile::encodeName(tools.path()) + ':' + path);
        const bool loaded = loadTemplate("kept");
        const bool stored = storeTemplate("kept");
        qputenv("PATH", path);
        QVERIFY(!loaded && !stored);
        QCOMPARE(fileContent(paths::mainSettings()), before);
        QCOMPARE(templateState("kept"), TemplateState::Good);
    }

    void readOnlyFoldersLoseNothing()
    {
        QVERIFY(storeTemplate("kept"));
        storePaper(4);
        const QByteArray live = fileContent(paths::mainSettings());
        const QByteArray kept = fileContent(templateMainFile("kept"));
        if (!ordinaryUserSeesRoot())
            QSKIP("the build folder cannot be entered by an unprivileged user");
        const auto allow = [](const QFile::Permissions& more) {
            for (const QString& folder : {installRoot(), paths::templateFolder()})
                QVERIFY(QFile::setPermissions(folder, more | QFile::ReadOwner | QFile::ExeOwner |
                                                          QFile::ReadOther | QFile::ExeOther));
        };
        allow({});
        const int done = asOrdinaryUser([] {
            return storeTemplate("new") + 2 * storeTemplate("kept") + 4 * loadTemplate("kept") +
                   8 * removeTemplate("kept") + 16 * restoreDefaultTemplate();
        });
        allow(QFile::WriteOwner);
        QCOMPARE(done, 0);
        QCOMPARE(fileContent(paths::mainSettings()), live);
        QCOMPARE(fileContent(templateMainFile("kept")), kept);
        QCOMPARE(templateNames(), (QStringList{defaultTemplate, "kept"}));
    }

    void archivesGoRound()
    {
        storePaper(3);
        const auto main = openMainSettings();
        main->setValue("Scan_app_exec/0", "/usr/bin/看图 %f, 二");
        QVERIFY(saveSettings(*main));
        QVERIFY(storeTemplate(QStringLiteral("合同")));
        const QString file = installRoot() + "x.zip";
        QVERIFY(TemplateArchive::ofTemplate(QStringLiteral("合同")).write(file));
        const TemplateArchive archive = TemplateArchive::read(file);
        QCOMPARE(archive.problem(), QString());
        QCOMPARE(archive.name(), QStringLiteral("合同"));
        QCOMPARE(archive.mainFile(), fileContent(templateMainFile(QStringLiteral("合同"))));
        QCOMPARE(archive.programs(), QStringList{QStringLiteral("/usr/bin/看图 %f, 二")});
        QVERIFY(putTemplate("two", archive.mainFile(), archive.pathFile()));
        QVERIFY(loadTemplate("two"));
        QCOMPARE(storedPaper(), 3);
        QVERIFY(!TemplateArchive::ofTemplate("never").problem().isEmpty());
        // cut anywhere
        const QByteArray whole = fileContent(file);
        for (int size = 0; size < whole.size(); size += whole.size() / 40 + 1) {
            QVERIFY(putFile(file, whole.left(size)));
            QVERIFY2(!TemplateArchive::read(file).problem().isEmpty(), qPrintable(QString::number(size)));
        }
    }

    void hostileArchivesAreRefused()
    {
        const QString file = installRoot() + "x.zip";
        const QByteArray main = fileContent(paths::mainSettings());
        const QByteArray path = fileContent(paths::pathSettings());
        const auto refused = [&](const QVector<ZipEntry>& entries) {
            return zipOf(file, entries) && !TemplateArchive::read(file).problem().isEmpty() &&
                   TemplateArchive::read(file).mainFile().isEmpty();
        };
        QVERIFY(!refused({{"a.conf", main}, {"a_path.conf", path}}));
        QVERIFY(!refused({{"a_path.conf", path, S_IFREG | 0644}, {"a.conf", main}}));
        for (const char* base : {"../a", "/a", "a/b", ".a", "", "a b", "a;touch x", "$(touch x)"})
            QVERIFY2(refused({{QByteArray(base) + ".conf", main}, {QByteArray(base) + "_path.conf", path}}),
                     base);
        QVERIFY(refused({{"a.conf", main}}));
        QVERIFY(refused({{"a.conf", main}, {"b_path.conf", path}}));
        QVERIFY(refused({{"a.conf", main}, {"a_path.conf", path}, {"run.sh", "x"}}));
        QVERIFY(refused({{"a.conf", "/etc/passwd", S_IFLNK | 0777}, {"a_path.conf", path}}));
        QVERIFY(refused({{"a.conf", QByteArray(64 << 20, ' ')}, {"a_path.conf", path}}));
        QVERIFY(refused({{"a.conf", QByteArray()}, {"a_path.conf", path}}));
        QVERIFY(refused({{"a.conf", QByteArray("a=\0", 3)}, {"a_path.conf", path}}));
        QVERIFY(refused({{"a.conf", "[Other]\nkey=1\n"}, {"a_path.conf", path}}));
        QVERIFY(refused({{"a.conf", "half a line"}, {"a_path.conf", path}}));
        QVERIFY(!TemplateArchive::read("/dev/zero").problem().isEmpty());
        QCOMPARE(templateNames(), QStringList{defaultTemplate});
    }

    void unsafeNames()
    {
        const QTemporaryDir work;
        QVERIFY(QDir::setCurrent(work.path()));
        const QByteArray before = fileContent(paths::mainSettings());
        QStringList names =
            QString("|../x|.hidden|$(touch)|`touch`|[a]|{a,b}|~|a\u00a0b|a\u3000b|a\u202eb|#x|\x7f")
                .split('|');
        names << QString(65, 'a') << QString("x").append(QChar(0)) << QString(QChar(0xd800))
              << QString(64, QChar(0x4e2d)) + "x";
        for (const char c : QByteArray(" \t\n/;|&<>*?'\"\\!"))
            names << QString("a") + c + "b";
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
