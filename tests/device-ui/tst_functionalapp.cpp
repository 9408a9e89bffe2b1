// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "config/settingsfile.h"
#include "device/scriptedusb.h"
#include "device/usb_communicate.h"
#include "forms/wholesetpanel.h"
#include "maintenancepage.h"

#include <QMessageBox>
#include <QRadioButton>
#include <QSemaphore>
#include <QSpinBox>
#include <QTabWidget>

namespace {

// What the device answers to a counter query; bytes that carry nothing are not zero.
QByteArray counterReply(int value, int length = 64)
{
    QByteArray reply(64, '\xEE');
    reply[8] = char(value & 0xFF);
    reply[9] = char(value >> 8);
    return reply.left(length);
}

// A device that keeps the program waiting until the gate is opened.
class SlowUsb : public ScriptedUsb
{
public:
    SlowUsb(UsbScript& script, QSemaphore& gate) : ScriptedUsb(script), m_gate(gate) {}
    UsbStatus init(UsbContext& context) override
    {
        m_gate.acquire();
        return ScriptedUsb::init(context);
    }

private:
    QSemaphore& m_gate;
};

} // namespace

class FunctionalAppTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(freshRoot());
        m_script.~UsbScript();
        new (&m_script) UsbScript;
    }

    void faultsAreNamed()
    {
        FunctionalApp page(channel());
        m_script.opening = UsbStatus::Access;
        page.getScannerPrimiters();
        QCOMPARE(status(page), QString("没有访问扫描仪的权限"));
        m_script.opening = UsbStatus::Good;
        answer({7, 8, 9});
        page.getScannerPrimiters(); // no restart is needed
        QCOMPARE(fields(page), QStringList({"7", "8", "9"}));
        m_script.writing = {UsbStatus::NoDevice, QByteArray(8, 0)}; // away after it was opened
        page.getScannerPrimiters();
        QCOMPARE(fields(page), QStringList({"off 0", "off 0", "off 0"}));
        QCOMPARE(status(page), QString("扫描仪连接断开"));
        QCOMPARE(m_script.kept(), 0);
    }

    void repliesThatAreNoCount()
    {
        FunctionalApp page(channel());
        answer({1, 2, 3});
        page.getScannerPrimiters();
        for (int length : {0, 1, 8, 9, 10, 63}) {
            m_script.replies.assign(3, {UsbStatus::Good, counterReply(77, length)});
            page.getScannerPrimiters();
            QCOMPARE(fields(page), QStringList({"1", "2", "3"}));
        }
        m_script.transfers.clear();
        answer({0, 0, 5, 6});
        m_script.replies[0].status = m_script.replies[1].status = UsbStatus::Pipe;
        page.getScannerPrimiters(); // after a failed reply a late one is read away
        QCOMPARE(fields(page), QStringList({"off 1", "5", "6"}));
        QCOMPARE(sent(), QList<QByteArray>({"43 4e 54 52 01 04 00 00", "43 4e 54 52 01 01 00 00",
                                            "43 4e 54 52 01 02 00 00"}));
        QCOMPARE(m_script.kept(), 0);
    }

    void limitsDecideWhatIsDue()
    {
        FunctionalApp page(channel());
        auto* roller = control<QLabel>(page, "incomHintLabel");
        auto* pad = control<QLabel>(page, "ruandianHintLabel");
        answer({5, 60000, 27000});
        page.getScannerPrimiters();
        QVERIFY(roller->text().contains("需要更换") && !roller->text().contains("即将"));
        QVERIFY(pad->text().contains("即将需要更换"));
        control<QSpinBox>(page, "padLimit")->setValue(30001);
        QVERIFY(!pad->font().bold());
        QCOMPARE(pad->text(), QString("还可使用约 3001 张"));
    }

    void standbyTimes()
    {
        FunctionalApp page(channel());
        open(page);
        const auto send = [&] {
            m_script.replies = {{UsbStatus::Good, QByteArray(8, 0)}};
            click(page, "sleepTime_btn");
            return sent().last();
        };
        auto* minutes = control<QSpinBox>(page, "sleeptime");
        QCOMPARE(send(), QByteArray("50 57 52 00 00 0f 00 00"));
        minutes->setFocus();
        minutes->selectAll();
        QTest::keyClicks(minutes, "90");
        QCOMPARE(send(), QByteArray("50 57 52 00 00 1e 01 00"));
        click(page, "no_sleep");
        QVERIFY(!minutes->isEnabled());
        QCOMPARE(send(), QByteArray("50 57 52 00 00 00 00 00"));
        click(page, "xiumian");
        QVERIFY(!minutes->isEnabled());
        QCOMPARE(send(), QByteArray("50 57 52 00 00 01 00 00"));
        for (const auto& [time, frame] : QList<QPair<int, QByteArray>>{{59, "50 57 52 00 00 3b 00 00"},
                                                                       {60, "50 57 52 00 00 00 01 00"},
                                                                       {1440, "50 57 52 00 00 00 18 00"},
                                                                       {99999, "50 57 52 00 00 00 18 00"},
                                                                       {-5, "50 57 52 00 00 00 00 00"}}) {
            m_script.replies = {{UsbStatus::Good, QByteArray(3, 0)}}; // any length is an answer
            QCOMPARE(page.setSleepTime(time), usb_communicate::Done);
            QCOMPARE(m_script.transfers.last().length, 8);
            QCOMPARE(sent().last(), frame);
        }
        page.readIni(); // what was sent is what is kept
        QVERIFY(control<QRadioButton>(page, "xiumian")->isChecked());
    }

    void failedCommands()
    {
        FunctionalApp page(channel());
        answer({11, 22, 33});
        showCounters(page);
        QString text;
        const auto readBox = [&text](QMessageBox& box) {
            text = box.windowTitle() + "|" + box.text();
            QTest::keyClick(&box, Qt::Key_Return);
        };
        inModal<QMessageBox>([&](QMessageBox& question) {
            inModal<QMessageBox>(readBox);
            QTest::mouseClick(question.button(QMessageBox::Ok), Qt::LeftButton);
        });
        click(page, "reset_plat"); // no reply
        QCOMPARE(text, QString("提示|连接错误"));

        control<QTabWidget>(page, "sleepOrCount")->setCurrentIndex(0);
        text.clear();
        m_script.writing = {UsbStatus::Io, QByteArray(8, 0)};
        inModal<QMessageBox>(readBox);
        click(page, "sleepTime_btn");
        QCOMPARE(text, QString("提示|连接错误"));
        m_script.present = false;
        click(page, "sleepTime_btn"); // no box
        QCOMPARE(status(page), QString("扫描仪连接断开"));
        QVERIFY(control<QWidget>(page, "sleepTime_btn")->isEnabled());
    }

    void resetAsksFirst()
    {
        FunctionalApp page(channel());
        answer({11, 22, 33});
        showCounters(page);
        m_script.transfers.clear();
        m_script.release = UsbStatus::Io; // the commands have arrived all the same
        const struct
        {
            const char* button;
            QString beginning;
            QByteArray frame;
        } resets[] = {{"reset_plat", "扫描计数器", "43 4e 54 52 03 04 00 00"},
                      {"reset_btn_incom", "进纸滚轮计数器", "43 4e 54 52 03 01 00 00"},
                      {"reset_btn_ruandian", "软垫模组计数器", "43 4e 54 52 03 02 00 00"}};
        for (const auto& reset : resets) {
            inModal<QMessageBox>(
                [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }); // the default
            click(page, reset.button);
            QCOMPARE(sent(), QList<QByteArray>());

            QString text;
            answer({0, 11, 22, 0});              // to the reset, then three counts
            m_script.replies[0].bytes.resize(3); // any length is an answer
            inModal<QMessageBox>([&](QMessageBox& box) {
                text = box.text();
                QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
            });
            click(page, reset.button);
            QCOMPARE(text, reset.beginning + "将重置为0。\n该动作不可撤销，确定要继续吗？\n"
                                             "点击【OK】重置计数器，或者点击【取消】退出");
            QCOMPARE(sent().value(0), reset.frame);
            QCOMPARE(m_script.transfers[1].length, 64);
            QCOMPARE(sent().size(), 4);
            QCOMPARE(fields(page), QStringList({"11", "22", "0"}));
            m_script.transfers.clear();
        }
        QCOMPARE(m_script.kept(), 0);
    }

    void windowLivesDuringAnExchange()
    {
        QSemaphore gate;
        FunctionalApp page(
            [&] { return std::make_unique<usb_communicate>(std::make_unique<SlowUsb>(m_script, gate)); });
        open(page);
        m_script.replies = {{UsbStatus::Good, QByteArray(8, 0)}};
        QElapsedTimer sinceTick;
        qint64 longest = 0;
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&] {
            longest = qMax(longest, sinceTick.restart());
            if (++ticks == 3) {
                for (const char* name : {"sleepTime_btn", "refreshButton", "reset_plat", "reset_btn_incom"})
                    QVERIFY2(!control<QWidget>(page, name)->isEnabled(), name);
                page.getScannerPrimiters(); // refused
            }
            if (ticks == 10)
                gate.release();
        });
        sinceTick.start();
        timer.start(10);
        click(page, "sleepTime_btn");
        timer.stop();
        QVERIFY(ticks >= 10);
        QVERIFY2(longest < 100, qPrintable(QString::number(longest)));
        QCOMPARE(sent().size(), 1);
    }

    void pageDestroyedDuringAnExchange()
    {
        QSemaphore gate;
        auto* page = new FunctionalApp(
            [&] { return std::make_unique<usb_communicate>(std::make_unique<SlowUsb>(m_script, gate)); });
        QTimer::singleShot(20, this, [&] {
            delete page;
            gate.release();
        });
        page->getScannerPrimiters();
        QCOMPARE(m_script.kept(), 0);
    }

    void nothingHappensDuringABatch()
    {
        FunctionalApp page(channel());
        page.setScanRunning(true);
        showCounters(page);
        QVERIFY(!control<QWidget>(page, "refreshButton")->isEnabled());
        QCOMPARE(page.setSleepTime(5), 252);
        QCOMPARE(m_script.opens, 0);
        answer({1, 2, 3});
        page.setScanRunning(false);
        QTRY_COMPARE(fields(page), QStringList({"1", "2", "3"}));
    }

    void badSettings()
    {
        QVERIFY(putFile(paths::mainSettings(),
                        "[wholeSet]\nnoSleep=true\nsleep=true\nxiumian=true\nsleeptime=-4\n"
                        "rollerLimit=0\npadLimit=65536\nsleepOrCount=77\n"));
        QCOMPARE(settings(FunctionalApp(channel())), QString("no 15 60000 30000 1"));
        QVERIFY(putFile(paths::mainSettings(),
                        "[wholeSet]\nnoSleep=perhaps\nsleep=false\nxiumian=true\n"
                        "sleeptime=1441\nrollerLimit=x\npadLimit=1\nsleepOrCount=-1\n"));
        QCOMPARE(settings(FunctionalApp(channel())), QString("now 15 60000 1 0"));
    }

    void insideTheGlobalSettings()
    {
        wholesetpanel dialog;
        auto* page = new FunctionalApp(channel());
        dialog.addMaintenancePage(page);
        QList<int> states;
        connect(&dialog, &wholesetpanel::getAndSetFunctionalSignals, [&](int state) { states << state; });
        open(dialog);
        QCOMPARE(states, QList<int>()); // the page is not in front
        answer({4, 5, 6});
        control<QTabWidget>(*page, "sleepOrCount")->setCurrentIndex(1);
        control<QTabWidget>(dialog, "pages")->setCurrentWidget(page);
        QTRY_COMPARE(fields(*page), QStringList({"4", "5", "6"}));
        QTRY_COMPARE(states, QList<int>({2, 0}));
        checkReachable(dialog);
        answer({9, 9, 9});
        QTest::keyClick(&dialog, Qt::Key_F, Qt::AltModifier);
        QTRY_COMPARE(fields(*page), QStringList({"9", "9", "9"}));
        QTRY_VERIFY(!page->isExchanging());

        control<QSpinBox>(*page, "padLimit")->setValue(12345);
        press(dialog, QDialogButtonBox::Cancel);
        QCOMPARE(control<QSpinBox>(*page, "padLimit")->value(), 30000);
        open(dialog);
        control<QSpinBox>(*page, "padLimit")->setValue(12345);
        control<QTabWidget>(*page, "sleepOrCount")->setCurrentIndex(1); // the cancelling had undone it
        QTRY_VERIFY(!page->isExchanging());
        press(dialog, QDialogButtonBox::Apply);
        for (const char* line : {"padLimit=12345\n", "sleep=true\n", "sleeptime=15\n", "sleepOrCount=1\n"})
            QVERIFY2(fileContent(paths::mainSettings()).contains(line), line);
    }

