// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "config/keys.h"
#include "config/settingsfile.h"
#include "output/compression.h"
#include "output/extracopy.h"
#include "output/savefolder.h"
#include "output/savetype.h"

#include <QTextCodec>
#include <QtTest>

static std::optional<QString> valueFor(ColorMode mode, int format)
{
    return compressionValue(*openMainSettings(), mode, format);
}

class SavingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); }
    void init() { QVERIFY(freshRoot()); }
    void compressionPerMode()
    {
        using Mode = ColorMode;
        const QByteArray values = "colorTif=ct\ncolorJpg=cj\ngrayTif=gt\ngrayJpg=gj\nwbJpg=wj\n";
        QVERIFY(putFile(paths::mainSettings(), "[File_Compress]\nsameCompress=false\n" + values));
        QCOMPARE(valueFor(Mode::Color, 2).value(), QString("ct"));
        QCOMPARE(valueFor(Mode::Grey, 0).value(), QString("gj"));
        QCOMPARE(valueFor(Mode::BlackAndWhite, 0).value(), QString("wj"));
        QVERIFY(!valueFor(Mode::BlackAndWhite, 2) && !valueFor(Mode::Color, -1) && !valueFor(Mode::Color, 4));
        QVERIFY(putFile(paths::mainSettings(), "[File_Compress]\nsameCompress=\"true\"\n" + values));
        for (const Mode mode : {Mode::BlackAndWhite, Mode::Grey, Mode::Color})
            QCOMPARE(valueFor(mode, 2).value() + valueFor(mode, 0).value(), QString("ctcj"));
    }

    void indicesFromOutside()
    {
        QCOMPARE(saveTypeWord(99), "bmp");
        QCOMPARE(saveTypeWord(-1), "jpg");
        QCOMPARE(extraCopyDpi(4), 300);
        QCOMPARE(extraCopyDpi(-1), 300);
    }

    void folderIsMade()
    {
        const SaveFolder made = prepareSaveFolder(defaultSaveFolder() + QStringLiteral("/年/11//"));
        QVERIFY2(made.good(), qPrintable(made.problem));
        QCOMPARE(made.path, defaultSaveFolder() + QStringLiteral("/年/11"));
        QVERIFY(QFileInfo(made.path).isDir());
        QVERIFY(QFile::link(made.path, defaultSaveFolder() + "/link"));
        QVERIFY(prepareSaveFolder(defaultSaveFolder() + "/link").good());
        QCOMPARE(prepareSaveFolder(QString()).path, defaultSaveFolder());
    }

    void folderProblems()
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

    void folderWithoutRights()
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
};

QTEST_GUILESS_MAIN(SavingTest)
#include "tst_saving.moc"
