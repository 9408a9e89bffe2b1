// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"
#include "config/freshroot.h"
#include "config/keys.h"
#include "config/settingsfile.h"
#include "output/compression.h"
#include "output/extracopy.h"
#include "output/savefolder.h"
#include "output/savetype.h"

#include <QTextCodec>
#include <QtTest>

class SavingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); }
    void init() { QVERIFY(freshRoot()); }
    void compressionPerMode();
    void compressionForAll();
    void compressionAsStored();
    void indicesFromOutside();
    void folderIsMade();
    void folderOfTheSettings();
    void folderProblems();
    void folderWithoutRights();
};

static std::optional<QString> valueFor(ColorMode mode, int format)
{
    return compressionValue(*openMainSettings(), mode, format);
}

static const char* const values = "colorTif=ct\ncolorJpg=cj\ngrayTif=gt\ngrayJpg=gj\nwbJpg=wj\n";

void SavingTest::compressionPerMode()
{
    QVERIFY(putFile(paths::mainSettings(), QByteArray("[File_Compress]\nsameCompress=false\n") + values));
    using Mode = ColorMode;
    QCOMPARE(valueFor(Mode::Color, 2).value(), QString("ct"));
    QCOMPARE(valueFor(Mode::Color, 0).value(), QString("cj"));
    QCOMPARE(valueFor(Mode::Grey, 2).value(), QString("gt"));
    QCOMPARE(valueFor(Mode::Grey, 0).value(), QString("gj"));
    QCOMPARE(valueFor(Mode::BlackAndWhite, 0).value(), QString("wj"));
    QVERIFY(!valueFor(Mode::BlackAndWhite, 2));
    for (const Mode mode : {Mode::BlackAndWhite, Mode::Grey, Mode::Color}) {
        for (const int format : {-1, 1, 3, 4})
            QVERIFY(!valueFor(mode, format));
    }
}

void SavingTest::compressionForAll()
{
    QVERIFY(putFile(paths::mainSettings(), QByteArray("[File_Compress]\nsameCompress=\"true\"\n") + values));
    for (const ColorMode mode : {ColorMode::BlackAndWhite, ColorMode::Grey, ColorMode::Color}) {
        QCOMPARE(valueFor(mode, 2).value(), QString("ct"));
        QCOMPARE(valueFor(mode, 0).value(), QString("cj"));
        QVERIFY(!valueFor(mode, 1));
    }
}

void SavingTest::compressionAsStored()
{
    QCOMPARE(valueFor(ColorMode::Color, 0).value(), QString());
    QVERIFY(ensureFactorySettings());
    QCOMPARE(valueFor(ColorMode::Color, 0).value(), QString("85"));
    QCOMPARE(valueFor(ColorMode::Grey, 2).value(), QString("6"));
}

void SavingTest::indicesFromOutside()
{
    QCOMPARE(saveTypeWord(0), "jpg");
    QCOMPARE(saveTypeWord(1), "tif");
    QCOMPARE(saveTypeWord(3), "bmp");
    QCOMPARE(saveTypeWord(99), "bmp");
    QCOMPARE(saveTypeWord(-1), "jpg");
    QCOMPARE(extraCopyDpi(0), 100);
    QCOMPARE(extraCopyDpi(3), 600);
    QCOMPARE(extraCopyDpi(4), 300);
    QCOMPARE(extraCopyDpi(-1), 300);
}

void SavingTest::folderIsMade()
{
    const SaveFolder made = prepareSaveFolder(defaultSaveFolder() + QStringLiteral("/年/11//"));
    QVERIFY2(made.good(), qPrintable(made.problem));
    QCOMPARE(made.path, defaultSaveFolder() + QStringLiteral("/年/11"));
    QVERIFY(QFileInfo(made.path).isDir());
    QVERIFY(prepareSaveFolder(made.path).good());
    QVERIFY(QFile::link(made.path, defaultSaveFolder() + "/link"));
    QVERIFY(prepareSaveFolder(defaultSaveFolder() + "/link").good());
    QCOMPARE(prepareSaveFolder(QString()).path, defaultSaveFolder());
}

void SavingTest::folderOfTheSettings()
{
    QCOMPARE(storedSaveFolder(groups::scanScanFilePath), QString());
    QVERIFY(ensureFactorySettings());
    QCOMPARE(storedSaveFolder(groups::scanScanFilePath), defaultSaveFolder());
}

void SavingTest::folderProblems()
{
    QVERIFY(QDir().mkpath(defaultSaveFolder()));
    const QString file = defaultSaveFolder() + "/file";
    QVERIFY(putFile(file, "x"));
    const QString dangling = defaultSaveFolder() + "/dangling";
    QVERIFY(QFile::link("/nonexistent-target", dangling));
    for (const QString& bad : {file, file + "/below", dangling, QString("relative/folder"),
                               QString("/proc/nothing/here"), '/' + QString(300, 'x')}) {
        const SaveFolder result = prepareSaveFolder(bad);
        QVERIFY2(!result.good(), qPrintable(bad));
        QVERIFY2(result.problem.contains(bad), qPrintable(result.problem));
    }
    QCOMPARE(fileContent(file), QByteArray("x"));
    QVERIFY(prepareSaveFolder(file).problem.contains(QStringLiteral("同名文件")));
}

void SavingTest::folderWithoutRights()
{
    if (!ordinaryUserSeesRoot())
        QSKIP("the build folder cannot be entered by an unprivileged user");
    QVERIFY(QDir().mkpath(defaultSaveFolder()));
    QFile::setPermissions(defaultSaveFolder(), QFile::Permissions(0x5555));
    const int result = asOrdinaryUser([] {
        const SaveFolder closed = prepareSaveFolder(defaultSaveFolder());
        const SaveFolder below = prepareSaveFolder(defaultSaveFolder() + "/new");
        const QString reason = QStringLiteral("没有写入权限");
        return closed.problem.contains(reason) && below.problem.contains(reason) ? 0 : 1;
    });
    QFile::setPermissions(defaultSaveFolder(), QFile::Permissions(0x7755));
    QCOMPARE(result, 0);
}

QTEST_GUILESS_MAIN(SavingTest)
#include "tst_saving.moc"
