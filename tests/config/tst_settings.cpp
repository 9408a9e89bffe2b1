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

class SettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(freshRoot()); }
    void factoryFile();
    void firstStart();
    void firstStartKeepsWhatIsThere();
    void laterStartChangesNothing();
    void missingFileReadsAsNothing();
    void badValues_data();
    void badValues();
    void unlimitedValuesStay();
    void damagedFile_data();
    void damagedFile();
    void truncatedFile();
    void unknownKeysSurviveWriting();
    void readOnlyFolder();
    void fullDisk();
};

void SettingsTest::factoryFile()
{
    QVERIFY(putFile(paths::mainSettings(), "[Scan_app]\n0=old\n[Scan_app_exec]\n0=old\n[Later]\nx=1\n"));
    QVERIFY(initializeIni());
    const QByteArray raw = fileContent(paths::mainSettings());
    for (const char* line : {"ScanModel=4\n", "FileModel=4\n", "modeBtn=0\n", "gamma=1.2\n", "scanMode=3\n",
                             "frontRBtn=true\n", "delBlank=false\n", "lightness=15\n", "contrast=35\n"})
        QVERIFY2(raw.contains(line), line);
    QVERIFY(raw.contains("扫描并用指定的应用软件打开图像。"));
    const auto settings = openMainSettings();
    QCOMPARE(settings->childGroups(), (QStringList{"Later", "Scan_Scan"}));
    QCOMPARE(settings->childKeys().size(), 5);
    settings->beginGroup(groups::scanScan);
    QCOMPARE(settings->childKeys().size(), 38);
    QVERIFY(!settings->contains(keys::delBlankState));
    QVERIFY(!settings->contains(keys::name));
}

void SettingsTest::firstStart()
{
    QVERIFY(ensureFactorySettings());
    const auto main = openMainSettings();
    QCOMPARE(readInt(*main, keys::ScanModel), 0);
    QCOMPARE(readInt(*main, keys::FileModel), 0);
    const auto inGroup = [&main](const char* group, const char* key) {
        return main->value(QString(group) + '/' + key).toString();
    };
    QCOMPARE(inGroup(groups::wholeSet, keys::delBlank), QString("8"));
    QCOMPARE(inGroup(groups::fileScan, keys::contrast), QString("35"));
    QCOMPARE(inGroup(groups::scanScan, keys::name), QString("image"));
    QCOMPARE(inGroup(groups::scanPdf, keys::gamma), QString("120"));
    QCOMPARE(inGroup(groups::filePdfPaperSize, keys::width), QString("2100"));
    QCOMPARE(openPathSettings()->value("Scan_OCR_FilePath/savepath").toString(), defaultSaveFolder());
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
}

void SettingsTest::firstStartKeepsWhatIsThere()
{
    QVERIFY(putFile(paths::mainSettings(), "ScanModel=2\n[Scan_Scan]\npaperSize=0\nname=vertrag\n"
                                           "[Scan_app]\n0=viewer\n"));
    QVERIFY(putFile(paths::pathSettings(), "[Scan_Scan_FilePath]\nsavepath=/elsewhere\n"));
    QVERIFY(ensureFactorySettings());
    const auto main = openMainSettings();
    QCOMPARE(main->value("ScanModel").toInt(), 2);
    QCOMPARE(main->value("FileModel").toInt(), 0);
    QCOMPARE(main->value("Scan_Scan/paperSize").toInt(), 0);
    QCOMPARE(main->value("Scan_Scan/name").toString(), QString("vertrag"));
    QCOMPARE(main->value("Scan_Scan/contrast").toInt(), 35);
    QCOMPARE(main->value("Scan_app/0").toString(), QString("viewer"));
    const auto path = openPathSettings();
    QCOMPARE(path->value("Scan_Scan_FilePath/savepath").toString(), QString("/elsewhere"));
    QCOMPARE(path->value("Scan_PDF_FilePath/savepath").toString(), defaultSaveFolder());
}

void SettingsTest::laterStartChangesNothing()
{
    QVERIFY(ensureFactorySettings());
    {
        const auto main = openMainSettings();
        main->setValue("ScanModel", 5);
        main->remove("Scan_Scan/contrast");
        QVERIFY(saveSettings(*main));
    }
    const QByteArray before = fileContent(paths::mainSettings());
    QVERIFY(ensureFactorySettings());
    QCOMPARE(fileContent(paths::mainSettings()), before);
}

void SettingsTest::missingFileReadsAsNothing()
{
    const auto main = openMainSettings();
    QCOMPARE(readInt(*main, keys::ScanModel), 0);
    const GroupScope scope(*main, groups::scanScan);
    QCOMPARE(readBool(*main, keys::autoCut), false);
    QCOMPARE(readDouble(*main, keys::gamma), 0.0);
    QCOMPARE(readText(*main, keys::name), QString());
    QVERIFY(!QFile::exists(paths::mainSettings()));
}

