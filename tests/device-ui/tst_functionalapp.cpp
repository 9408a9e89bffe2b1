// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "config/settingsfile.h"
#include "counterreplies.h"
#include "device/functionalapp.h"
#include "device/usb_communicate.h"
#include "forms-dialogs/driving.h"
#include "forms/wholesetpanel.h"

#include <QMessageBox>
#include <QProgressBar>
#include <QRadioButton>
#include <QSemaphore>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>

namespace {

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
    void init();
    void countersAreShown();
    void unpluggedDevice();
    void deniedDevice();
    void failedReads();
    void limitsDecideWhatIsDue();
    void standbyTimes();
    void standbyFailures();
    void resetAsksFirst();
    void failedReset();
    void windowLivesDuringAnExchange();
    void pageDestroyedDuringAnExchange();
    void nothingHappensDuringABatch();
    void settingsRoundTrip();
    void badSettings();
    void insideTheGlobalSettings();
    void keyboard();

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
    QList<QByteArray> sent() const { return sentFrames(m_script); }
    static QString field(const FunctionalApp& page, const char* name)
    {
        const auto* edit = control<QLineEdit>(page, name);
        return (edit->isEnabled() ? QString() : "off ") + edit->text();
    }
    static QStringList fields(const FunctionalApp& page)
    {
        return {field(page, "current_plat"), field(page, "target_incom"), field(page, "target_ruandian")};
    }
    static QString status(const FunctionalApp& page) { return control<QLabel>(page, "statusLabel")->text(); }
    static void showCounters(FunctionalApp& page)
    {
        control<QTabWidget>(page, "sleepOrCount")->setCurrentIndex(1);
        open(page);
        QTRY_VERIFY(!page.isExchanging() && status(page) != "尚未连接");
    }

    UsbScript m_script;
};

void FunctionalAppTest::init()
{
    QVERIFY(freshRoot());
    m_script.~UsbScript();
    new (&m_script) UsbScript;
}

void FunctionalAppTest::countersAreShown()
{
    FunctionalApp page(channel());
    QCOMPARE(fields(page), QStringList({"off 0", "off 0", "off 0"}));
    answer({0, 4660, 65535});
    showCounters(page); // reads by itself
    QCOMPARE(fields(page), QStringList({"0", "4660", "65535"}));
    QCOMPARE(status(page), QString("正常"));
    answer({1, 4661, 65535});
    click(page, "refreshButton");
    QCOMPARE(fields(page), QStringList({"1", "4661", "65535"}));
    QCOMPARE(sent().size(), 6);
    QCOMPARE(m_script.kept(), 0);
    QCOMPARE(QApplication::focusWidget()->objectName(), QString("refreshButton")); // where the user left it
}

void FunctionalAppTest::unpluggedDevice()
{
    FunctionalApp page(channel());
    answer({7, 8, 9});
    page.getScannerPrimiters();
    QCOMPARE(fields(page), QStringList({"7", "8", "9"}));
    m_script.present = false;
    page.getScannerPrimiters();
    QCOMPARE(fields(page), QStringList({"off 0", "off 0", "off 0"}));
    QCOMPARE(status(page), QString("扫描仪连接断开"));
    m_script.present = true; // back: no restart is needed
    answer({7, 8, 9});
    page.getScannerPrimiters();
    QCOMPARE(fields(page), QStringList({"7", "8", "9"}));
    QCOMPARE(status(page), QString("正常"));
    m_script.writing = {UsbStatus::NoDevice, QByteArray(8, 0)}; // away after it was opened
    page.getScannerPrimiters();
    QCOMPARE(fields(page), QStringList({"off 0", "off 0", "off 0"}));
    QCOMPARE(status(page), QString("扫描仪连接断开"));
}

void FunctionalAppTest::deniedDevice()
{
    FunctionalApp page(channel());
    m_script.opening = UsbStatus::Access;
    page.getScannerPrimiters();
    QCOMPARE(status(page), QString("没有访问扫描仪的权限"));
}

void FunctionalAppTest::failedReads()
{
    FunctionalApp page(channel());
    answer({100, 200, 300});
    page.getScannerPrimiters();
    m_script.replies = {{UsbStatus::Good, counterReply(111, 63)}, // short: stays as it is
                        {UsbStatus::Pipe, {}},
                        {UsbStatus::Pipe, {}},
                        {UsbStatus::Good, counterReply(333)}};
    page.getScannerPrimiters();
    QCOMPARE(fields(page), QStringList({"100", "off 200", "333"}));
    QVERIFY(status(page) != "正常");
    QVERIFY(control<QWidget>(page, "refreshButton")->isEnabled());
}

