// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/applicationlist.h"
#include "config/keys.h"
#include "config/settingsfile.h"
#include "freshroot.h"

#include <QtTest>

static QStringList texts(const std::vector<AppEntry>& list)
{
    QStringList result;
    for (const AppEntry& entry : list)
        result += entry.text;
    return result;
}

static void write(const std::vector<AppEntry>& list)
{
    const auto main = openMainSettings();
    writeApplications(*main, groups::scanApp, list);
    QVERIFY(saveSettings(*main));
}

class ApplicationListTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(freshRoot()); }
    void roundTrip()
    {
        const QString command = R"(/opt/my viewer/run "a b" --x=';%f' \n)";
        std::vector<AppEntry> list{{QStringLiteral("看图, 编辑"), command}};
        for (int i = 1; i < 12; ++i) // 10 comes after 9, not after 1
            list.push_back({QString("app %1").arg(i), i % 2 ? QString("run%1").arg(i) : QString()});
        write(list);
        const auto read = readApplications(*openMainSettings(), groups::scanApp);
        QCOMPARE(texts(read), texts(list));
        for (const AppEntry& entry : list)
            QCOMPARE(applicationCommand(read, entry.text), entry.command);
        QVERIFY(readApplications(*openMainSettings(), groups::fileApp).empty());
    }

    void deletedEntriesDisappear()
    {
        write({{"a", "1"}, {"b", "2"}, {"c", "3"}, {"d", "4"}, {"e", "5"}});
        {
            const auto main = openMainSettings();
            for (const char* key : {"Scan_app/6", "Scan_app/7"})
                main->setValue(key, "stray");
            QVERIFY(saveSettings(*main));
        }
        countDeletedApplication();
        countDeletedApplication();
        write({{"a", "1"}, {"c", {}}, {"e", "5"}});
        const auto main = openMainSettings();
        main->beginGroup(groups::scanApp);
        // five were listed and two deleted: 0 to 6 are cleared, 7 was never ours
        QCOMPARE(main->childKeys(), (QStringList{"0", "1", "2", "7"}));
        main->endGroup();
        main->beginGroup("Scan_app_exec");
        QCOMPARE(main->childKeys(), (QStringList{"0", "2"}));
    }

    void handWritten()
    {
        QVERIFY(putFile(paths::mainSettings(), "[Scan_app]\n10=ten\n2=two, or more\nlast=word\n"
                                               "[Scan_app_exec]\n3=orphan\n10=run\n"));
        const auto read = readApplications(*openMainSettings(), groups::scanApp);
        QCOMPARE(texts(read), (QStringList{"two,or more", "ten", "word"}));
        QCOMPARE(read[1].command, QString("run"));
    }
};

QTEST_GUILESS_MAIN(ApplicationListTest)
#include "tst_applicationlist.moc"
