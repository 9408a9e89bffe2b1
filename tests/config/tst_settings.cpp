// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "config/templates.h"
#include "freshroot.h"

#include <QRegularExpression>
#include <QtTest>
#include <csignal>
#include <sys/resource.h>

// A write that cannot be done is told to the caller and leaves the old file.
static int tryToWrite()
{
    const QByteArray before = fileContent(paths::mainSettings());
    const auto main = openMainSettings();
    main->setValue("Scan_Scan/lightness", 4);
    if (saveSettings(*main))
        return 1;
    if (QFile::exists(paths::mainSettings() + ".former"))
        return 3;
    return fileContent(paths::mainSettings()) == before ? 0 : 2;
}

class SettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(freshRoot()); }
    void factoryFile()
    {
        QVERIFY(putFile(paths::mainSettings(), "[Scan_app]\n0=old\n[Scan_app_exec]\n0=old\n[Later]\nx=1\n"));
        QVERIFY(initializeIni());
        const QByteArray raw = fileContent(paths::mainSettings());
        for (const char* line : {"modeBtn=0\n", "gamma=1.2\n", "frontRBtn=true\n", "lightness=15\n"})
            QVERIFY2(raw.contains(line), line);
        QVERIFY(raw.contains("扫描并用指定的应用软件打开图像。"));
        const auto settings = openMainSettings();
        QCOMPARE(settings->childGroups(), (QStringList{"Later", "Scan_Scan"}));
        QVERIFY(!settings->contains("Scan_Scan/name"));
    }

    void everyKeyStandsInTheDocumentation()
    {
        const QByteArray text = fileContent(QFINDTESTDATA("../../docs/settings.md"));
        for (const SettingTable& group : settingTables())
            for (const Setting& setting : group.settings)
                QVERIFY2(text.contains('`' + QByteArray(setting.key) + '`'), setting.key);
    }

    void firstStart()
    {
        QVERIFY(ensureFactorySettings());
        QCOMPARE(readInt(*openMainSettings(), keys::ScanModel), 0);
        QVERIFY(templateComplete(defaultTemplate));
        // nothing of the factory values is refused when read back
        for (const SettingTable& group : settingTables()) {
            const auto settings = group.inPathFile ? openPathSettings() : openMainSettings();
            const GroupScope scope(*settings, group.group);
            for (const Setting& setting : group.settings) {
                if (settings->contains(setting.key) && setting.key != QLatin1String("ScanModel") &&
                    setting.key != QLatin1String("FileModel"))
                    QCOMPARE(readSetting(*settings, setting), setting.factory);
            }
        }
        // a key that goes missing later stays missing
        const auto main = openMainSettings();
        main->remove("Scan_Scan/contrast");
        QVERIFY(saveSettings(*main));
        const QByteArray before = fileContent(paths::mainSettings());
        QVERIFY(ensureFactorySettings());
        QCOMPARE(fileContent(paths::mainSettings()), before);
    }

    void firstStartKeepsWhatIsThere()
    {
        QVERIFY(putFile(paths::mainSettings(),
                        "ScanModel=2\nlater=1\n[Scan_Scan]\npaperSize=0\nnewKey=\"a;b\"\n"
                        "[Scan_app]\n0=viewer\n[New]\npaper=\"红\"\n"));
        QVERIFY(putFile(paths::pathSettings(), "[Scan_Scan_FilePath]\nsavepath=/elsewhere\n"));
        QVERIFY(ensureFactorySettings());
        const auto main = openMainSettings();
        QCOMPARE(main->value("ScanModel").toInt(), 2);
        QCOMPARE(main->value("Scan_Scan/paperSize").toInt(), 0);
        QCOMPARE(main->value("Scan_Scan/contrast").toInt(), 35);
        QCOMPARE(main->value("Scan_app/0").toString(), QString("viewer"));
        QCOMPARE(main->value("later").toInt(), 1); // of a later version
        QCOMPARE(main->value("Scan_Scan/newKey").toString(), QString("a;b"));
        QCOMPARE(main->value("New/paper").toString(), QStringLiteral("红"));
        const auto path = openPathSettings();
        QCOMPARE(path->value("Scan_Scan_FilePath/savepath").toString(), QString("/elsewhere"));
        QCOMPARE(path->value("Scan_PDF_FilePath/savepath").toString(), defaultSaveFolder());
    }

    void badValues()
    {
        const QList<QPair<QByteArray, QVariant>> lines{{"lightness=bright", 15},
                                                       {"lightness=101", 15},
                                                       {"paperSize=99999999999", 1},
                                                       {"paperSize=-1", 1},
                                                       {"resolution=", 3},
                                                       {"autoCut=7", true},
                                                       {"gamma=nan", 1.2},
                                                       {"gamma=1,5", 1.2},
                                                       {"contrast=1, 2", 35},
                                                       {"contrast=@Rect(1 2 3 4)", 35},
                                                       {"contrast=@Variant(\\0\\0\\0\\x13\\xff\\xff)", 35}};
        for (const auto& [line, expected] : lines) {
            // A file of its own: QSettings takes one of the same size, written within a millisecond, for
            // unchanged.
            const QString path = installRoot() + QString::number(qHash(line)) + ".conf";
            QVERIFY(putFile(path, "[Scan_Scan]\n" + line + "\n"));
            const auto main = openSettings(path);
            const GroupScope scope(*main, groups::scanScan);
            const QByteArray key = line.left(line.indexOf('='));
            const Setting* setting = table(groups::scanScan).find(key.constData());
            QVERIFY(setting);
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Scan_Scan/" + key + " has the bad value"));
            QCOMPARE(readSetting(*main, *setting), expected);
        }
    }

    void damagedFile()
    {
        const QByteArray binary = QByteArray("[Scan_Scan]\nlightness=3\n") + QByteArray(3, '\0');
        for (const QByteArray& content : {binary, QByteArray(2 * 1024 * 1024, 'x'), QByteArray()}) {
            QVERIFY(freshRoot());
            QVERIFY(content.isEmpty() ? QDir().mkpath(paths::mainSettings()) // a folder of that name
                                      : putFile(paths::mainSettings(), content));
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("QWD200.conf is damaged: .* moved to"));
            QVERIFY(ensureFactorySettings());
            QCOMPARE(openMainSettings()->value("Scan_Scan/lightness").toInt(), 15);
            const QStringList aside =
                QDir(installRoot()).entryList({"QWD200.conf.damaged-*"}, QDir::Files | QDir::Dirs);
            QCOMPARE(aside.size(), 1);
            QCOMPARE(fileContent(installRoot() + aside.first()), content);
        }
    }

    void truncatedFile()
    {
        QVERIFY(ensureFactorySettings());
        const QByteArray whole = fileContent(paths::mainSettings());
        QVERIFY(whole.size() > 1000);
        for (int length = 0; length < whole.size(); length += 13) {
            QVERIFY(putFile(paths::mainSettings(), whole.left(length)));
            const auto main = openMainSettings();
            for (const SettingTable& group : settingTables()) {
                const GroupScope scope(*main, group.group);
                for (const Setting& setting : group.settings) {
                    const QVariant value = readSetting(*main, setting);
                    QCOMPARE(value.type(), setting.factory.type());
                }
            }
        }
    }

    void readOnlyFolder()
    {
        QVERIFY(ensureFactorySettings());
        if (!ordinaryUserSeesRoot())
            QSKIP("the build folder cannot be entered by an unprivileged user");
        QFile::setPermissions(installRoot(),
                              QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther);
        const int result = asOrdinaryUser(tryToWrite);
        // a binary file cannot be moved away there, is read as empty and stays
        QVERIFY(putFile(paths::mainSettings(), QByteArray(100, '\0')));
        const int binary = asOrdinaryUser([] {
            const auto main = openMainSettings();
            main->setValue("x", 1);
            return main->contains("Scan_Scan/lightness") || saveSettings(*main) ? 1 : 0;
        });
        QFile::setPermissions(installRoot(), QFile::Permissions(0x7755));
        QCOMPARE(result, 0);
        QCOMPARE(binary, 0);
    }

    void fullDisk()
    {
        QVERIFY(ensureFactorySettings());
        QFile::setPermissions(installRoot(), QFile::Permissions(0x7777));
        QFile::setPermissions(paths::mainSettings(), QFile::Permissions(0x6666));
        if (!ordinaryUserSeesRoot())
            QSKIP("the build folder cannot be entered by an unprivileged user");
        const int result = asOrdinaryUser([] {
            signal(SIGXFSZ, SIG_IGN);
            const rlimit small{512, 512};
            return setrlimit(RLIMIT_FSIZE, &small) != 0 ? 4 : tryToWrite();
        });
        QCOMPARE(result, 0);
    }
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "tst_settings.moc"