private:
    FunctionalApp::MakeChannel channel()
    {
        return [this] { return std::make_unique<usb_communicate>(std::make_unique<ScriptedUsb>(m_script)); };
    }
    void answer(const QList<int>& counts)
    {
        m_script.replies.clear();
        for (int count : counts)
            m_script.replies.push_back({UsbStatus::Good, counterReply(count)});
    }
    QList<QByteArray> sent() const // the frames that went out
    {
        QList<QByteArray> frames;
        for (const auto& transfer : m_script.transfers)
            if (transfer.endpoint == 0x02)
                frames << transfer.bytes.toHex(' ');
        return frames;
    }
    static QString settings(const FunctionalApp& page)
    {
        return QString("%1 %2 %3 %4 %5")
            .arg(control<QRadioButton>(page, "no_sleep")->isChecked() ? "no"
                 : control<QRadioButton>(page, "sleep")->isChecked()  ? "timed"
                                                                      : "now")
            .arg(control<QSpinBox>(page, "sleeptime")->value())
            .arg(control<QSpinBox>(page, "rollerLimit")->value())
            .arg(control<QSpinBox>(page, "padLimit")->value())
            .arg(control<QTabWidget>(page, "sleepOrCount")->currentIndex());
    }
    static void showCounters(FunctionalApp& page)
    {
        control<QTabWidget>(page, "sleepOrCount")->setCurrentIndex(1);
        open(page);
        QTRY_VERIFY(!page.isExchanging() && status(page) != "尚未连接");
    }

    UsbScript m_script;
};

QTEST_MAIN(FunctionalAppTest)
#include "tst_functionalapp.moc"
