// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "config/keys.h"
#include "config/settingsfile.h"
#include "output/naming.h"

#include <QTextCodec>
#include <QtTest>

static const QDateTime morning(QDate(2026, 11, 5), QTime(0, 4, 9, 7));
static const QDateTime evening(QDate(2026, 11, 15), QTime(18, 14, 46, 123));

static NamingRules rulesOf(const QByteArray& keys)
{
    // A file of its own: QSettings takes one of the same size, written within a millisecond, for unchanged.
    const QString path = installRoot() + QString::number(qHash(keys)) + ".conf";
    putFile(path, "[Scan_Scan]\n" + keys);
    const auto main = openSettings(path);
    main->beginGroup(groups::scanScan);
    return readNamingRules(*main);
}

class NamingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); }
    void init() { QVERIFY(freshRoot()); }
    void stamps()
    {
        const QByteArray on = "dateAndtime=true\n", order = on + "year=0\nmonth=1\ndate=2\n";
        const struct
        {
            QByteArray keys;
            QDateTime now;
            QString name;
        } cases[] = {{on + "system=true\nseparator=2\n", morning, "2026-11-05-00:04:09-7"},
                     {order, morning, "2026115049-7"},
                     {on + "year=2\nmonth=1\ndate=0\nseparator=1\n", morning, "5-11-2026-0-4-9-7"},
                     {order + "separator=2\ntimeType=false\n", evening, "2026.11.15.6.14.46PM-123"},
                     {order + "separator=1\ntimeType=false\n", morning, "2026-11-5-12-4-9AM-7"},
                     {order + "separator=9\n", evening, "20261115181446-123"},
                     {order + "usrDefine=true\nname=x\nstart=3\n", evening, "20261115181446-123x3"},
                     {"name=x\nstart=3\nsystem=true\n", evening, ""}};
        for (const auto& one : cases)
            QCOMPARE(imageName(rulesOf(one.keys), one.now, false), one.name);
    }

    void counter()
    {
        const struct
        {
            QByteArray start;
            int digits;
            QString name, next;
        } cases[] = {{"7", 0, "image7", "8"},
                     {"9", 4, "image0009", "10"},
                     {"12345", 3, "image12345", "12346"},
                     {"007", 0, "image007", "8"},
                     {"abc", 4, "imageabc", "1"},
                     {"", 0, "image", "1"},
                     {"9223372036854775807", 0, "image9223372036854775807", "1"}};
        for (const auto& one : cases) {
            const NamingRules rules = rulesOf("usrDefine=true\nname=image\nstart=" + one.start +
                                              "\nlength=" + QByteArray::number(one.digits) + '\n');
            QCOMPARE(imageName(rules, evening, false), one.name);
            QCOMPARE(nextCounter(rules.start), one.next);
        }
    }

    void counterIsStored()
    {
        QVERIFY(putFile(paths::mainSettings(),
                        "[Scan_Scan]\nusrDefine=true\nname=\"合同 \"\nstart=9\nlength=3\n"
                        "[File_Scan]\nusrDefine=true\nname=f\nstart=1\n"));
        QCOMPARE(takeImageName(groups::scanScan, false), QStringLiteral("合同 009"));
        QVERIFY(fileContent(paths::mainSettings()).contains("start=10\n"));
        QCOMPARE(takeImageName(groups::scanScan, false), QStringLiteral("合同 010"));
        QCOMPARE(takeImageName(groups::fileScan, false), QString("f1"));
        // a group that is not there gives an empty name and writes nothing
        const QByteArray before = fileContent(paths::mainSettings());
        QCOMPARE(takeImageName(groups::filePdf, false), QString());
        QCOMPARE(fileContent(paths::mainSettings()), before);
    }

    void previewLeavesTheCounter()
    {
        const QByteArray content = "[Scan_Scan]\nusrDefine=true\nname=p\nstart=7\n";
        QVERIFY(putFile(paths::mainSettings(), content));
        QCOMPARE(takeImageName(groups::scanScan, true, evening), QString("p72026-11-15-18:14:46-123"));
        QCOMPARE(fileContent(paths::mainSettings()), content);
    }

    // Names stay different from page to page when the counter cannot be stored.
    void counterGoesOnWithoutDisk()
    {
        QVERIFY(putFile(paths::mainSettings(), "[Scan_Scan]\nusrDefine=true\nname=p\nstart=7\n"));
        if (!ordinaryUserSeesRoot())
            QSKIP("the build folder cannot be entered by an unprivileged user");
        QFile::setPermissions(installRoot(), QFile::Permissions(0x5555));
        const int result = asOrdinaryUser([] {
            const QString first = takeImageName(groups::scanScan, false);
            return first == "p7" && takeImageName(groups::scanScan, false) == "p8" ? 0 : 1;
        });
        QFile::setPermissions(installRoot(), QFile::Permissions(0x7755));
        QCOMPARE(result, 0);
    }

    void freeNames()
    {
        const QString folder = defaultSaveFolder();
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(putFile(folder + "/a.jpg", "x"));
        QVERIFY(putFile(folder + "/a-1.jpg", "x"));
        QCOMPARE(freeBaseName(folder, "a", "jpg", false), QString("a-2"));
        QCOMPARE(freeBaseName(folder, "a", "png", false), QString("a"));
        QCOMPARE(freeBaseName(folder, "a", "jpg", true), QString("a"));
        // neither a folder nor a dangling link is written over or through
        QVERIFY(QDir().mkpath(folder + "/a-2.jpg"));
        QVERIFY(QFile::link("/nonexistent/target", folder + "/a-3.jpg"));
        QCOMPARE(freeBaseName(folder, "a", "jpg", false), QString("a-4"));
        QCOMPARE(freeBaseName(folder, "../../etc/x\n", "jpg", false), QString(".._.._etc_x_"));
        QCOMPARE(freeBaseName(folder, "  ", "jpg", false), QString("image"));
    }

    void longNames()
    {
        const QString folder = defaultSaveFolder();
        QVERIFY(QDir().mkpath(folder));
        for (const QString& one :
             {QString("x"), QStringLiteral("纸"), QString::fromUtf8("\xf0\xa0\x80\x80")}) {
            const QString name = freeBaseName(folder, one.repeated(400), "png", false);
            QVERIFY(name.toUtf8().size() <= 240);
            QVERIFY(name.toUtf8().size() > 235);
            QVERIFY(one.repeated(400).startsWith(name));
            QCOMPARE(QString::fromUtf8(name.toUtf8()), name); // no half character
            QVERIFY(putFile(folder + '/' + name + ".png", "x"));
            const QString second = freeBaseName(folder, one.repeated(400), "png", false);
            QVERIFY(second.endsWith("-1"));
            QVERIFY(second.toUtf8().size() <= 240);
        }
    }
};

QTEST_GUILESS_MAIN(NamingTest)
#include "tst_naming.moc"