void SettingsTest::badValues_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("text for int") << QByteArray("lightness=bright") << "lightness" << QVariant(15);
    QTest::newRow("above range") << QByteArray("lightness=101") << "lightness" << QVariant(15);
    QTest::newRow("beyond int") << QByteArray("paperSize=99999999999") << "paperSize" << QVariant(1);
    QTest::newRow("negative index") << QByteArray("paperSize=-1") << "paperSize" << QVariant(1);
    QTest::newRow("empty int") << QByteArray("resolution=") << "resolution" << QVariant(3);
    QTest::newRow("number for bool") << QByteArray("autoCut=7") << "autoCut" << QVariant(true);
    QTest::newRow("text for bool") << QByteArray("split=yes") << "split" << QVariant(false);
    QTest::newRow("not a number") << QByteArray("gamma=nan") << "gamma" << QVariant(1.2);
    QTest::newRow("comma as point") << QByteArray("gamma=1,5") << "gamma" << QVariant(1.2);
    QTest::newRow("list for int") << QByteArray("contrast=1, 2") << "contrast" << QVariant(35);
    QTest::newRow("rect for int") << QByteArray("contrast=@Rect(1 2 3 4)") << "contrast" << QVariant(35);
    QTest::newRow("binary variant") << QByteArray("contrast=@Variant(\\0\\0\\0\\x13\\xff\\xff)") << "contrast"
                                    << QVariant(35);
}

void SettingsTest::badValues()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, key);
    QFETCH(QVariant, expected);
    // A file of its own: QSettings takes one of the same size, written within a millisecond, for unchanged.
    const QString path = installRoot() + QTest::currentDataTag() + ".conf";
    QVERIFY(putFile(path, "[Scan_Scan]\n" + line + "\n"));
    const auto main = openSettings(path);
    const GroupScope scope(*main, groups::scanScan);
    const Setting* setting = table(groups::scanScan).find(key.toUtf8().constData());
    QVERIFY(setting);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Scan_Scan/" + key + " has the bad value"));
    QCOMPARE(readSetting(*main, *setting), expected);
}

void SettingsTest::unlimitedValuesStay()
{
    QVERIFY(putFile(paths::mainSettings(),
                    "modeBtn=-3\n[wholeSet]\ndelBlank=16\nimgMendUp=2.5\nimgMendIn=TRUE\n"
                    "[Scan_Scan]\npaperSize=42\nname=a, b\n"));
    const auto main = openMainSettings();
    QCOMPARE(readInt(*main, keys::modeBtn), -3);
    {
        const GroupScope scope(*main, groups::wholeSet);
        QCOMPARE(readInt(*main, keys::delBlank), 16);
        QCOMPARE(readDouble(*main, keys::imgMendUp), 2.5);
        QCOMPARE(readBool(*main, keys::imgMendIn), true);
    }
    const GroupScope scope(*main, groups::scanScan);
    QCOMPARE(readInt(*main, keys::paperSize), 42);
    QCOMPARE(readText(*main, keys::name), QString("a,b"));
}

void SettingsTest::damagedFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("binary") << QByteArray("[Scan_Scan]\nlightness=3\n") + QByteArray(3, '\0');
    QTest::newRow("huge") << QByteArray(2 * 1024 * 1024, 'x');
    QTest::newRow("folder") << QByteArray();
}

void SettingsTest::damagedFile()
{
    QFETCH(QByteArray, content);
    if (content.isEmpty())
        QVERIFY(QDir().mkpath(paths::mainSettings()));
    else
        QVERIFY(putFile(paths::mainSettings(), content));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("QWD200.conf is damaged: .* moved to"));
    QVERIFY(ensureFactorySettings());
    QCOMPARE(openMainSettings()->value("Scan_Scan/lightness").toInt(), 15);
    const QStringList aside =
        QDir(installRoot()).entryList({"QWD200.conf.damaged-*"}, QDir::Files | QDir::Dirs);
    QCOMPARE(aside.size(), 1);
    QCOMPARE(fileContent(installRoot() + aside.first()), content);
}

void SettingsTest::truncatedFile()
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

void SettingsTest::unknownKeysSurviveWriting()
{
    QVERIFY(putFile(paths::mainSettings(), "later=1\n[Scan_Scan]\nnewKey=\"a;b\"\n[New]\npaper=\"红\"\n"));
    {
        const auto main = openMainSettings();
        main->setValue("Scan_Scan/lightness", 4);
        QVERIFY(saveSettings(*main));
    }
    const auto main = openMainSettings();
    QCOMPARE(main->value("later").toInt(), 1);
    QCOMPARE(main->value("Scan_Scan/newKey").toString(), QString("a;b"));
    QCOMPARE(main->value("New/paper").toString(), QStringLiteral("红"));
}

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

void SettingsTest::readOnlyFolder()
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

void SettingsTest::fullDisk()
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

QTEST_GUILESS_MAIN(SettingsTest)
#include "tst_settings.moc"
