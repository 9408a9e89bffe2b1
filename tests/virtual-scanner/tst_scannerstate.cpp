// SPDX-License-Identifier: GPL-3.0-or-later
#include "feeder.h"
#include "state.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace vscan;

class TestScannerState : public QObject
{
    Q_OBJECT
private slots:
    void takesSidesInTheOrderOfTheSource();
    void keepsJammedUntilFreed();
    void returnsStoppedSheets();
    void countsPagesOfTheBatch();
    void choosesTheAutomaticSourceOnce();
    void keyEndsTheBatch();
    void deadHandleStaysDead();
    void findsSheetsInAFolder();

private:
    static State loaded(int sheets);
    static QStringList scan(State& state, Source source, int limit = 20);
};

State TestScannerState::loaded(int sheets)
{
    std::vector<Sheet> stack;
    for (int i = 1; i <= sheets; ++i)
        stack.push_back({"f" + std::to_string(i), "b" + std::to_string(i)});
    State state;
    state.load(stack);
    state.open();
    return state;
}

// The pictures of a batch, and the status that ended it.
QStringList TestScannerState::scan(State& state, Source source, int limit)
{
    QStringList seen;
    while (seen.size() < limit) {
        const PageStart page = state.start(source);
        if (page.status != Status::Good)
            return seen << QString::number(static_cast<int>(page.status));
        seen << QString::fromStdString(page.side.picture);
        if (page.failAt >= 0)
            state.pageFailed(page.failStatus);
        else
            state.pageDone();
    }
    return seen;
}

void TestScannerState::takesSidesInTheOrderOfTheSource()
{
    State fronts = loaded(2), backs = loaded(2), both = loaded(2);
    QCOMPARE(scan(fronts, Source::AdfFront), (QStringList{"f1", "f2", "7"}));
    QCOMPARE(scan(backs, Source::AdfBack), (QStringList{"b1", "b2", "7"}));
    QCOMPARE(scan(both, Source::AdfDuplex), (QStringList{"f1", "b1", "f2", "b2", "7"}));
    State left = loaded(2); // a cancelled duplex sheet has passed
    QCOMPARE(scan(left, Source::AdfDuplex, 1), QStringList{"f1"});
    left.cancel();
    QCOMPARE(scan(left, Source::AdfDuplex, 1), QStringList{"f2"});
}

void TestScannerState::keepsJammedUntilFreed()
{
    for (long long bytes : {-1LL, 0LL, 1000LL}) {
        State state = loaded(2);
        state.addFault({Status::Jammed, 2, bytes});
        scan(state, Source::AdfFront);
        QVERIFY(state.jammed());
        state.close();
        state.open();
        QCOMPARE(scan(state, Source::AdfFront), QStringList{"6"});
        if (bytes == 0) {
            state.clear();
        } else {
            state.setCover(true);
            QCOMPARE(scan(state, Source::AdfFront), QStringList{"8"});
            state.setCover(false);
        }
        QCOMPARE(scan(state, Source::AdfFront), (QStringList{"f2", "7"}));
    }
}

void TestScannerState::returnsStoppedSheets()
{
    State state = loaded(2);
    QCOMPARE(scan(state, Source::AdfDuplex, 1), QStringList{"f1"});
    state.start(Source::AdfDuplex); // the back of the first sheet
    state.setCover(true);
    QCOMPARE(state.takeInterrupt(), std::optional<Status>(Status::CoverOpen));
    QCOMPARE(state.takeInterrupt(), std::optional<Status>());
    state.setCover(false);
    QCOMPARE(scan(state, Source::AdfDuplex), (QStringList{"f1", "b1", "f2", "b2", "7"}));

    State failing = loaded(3); // a transfer error happens once and the sheet has passed
    failing.addFault({Status::IoError, 2, 10});
    QCOMPARE(scan(failing, Source::AdfFront), (QStringList{"f1", "f2", "f3", "7"}));
    QCOMPARE(failing.pages(), 2);
}

void TestScannerState::countsPagesOfTheBatch()
{
    State state = loaded(4);
    state.addFault({Status::IoError, 2, -1});
    QCOMPARE(scan(state, Source::AdfFront, 1), QStringList{"f1"});
    state.cancel();
    QCOMPARE(scan(state, Source::AdfFront), (QStringList{"f2", "9"}));
    QCOMPARE(scan(state, Source::AdfFront), (QStringList{"f4", "7"}));
}

void TestScannerState::choosesTheAutomaticSourceOnce()
{
    State state = loaded(1);
    state.setFlatbed("glass");
    QCOMPARE(scan(state, Source::AutoFeeder), (QStringList{"f1", "7"}));
    state.cancel();
    QCOMPARE(scan(state, Source::AutoFeeder), (QStringList{"glass", "7"}));
    QCOMPARE(scan(state, Source::Flatbed, 3), (QStringList{"glass", "glass", "glass"}));
}

void TestScannerState::keyEndsTheBatch()
{
    State state = loaded(3);
    state.pressCancel(); // nothing runs: no effect
    QCOMPARE(state.start(Source::AdfFront).status, Status::Good);
    state.pressCancel();
    QCOMPARE(state.takeInterrupt(), std::optional<Status>(Status::Cancelled));
    QCOMPARE(scan(state, Source::AdfFront), QStringList{"2"});
    QCOMPARE(scan(state, Source::AdfFront), QStringList{"2"});
    state.cancel();
    QCOMPARE(scan(state, Source::AdfFront), (QStringList{"f2", "f3", "7"}));
}

void TestScannerState::deadHandleStaysDead()
{
    State state = loaded(2);
    state.start(Source::AdfFront);
    state.unplug();
    QCOMPARE(state.takeInterrupt(), std::optional<Status>(Status::IoError));
    state.replug();
    QCOMPARE(scan(state, Source::AdfFront), QStringList{"9"});
    QCOMPARE(state.open(), Status::DeviceBusy);
    state.close();
    QCOMPARE(state.open(), Status::Good);
    QCOMPARE(scan(state, Source::AdfFront), (QStringList{"f1", "f2", "7"}));
    state.unplug();
    state.close();
    QCOMPARE(state.open(), Status::IoError);
}

void TestScannerState::findsSheetsInAFolder()
{
    QTemporaryDir folder;
    const auto touch = [&folder](const char* name) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    };
    const auto names = [&folder] {
        std::string error;
        QStringList list;
        for (const Sheet& sheet : sheetsOf(folder.path().toStdString(), error)) {
            list << QFileInfo(QString::fromStdString(sheet.front)).fileName() + "|" +
                        QFileInfo(QString::fromStdString(sheet.back)).fileName();
        }
        return error.empty() ? list : QStringList{"error"};
    };
    QCOMPARE(names(), QStringList{"error"});
    touch("notes.txt");
    QCOMPARE(names(), QStringList{"error"});
    touch("b.png");
    touch("a 1.JPG");
    QCOMPARE(names(), (QStringList{"a 1.JPG|", "b.png|"}));
    touch("010-front.pnm");
    touch("9-front.png");
    touch("9-back.png");
    touch("011-BACK.jpg");
    QCOMPARE(names(), (QStringList{"9-front.png|9-back.png", "010-front.pnm|", "|011-BACK.jpg"}));
    std::string error;
    QVERIFY(sheetsOf("/nonexistent", error).empty() && !error.empty());
}

QTEST_APPLESS_MAIN(TestScannerState)
#include "tst_scannerstate.moc"