void FunctionalAppTest::limitsDecideWhatIsDue()
{
    FunctionalApp page(channel());
    auto* roller = control<QLabel>(page, "incomHintLabel");
    auto* pad = control<QLabel>(page, "ruandianHintLabel");
    answer({5, 60000, 27000});
    page.getScannerPrimiters();
    QVERIFY(roller->text().contains("需要更换") && !roller->text().contains("即将"));
    QVERIFY(pad->text().contains("即将需要更换"));
    QVERIFY(roller->font().bold());
    auto* bar = control<QProgressBar>(page, "incomBar");
    QCOMPARE(bar->value(), bar->maximum());
    control<QSpinBox>(page, "rollerLimit")->setValue(65535);
    QVERIFY(roller->text().contains("即将"));
    control<QSpinBox>(page, "padLimit")->setValue(54000);
    QVERIFY(!pad->font().bold());
    QCOMPARE(pad->text(), QString("还可使用约 27000 张"));
    QCOMPARE(control<QProgressBar>(page, "ruandianBar")->text(), QString("50%"));
}

void FunctionalAppTest::standbyTimes()
{
    FunctionalApp page(channel());
    open(page);
    const auto send = [&] {
        m_script.replies = {{UsbStatus::Good, QByteArray(8, 0)}};
        click(page, "sleepTime_btn");
        return sent().last();
    };
    auto* minutes = control<QSpinBox>(page, "sleeptime");
    QVERIFY(minutes->isEnabled());
    QCOMPARE(send(), QByteArray("50 57 52 00 00 0f 00 00"));
    const QList<QPair<int, QByteArray>> times{{59, "50 57 52 00 00 3b 00 00"},
                                              {60, "50 57 52 00 00 00 01 00"},
                                              {90, "50 57 52 00 00 1e 01 00"},
                                              {1440, "50 57 52 00 00 00 18 00"}};
    for (const auto& [time, frame] : times) {
        minutes->setFocus();
        minutes->selectAll();
        QTest::keyClicks(minutes, QString::number(time));
        QCOMPARE(send(), frame);
    }
    QVERIFY(status(page).startsWith("正常"));
    click(page, "no_sleep");
    QVERIFY(!minutes->isEnabled());
    QCOMPARE(send(), QByteArray("50 57 52 00 00 00 00 00"));
    click(page, "xiumian");
    QVERIFY(!minutes->isEnabled());
    QCOMPARE(send(), QByteArray("50 57 52 00 00 01 00 00"));
    click(page, "sleep");
    QVERIFY(minutes->isEnabled());
    QCOMPARE(m_script.kept(), 0);

    m_script.replies = {{UsbStatus::Good, QByteArray(8, 0)}};
    QCOMPARE(page.setSleepTime(45), 0);
    QCOMPARE(sent().last(), QByteArray("50 57 52 00 00 2d 00 00"));
}

void FunctionalAppTest::standbyFailures()
{
    FunctionalApp page(channel());
    open(page);
    m_script.present = false;
    click(page, "sleepTime_btn"); // no question, no box
    QCOMPARE(status(page), QString("扫描仪连接断开"));
    QCOMPARE(page.setSleepTime(15), 252);

    m_script.present = true;
    QString title, text;
    const auto readBox = [&](QMessageBox& box) {
        title = box.windowTitle();
        text = box.text();
        QTest::keyClick(&box, Qt::Key_Return);
    };
    inModal<QMessageBox>(readBox);
    click(page, "sleepTime_btn"); // no reply
    QCOMPARE(title + "|" + text, QString("提示|连接错误"));
    text.clear();
    m_script.writing = {UsbStatus::Io, QByteArray(8, 0)};
    inModal<QMessageBox>(readBox);
    click(page, "sleepTime_btn");
    QCOMPARE(text, QString("连接错误"));
    QVERIFY(control<QWidget>(page, "sleepTime_btn")->isEnabled());
}

