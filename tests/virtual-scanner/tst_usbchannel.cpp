// SPDX-License-Identifier: GPL-3.0-or-later
// What the virtual scanner says over USB, without any USB.
#include "daemon/scanner.h"
#include "usb/channelcommands.h"

#include <QtTest>
#include <thread>

using namespace vscan;

class TestUsbChannel : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void answersFrames_data();
    void answersFrames();
    void ignoresOtherFrames();
    void givesEachReportOnce();
    void playsFaults_data();
    void playsFaults();
    void holdsBack();
    void refusesBadCommands_data();
    void refusesBadCommands();
    void setsAllCountersOrNone();
    void countsPagesAndSheets();

private:
    Bytes reply(const Bytes& frame);
    bool usb(const QString& words);

    std::unique_ptr<Wear> m_wear;
    EventLog m_log;
    std::unique_ptr<CommandChannel> m_channel;
};

void TestUsbChannel::init()
{
    m_wear = std::make_unique<Wear>();
    m_channel = std::make_unique<CommandChannel>(*m_wear, m_log);
}

Bytes TestUsbChannel::reply(const Bytes& frame)
{
    m_channel->receive(frame);
    return m_channel->take(endpoint::replyIn).value_or(Bytes());
}

bool TestUsbChannel::usb(const QString& words)
{
    Fields command;
    for (const QString& word : words.split(' '))
        command.push_back(word.toStdString());
    std::string text;
    return (command[0] == "usb" ? usbCommand(*m_channel, command, text)
                                : countersCommand(*m_wear, command, text)) &&
           (command[0] == "counters" || text.empty());
}

void TestUsbChannel::answersFrames_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("part");
    QTest::addColumn<int>("count");
    QTest::newRow("scan") << 4 << 0 << 4660;
    QTest::newRow("roller") << 1 << 1 << 65535;
    QTest::newRow("pad") << 2 << 2 << 255;
}

void TestUsbChannel::answersFrames()
{
    QFETCH(int, code);
    QFETCH(int, part);
    QFETCH(int, count);
    for (size_t other = 0; other < 3; ++other)
        m_wear->counter(other) = static_cast<int>(other) == part ? count : 77;
    Bytes frame{'C', 'N', 'T', 'R', 1, static_cast<uint8_t>(code), 0, 0};
    const Bytes shown = reply(frame);
    QCOMPARE(shown.size(), size_t(64));
    QCOMPARE(shown[8] + 256 * shown[9], count);
    frame[4] = 3;
    QCOMPARE(reply(frame).size(), size_t(64));
    for (size_t other = 0; other < 3; ++other)
        QCOMPARE(m_wear->counter(other).load(), static_cast<int>(other) == part ? 0 : 77);
    QCOMPARE(reply({'P', 'W', 'R', 0, 0, 30, 1, 0}).size(), size_t(8));
    QCOMPARE(m_wear->standbyMinutes().load(), 90);
}

void TestUsbChannel::ignoresOtherFrames()
{
    m_wear->counter(0) = 5;
    for (const Bytes& frame : std::vector<Bytes>{{},
                                                 {'C', 'N', 'T', 'R'},
                                                 {'C', 'N', 'T', 'R', 1, 4, 0},
                                                 {'C', 'N', 'T', 'R', 1, 3, 0, 0},
                                                 {'C', 'N', 'T', 'R', 2, 4, 0, 0},
                                                 {'P', 'W', 'R', ' ', 0, 5, 0, 0},
                                                 Bytes(512, 'C')})
        QVERIFY(reply(frame).empty());
    QCOMPARE(m_wear->counter(0).load(), 5);
    QCOMPARE(m_wear->standbyMinutes().load(), 15);
}

void TestUsbChannel::givesEachReportOnce()
{
    m_channel->press(1);
    m_channel->press(2);
    QCOMPARE(m_channel->take(endpoint::eventIn).value_or(Bytes()), (Bytes{4, 0, 0, 1}));
    QVERIFY(!m_channel->take(endpoint::replyIn));
    QCOMPARE(m_channel->take(endpoint::eventIn).value_or(Bytes()), (Bytes{4, 0, 0, 2}));
    QVERIFY(!m_channel->take(endpoint::eventIn));
    m_channel->press(1);
    m_channel->powerOff();
    QVERIFY(!m_channel->take(endpoint::eventIn));
    QVERIFY(usb("usb report 04 0 ff"));
    QCOMPARE(m_channel->take(endpoint::eventIn).value_or(Bytes()), (Bytes{4, 0, 255}));
}

