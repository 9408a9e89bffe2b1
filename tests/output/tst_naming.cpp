// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "config/keys.h"
#include "config/settingsfile.h"
#include "output/naming.h"

#include <QTextCodec>
#include <QtTest>
#include <limits>

class NamingTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); }
    void init() { QVERIFY(freshRoot()); }
    void stamps_data();
    void stamps();
    void counter_data();
    void counter();
    void counterIsStored();
    void previewLeavesTheCounter();
    void counterGoesOnWithoutDisk();
    void freeNames();
    void safeNames();
    void longNames();
};

static const QDateTime morning(QDate(2026, 11, 5), QTime(0, 4, 9, 7));
static const QDateTime evening(QDate(2026, 11, 15), QTime(18, 14, 46, 123));

void NamingTest::stamps_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<QString>("name");
    const QByteArray on = "dateAndtime=true\n";
    const QByteArray order = on + "year=0\nmonth=1\ndate=2\n";
    QTest::newRow("system") << on + "system=true\nseparator=2\n" << morning << "2026-11-05-00:04:09-7";
    QTest::newRow("dots") << order + "separator=2\n" << evening << "2026.11.15.18.14.46-123";
    QTest::newRow("no separator") << order << morning << "2026115049-7";
    QTest::newRow("day first") << on + "year=2\nmonth=1\ndate=0\nseparator=1\n"
                               << morning << "5-11-2026-0-4-9-7";
    QTest::newRow("evening of 12 hours") << order + "separator=2\ntimeType=false\n"
                                         << evening << "2026.11.15.6.14.46PM-123";
    QTest::newRow("midnight of 12 hours") << order + "separator=1\ntimeType=false\n"
                                          << morning << "2026-11-5-12-4-9AM-7";
    QTest::newRow("order missing") << on + "separator=1\n" << evening << "2026-2026-2026-18-14-46-123";
    QTest::newRow("bad separator") << order + "separator=9\n" << evening << "20261115181446-123";
    QTest::newRow("stamp and counter") << order + "usrDefine=true\nname=x\nstart=3\n"
                                       << evening << "20261115181446-123x3";
    QTest::newRow("nothing on") << QByteArray("name=x\nstart=3\nsystem=true\n") << evening << "";
}

static NamingRules rulesOf(const QByteArray& keys)
{
    putFile(paths::mainSettings(), "[Scan_Scan]\n" + keys);
    const auto main = openMainSettings();
    main->beginGroup(groups::scanScan);
    return readNamingRules(*main);
}

void NamingTest::stamps()
{
    QFETCH(QByteArray, keys);
    QFETCH(QDateTime, now);
    QFETCH(QString, name);
    QCOMPARE(imageName(rulesOf(keys), now, false), name);
}

void NamingTest::counter_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<int>("digits");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("next");
    QTest::newRow("plain") << QByteArray("7") << 0 << "image7"
                           << "8";
    QTest::newRow("padded") << QByteArray("9") << 4 << "image0009"
                            << "10";
    QTest::newRow("wider than the digits") << QByteArray("12345") << 3 << "image12345"
                                           << "12346";
    QTest::newRow("zeros as typed") << QByteArray("007") << 0 << "image007"
                                    << "8";
    QTest::newRow("no number") << QByteArray("abc") << 4 << "imageabc"
                               << "1";
    QTest::newRow("empty") << QByteArray("") << 0 << "image"
                           << "1";
    QTest::newRow("greatest") << QByteArray::number(std::numeric_limits<qlonglong>::max()) << 0
                              << "image9223372036854775807"
                              << "1";
}

void NamingTest::counter()
{
    QFETCH(QByteArray, start);
    QFETCH(int, digits);
    QFETCH(QString, name);
    QFETCH(QString, next);
    const NamingRules rules = rulesOf("usrDefine=true\nname=image\nstart=" + start +
                                      "\nlength=" + QByteArray::number(digits) + '\n');
    QCOMPARE(imageName(rules, evening, false), name);
    QCOMPARE(nextCounter(rules.start), next);
}