void FunctionalAppTest::resetAsksFirst()
{
    FunctionalApp page(channel());
    answer({11, 22, 33});
    showCounters(page);
    m_script.transfers.clear();
    const struct
    {
        const char* button;
        QString beginning;
        QByteArray frame;
    } resets[] = {{"reset_plat", "扫描计数器", "43 4e 54 52 03 04 00 00"},
                  {"reset_btn_incom", "进纸滚轮计数器", "43 4e 54 52 03 01 00 00"},
                  {"reset_btn_ruandian", "软垫模组计数器", "43 4e 54 52 03 02 00 00"}};
    for (const auto& reset : resets) {
        inModal<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
        click(page, reset.button);
        inModal<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }); // the default
        click(page, reset.button);
        QCOMPARE(sent(), QList<QByteArray>());

        QString title, text;
        answer({0, 11, 22, 0}); // to the reset, then three counts
        inModal<QMessageBox>([&](QMessageBox& box) {
            title = box.windowTitle();
            text = box.text();
            QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
        });
        click(page, reset.button);
        QCOMPARE(title, QString("提示"));
        QCOMPARE(text, reset.beginning + "将重置为0。\n该动作不可撤销，确定要继续吗？\n"
                                         "点击【OK】重置计数器，或者点击【取消】退出");
        QCOMPARE(sent().value(0), reset.frame);
        QCOMPARE(sent().size(), 4);
        QCOMPARE(fields(page), QStringList({"11", "22", "0"}));
        m_script.transfers.clear();
    }
    QCOMPARE(m_script.kept(), 0);
}

void FunctionalAppTest::failedReset()
{
    FunctionalApp page(channel());
    answer({11, 22, 33});
    showCounters(page);
    const auto fail = [&] {
        QString text;
        inModal<QMessageBox>([&text](QMessageBox& box) {
            inModal<QMessageBox>([&text](QMessageBox& second) {
                text = second.windowTitle() + "|" + second.text();
                QTest::keyClick(&second, Qt::Key_Return);
            });
            QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
        });
        click(page, "reset_plat");
        return text;
    };
    QCOMPARE(fail(), QString("提示|连接错误")); // no reply
    m_script.present = false;
    QCOMPARE(fail(), QString("提示|连接错误"));
    QCOMPARE(status(page), QString("扫描仪连接断开"));
    QVERIFY(control<QWidget>(page, "reset_plat")->isEnabled());
}

