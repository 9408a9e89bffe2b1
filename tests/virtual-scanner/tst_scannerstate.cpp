// SPDX-License-Identifier: GPL-3.0-or-later
// What the virtual scanner does, without any client.
#include "daemon/scanner.h"
#include "feeder.h"
#include "state.h"
#include "usb/channelcommands.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace vscan;

class TestScannerState : public QObject
{
    Q_OBJECT
private slots:
    void findsSheetsInAFolder()
    {
        QTemporaryDir folder;
        const auto with = [&folder](const QStringList& files) {
            for (const QString& name : files)
                QFile(folder.filePath(name)).open(QIODevice::WriteOnly);
            std::string error;
            QStringList list;
            for (const Sheet& sheet : sheetsOf(folder.path().toStdString(), error)) {
                list << QFileInfo(QString::fromStdString(sheet.front)).fileName() + "|" +
                            QFileInfo(QString::fromStdString(sheet.back)).fileName();
            }
            return error.empty() ? list : QStringList{"error"};
        };
        QCOMPARE(with({"notes.txt"}), QStringList{"error"});
        QCOMPARE(with({"b.png", "a 1.JPG"}), (QStringList{"a 1.JPG|", "b.png|"}));
        QCOMPARE(with({"010-front.pnm", "9-front.png", "9-back.png", "011-BACK.jpg"}),
                 (QStringList{"9-front.png|9-back.png", "010-front.pnm|", "|011-BACK.jpg"}));
    }

    void ignoresOtherFrames()
    {
        Wear wear;
        EventLog log;
        CommandChannel channel(wear, log);
        wear.counter(0) = 5;
        for (const Bytes& frame : std::vector<Bytes>{{},
                                                     {'C', 'N', 'T', 'R'},
                                                     {'C', 'N', 'T', 'R', 1, 4, 0},
                                                     {'C', 'N', 'T', 'R', 1, 3, 0, 0},
                                                     {'C', 'N', 'T', 'R', 2, 4, 0, 0},
                                                     {'P', 'W', 'R', ' ', 0, 5, 0, 0},
                                                     Bytes(512, 'C')}) {
            channel.receive(frame);
            QVERIFY(!channel.take(endpoint::replyIn));
        }
        QCOMPARE(wear.counter(0).load(), 5);
        QCOMPARE(wear.standbyMinutes().load(), 15);
    }

    void refusesBadCommands()
    {
        Wear wear;
        EventLog log;
        CommandChannel channel(wear, log);
        std::string text;
        const auto runs = [&](const QString& words) {
            Fields command;
            for (const QString& word : words.split(' '))
                command.push_back(word.toStdString());
            return command[0] == "usb" ? usbCommand(channel, command, text)
                                       : countersCommand(wear, command, text);
        };
        QVERIFY(runs("counters scan=65535 pad=3 standby=59"));
        for (const char* command :
             {"usb frobnicate", "usb stall 84", "usb stall 81 x", "usb silent -1", "usb silent 1 1",
              "usb short 1 x", "usb late 1 -5", "usb claim-busy 2", "usb driver x", "usb report 100",
              "usb ok 1", "counters scan", "counters scan=-1", "counters scan=", "counters other=1",
              "counters scan=1 roller=70000"})
            QVERIFY2(!runs(command), command);
        QCOMPARE(channel.statusText(), std::string());
        text.clear();
        QVERIFY(runs("counters")); // all of a command is taken, or nothing
        QCOMPARE(text, std::string("scan=65535\nroller=0\npad=3\nstandby=59"));
    }

    void countsPagesAndSheets()
    {
        Wear wear;
        wear.counter(2) = 65534;
        State state;
        state.countOn(wear);
        state.load({{"f1", "b1"}, {"f2", "b2"}, {"f3", "b3"}});
        state.setFlatbed("glass");
        state.open();
        for (const auto& [source, pages] : {std::pair(Source::AdfDuplex, 4), std::pair(Source::Flatbed, 2),
                                            std::pair(Source::AdfFront, 9)}) {
            for (int i = 0; i < pages && state.start(source).status == Status::Good; ++i)
                state.pageDone();
            state.cancel();
        }
        QCOMPARE(wear.counter(0).load(), 7);     // pages
        QCOMPARE(wear.counter(1).load(), 3);     // sheets through the rollers
        QCOMPARE(wear.counter(2).load(), 65535); // the end
    }
};

QTEST_APPLESS_MAIN(TestScannerState)
#include "tst_scannerstate.moc"