void NamingTest::counterIsStored()
{
    QVERIFY(putFile(paths::mainSettings(), "[Scan_Scan]\nusrDefine=true\nname=\"合同 \"\nstart=9\nlength=3\n"
                                           "[File_Scan]\nusrDefine=true\nname=f\nstart=1\n"));
    QCOMPARE(takeImageName(groups::scanScan, false), QStringLiteral("合同 009"));
    QVERIFY(fileContent(paths::mainSettings()).contains("start=10\n"));
    QCOMPARE(takeImageName(groups::scanScan, false), QStringLiteral("合同 010"));
    QCOMPARE(takeImageName(groups::fileScan, false), QString("f1"));
    QCOMPARE(takeImageName(groups::scanScan, false), QStringLiteral("合同 011"));
    // a group that is not there gives an empty name and writes nothing
    const QByteArray before = fileContent(paths::mainSettings());
    QCOMPARE(takeImageName(groups::filePdf, false), QString());
    QCOMPARE(fileContent(paths::mainSettings()), before);
}

void NamingTest::previewLeavesTheCounter()
{
    const QByteArray content = "[Scan_Scan]\nusrDefine=true\nname=p\nstart=7\n";
    QVERIFY(putFile(paths::mainSettings(), content));
    QCOMPARE(takeImageName(groups::scanScan, true, evening), QString("p72026-11-15-18:14:46-123"));
    QCOMPARE(fileContent(paths::mainSettings()), content);
}

// Names stay different from page to page when the counter cannot be stored.
void NamingTest::counterGoesOnWithoutDisk()
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

void NamingTest::freeNames()
{
    const QString folder = defaultSaveFolder();
    QVERIFY(QDir().mkpath(folder));
    QCOMPARE(freeBaseName(folder, "a", "jpg", false), QString("a"));
    QVERIFY(putFile(folder + "/a.jpg", "x"));
    QVERIFY(putFile(folder + "/a-1.jpg", "x"));
    QCOMPARE(freeBaseName(folder, "a", "jpg", false), QString("a-2"));
    QCOMPARE(freeBaseName(folder, "a", "png", false), QString("a"));
    QCOMPARE(freeBaseName(folder, "a", "jpg", true), QString("a"));
    // neither a folder nor a dangling link is written over or through
    QVERIFY(QDir().mkpath(folder + "/a-2.jpg"));
    QVERIFY(QFile::link("/nonexistent/target", folder + "/a-3.jpg"));
    QCOMPARE(freeBaseName(folder, "a", "jpg", false), QString("a-4"));
    QCOMPARE(freeBaseName(folder, "", "jpg", false), QString("image"));
    QVERIFY(putFile(folder + "/image.jpg", "x"));
    QCOMPARE(freeBaseName(folder, "  ", "jpg", false), QString("image-1"));
    // a name with dots keeps them
    QVERIFY(putFile(folder + "/v1.2.jpg", "x"));
    QCOMPARE(freeBaseName(folder, "v1.2", "jpg", false), QString("v1.2-1"));
}

void NamingTest::safeNames()
{
    QCOMPARE(safeBaseName("../../etc/x"), QString(".._.._etc_x"));
    QCOMPARE(safeBaseName("a\nb\tc"), QString("a_b_c"));
    QCOMPARE(safeBaseName(QString("a") + QChar(0) + "b"), QString("a_b"));
    QCOMPARE(safeBaseName(QStringLiteral("合同 (2)")), QStringLiteral("合同 (2)"));
}

void NamingTest::longNames()
{
    const QString folder = defaultSaveFolder();
    QVERIFY(QDir().mkpath(folder));
    for (const QString& one : {QString("x"), QStringLiteral("纸"), QString::fromUtf8("\xf0\xa0\x80\x80")}) {
        const QString name = freeBaseName(folder, one.repeated(400), "png", false);
        QVERIFY(name.toUtf8().size() <= 240);
        QVERIFY(name.toUtf8().size() > 235);
        QVERIFY(one.repeated(400).startsWith(name));
        QCOMPARE(QString::fromUtf8(name.toUtf8()), name);
        QVERIFY(putFile(folder + '/' + name + ".png", "x"));
        const QString second = freeBaseName(folder, one.repeated(400), "png", false);
        QVERIFY(second.endsWith("-1"));
        QVERIFY(second.toUtf8().size() <= 240);
        QVERIFY(putFile(folder + '/' + second + ".png", "x"));
    }
}

QTEST_GUILESS_MAIN(NamingTest)
#include "tst_naming.moc"