void FunctionalAppTest::windowLivesDuringAnExchange()
{
    QSemaphore gate;
    FunctionalApp page(
        [&] { return std::make_unique<usb_communicate>(std::make_unique<SlowUsb>(m_script, gate)); });
    open(page);
    QStringList order;
    connect(&page, &FunctionalApp::exchangeStarted, [&] { order << "started"; });
    connect(&page, &FunctionalApp::exchangeEnded, [&] { order << "ended"; });
    control<QTabWidget>(page, "sleepOrCount")->setFocus();
    m_script.replies = {{UsbStatus::Good, QByteArray(8, 0)}};
    QElapsedTimer sinceTick;
    qint64 longest = 0;
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, [&] {
        longest = qMax(longest, sinceTick.restart());
        if (++ticks == 3) {
            order << "busy";
            for (const char* name : {"sleepTime_btn", "refreshButton", "reset_plat", "reset_btn_incom"})
                QVERIFY2(!control<QWidget>(page, name)->isEnabled(), name);
            page.getScannerPrimiters(); // refused
            control<QTabWidget>(page, "sleepOrCount")->setCurrentIndex(1);
            control<QTabWidget>(page, "sleepOrCount")->setCurrentIndex(0);
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
    QCOMPARE(order, QStringList({"started", "busy", "ended"}));
    QCOMPARE(sent().size(), 1);
}

void FunctionalAppTest::pageDestroyedDuringAnExchange()
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

void FunctionalAppTest::nothingHappensDuringABatch()
{
    FunctionalApp page(channel());
    QSignalSpy started(&page, &FunctionalApp::exchangeStarted);
    page.setScanRunning(true);
    showCounters(page);
    QCoreApplication::processEvents();
    QVERIFY(!control<QWidget>(page, "refreshButton")->isEnabled());
    page.on_sleepTime_btn_clicked(); // a click that was under way
    QCOMPARE(page.setSleepTime(5), 252);
    QCOMPARE(started.size(), 0);
    QCOMPARE(m_script.opens, 0);
    answer({1, 2, 3});
    page.setScanRunning(false);
    QTRY_COMPARE(fields(page), QStringList({"1", "2", "3"}));
    QVERIFY(control<QWidget>(page, "refreshButton")->isEnabled());
}

void FunctionalAppTest::settingsRoundTrip()
{
    {
        FunctionalApp page(channel());
        open(page);
        click(page, "xiumian");
        control<QSpinBox>(page, "sleeptime")->setValue(90);
        control<QSpinBox>(page, "rollerLimit")->setValue(65535);
        control<QSpinBox>(page, "padLimit")->setValue(1);
        control<QTabWidget>(page, "sleepOrCount")->setCurrentIndex(1);
        QVERIFY(page.writeIni());
    }
    const QString file = QString::fromUtf8(fileContent(paths::mainSettings()));
    for (const char* line :
         {"noSleep=false", "sleep=false", "xiumian=true", "sleeptime=90", "sleepOrCount=1"})
        QVERIFY2(file.contains(QLatin1String(line)), line);
    FunctionalApp page(channel());
    QVERIFY(control<QRadioButton>(page, "xiumian")->isChecked());
    QCOMPARE(control<QSpinBox>(page, "sleeptime")->value(), 90);
    QCOMPARE(control<QSpinBox>(page, "rollerLimit")->value(), 65535);
    QCOMPARE(control<QSpinBox>(page, "padLimit")->value(), 1);
    QCOMPARE(control<QTabWidget>(page, "sleepOrCount")->currentIndex(), 1);

    m_script.replies = {{UsbStatus::Good, QByteArray(8, 0)}};
    control<QRadioButton>(page, "no_sleep")->setChecked(true);
    page.on_sleepTime_btn_clicked(); // what was sent is what is kept
    page.readIni();
    QVERIFY(control<QRadioButton>(page, "no_sleep")->isChecked());
}

void FunctionalAppTest::badSettings()
{
    const auto read = [this](const QByteArray& content) {
        QFile::remove(paths::mainSettings());
        if (!putFile(paths::mainSettings(), content))
            qFatal("no settings file");
        const FunctionalApp page(channel());
        return QString("%1 %2 %3 %4 %5")
            .arg(control<QRadioButton>(page, "no_sleep")->isChecked() ? "no"
                 : control<QRadioButton>(page, "sleep")->isChecked()  ? "timed"
                                                                      : "now")
            .arg(control<QSpinBox>(page, "sleeptime")->value())
            .arg(control<QSpinBox>(page, "rollerLimit")->value())
            .arg(control<QSpinBox>(page, "padLimit")->value())
            .arg(control<QTabWidget>(page, "sleepOrCount")->currentIndex());
    };
    QCOMPARE(read(""), QString("timed 15 60000 30000 0"));
    QCOMPARE(read("[wholeSet]\nnoSleep=true\nsleep=true\nxiumian=true\nsleeptime=-4\nrollerLimit=0\npadLimit="
                  "65536\n"
                  "sleepOrCount=77\n"),
             QString("no 15 60000 30000 1"));
    QCOMPARE(read("[wholeSet]\nnoSleep=perhaps\nsleep=false\nxiumian=true\nsleeptime=1441\nrollerLimit=x\n"
                  "padLimit=1\nsleepOrCount=-1\n"),
             QString("now 15 60000 1 0"));
}

void FunctionalAppTest::insideTheGlobalSettings()
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

    control<QSpinBox>(*page, "padLimit")->setValue(12345);
    press(dialog, QDialogButtonBox::Cancel);
    QCOMPARE(control<QSpinBox>(*page, "padLimit")->value(), 30000);
    QVERIFY(!dialog.isVisible());
    open(dialog);
    control<QSpinBox>(*page, "padLimit")->setValue(12345);
    press(dialog, QDialogButtonBox::Apply);
    QVERIFY(dialog.isVisible());
    QVERIFY(fileContent(paths::mainSettings()).contains("padLimit=12345"));
}

void FunctionalAppTest::keyboard()
{
    wholesetpanel dialog;
    auto* page = new FunctionalApp(channel());
    dialog.addMaintenancePage(page);
    control<QTabWidget>(dialog, "pages")->setCurrentWidget(page);
    open(dialog);
    checkReachable(dialog);
    answer({4, 5, 6});
    control<QTabWidget>(*page, "sleepOrCount")->setCurrentIndex(1);
    QTRY_VERIFY(!page->isExchanging() && status(*page) == "正常");
    checkReachable(dialog);
    answer({9, 9, 9});
    QTest::keyClick(&dialog, Qt::Key_F, Qt::AltModifier);
    QTRY_COMPARE(fields(*page), QStringList({"9", "9", "9"}));
}

QTEST_MAIN(FunctionalAppTest)
#include "tst_functionalapp.moc"