void TestUsbChannel::playsFaults_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("length"); // of a reply of 64 bytes, -1 none
    QTest::newRow("silent") << "usb silent 2" << -1;
    QTest::newRow("short") << "usb short 2" << 3;
    QTest::newRow("empty") << "usb short 2 0" << 0;
    QTest::newRow("nearly whole") << "usb short 2 63" << 63;
    QTest::newRow("garbage") << "usb garbage 2" << 64;
}

void TestUsbChannel::playsFaults()
{
    QFETCH(QString, command);
    QFETCH(int, length);
    const Bytes query{'C', 'N', 'T', 'R', 1, 4, 0, 0};
    const Bytes good = reply(query);
    QVERIFY(usb(command));
    for (int i = 0; i < 2; ++i) {
        m_channel->receive(query);
        const std::optional<Bytes> bad = m_channel->take(endpoint::replyIn);
        QCOMPARE(bad ? static_cast<int>(bad->size()) : -1, length);
        QVERIFY(!bad || *bad != good);
    }
    QCOMPARE(reply(query), good);
    QVERIFY(usb(command));
    QVERIFY(usb("usb ok"));
    QCOMPARE(reply(query), good);
}

void TestUsbChannel::holdsBack()
{
    QVERIFY(usb("usb late 1 40"));
    m_channel->press(1);
    QVERIFY(!m_channel->take(endpoint::eventIn));
    const auto due = m_channel->nextDue(endpoint::eventIn);
    QVERIFY(due && *due > CommandChannel::Clock::now());
    std::this_thread::sleep_until(*due);
    QCOMPARE(m_channel->take(endpoint::eventIn).value_or(Bytes()), (Bytes{4, 0, 0, 1}));
    QVERIFY(!m_channel->nextDue(endpoint::eventIn));
}

void TestUsbChannel::refusesBadCommands_data()
{
    QTest::addColumn<QString>("command");
    for (const char* command :
         {"usb frobnicate",      "usb stall",        "usb stall 84",   "usb stall 81 x",   "usb silent -1",
          "usb silent 1 1",      "usb short 1 x",    "usb late 1 -5",  "usb claim-busy",   "usb claim-busy 2",
          "usb driver",          "usb driver x",     "usb report 100", "usb ok 1",         "counters scan",
          "counters scan=65536", "counters scan=-1", "counters scan=", "counters other=1", "counters =1"})
        QTest::newRow(command) << command;
}

void TestUsbChannel::refusesBadCommands()
{
    QFETCH(QString, command);
    QVERIFY(!usb(command));
    QCOMPARE(m_channel->statusText(), std::string());
    QVERIFY(!m_channel->take(endpoint::eventIn));
}

void TestUsbChannel::setsAllCountersOrNone()
{
    QVERIFY(usb("counters scan=65535 pad=3 standby=59"));
    QVERIFY(!usb("counters scan=1 roller=70000"));
    std::string text;
    QVERIFY(countersCommand(*m_wear, {"counters"}, text));
    QCOMPARE(text, std::string("scan=65535\nroller=0\npad=3\nstandby=59"));
}

void TestUsbChannel::countsPagesAndSheets()
{
    m_wear->counter(2) = 65534;
    State state;
    state.countOn(*m_wear);
    state.load({{"f1", "b1"}, {"f2", "b2"}, {"f3", "b3"}});
    state.setFlatbed("glass");
    state.open();
    const auto scan = [&state](Source source, int pages) {
        while (pages-- > 0 && state.start(source).status == Status::Good)
            state.pageDone();
        state.cancel();
    };
    scan(Source::AdfDuplex, 4);
    QCOMPARE(m_wear->counter(0).load(), 4);
    QCOMPARE(m_wear->counter(1).load(), 2);
    scan(Source::Flatbed, 2);
    scan(Source::AdfFront, 9);
    QCOMPARE(m_wear->counter(0).load(), 7);
    QCOMPARE(m_wear->counter(1).load(), 3);
    QCOMPARE(m_wear->counter(2).load(), 65535); // the end
}

QTEST_APPLESS_MAIN(TestUsbChannel)
#include "tst_usbchannel.moc"
