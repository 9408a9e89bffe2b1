// SPDX-License-Identifier: GPL-3.0-or-later
// The status window as a user meets it, and the thread that feeds it.
#include "config/freshroot.h"
#include "device/cancelflag.h"
#include "device/readbtn.h"
#include "device/statefile.h"
#include "device/stateinfopanel.h"
#include "device/statetexts.h"
#include "scriptedusb.h"

#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace {

QPushButton* button(const stateInfoPanel& panel, const char* name)
{
    return panel.findChild<QPushButton*>(QLatin1String(name));
}

QStringList offered(const stateInfoPanel& panel)
{
    QStringList names;
    for (const QPushButton* each : panel.findChildren<QPushButton*>()) {
        if (each->isVisible() && each->isEnabled())
            names << each->text();
    }
    return names;
}

QString shown(const stateInfoPanel& panel)
{
    return panel.findChild<QLabel*>(QStringLiteral("textLabel"))->text();
}

void beginBatch(stateInfoPanel& panel)
{
    panel.setShowString(state::text(state::Preparing));
    panel.stateInfoPanelSlot("setButtonHide");
    panel.stateInfoPanelSlot("showWindow");
}

} // namespace

class TestStateInfoPanel : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(freshRoot());
        cancelflag::clear();
    }

    void aBatch()
    {
        stateInfoPanel panel;
        QCOMPARE(panel.windowModality(), Qt::ApplicationModal);
        QVERIFY(panel.getButtonState());
        beginBatch(panel);
        QVERIFY(panel.isVisible());
        QVERIFY(!panel.getButtonState());
        QCOMPARE(offered(panel), QStringList("取消扫描"));
        panel.stateInfoPanelSlot("正在扫描第1张图像");
        QCOMPARE(shown(panel), QString("正在扫描第1张图像"));
        QCOMPARE(offered(panel), QStringList("取消扫描"));
        for (const Qt::Key stray : {Qt::Key_Return, Qt::Key_Space})
            QTest::keyClick(panel.focusWidget() ? panel.focusWidget() : &panel, stray);
        QVERIFY(!cancelflag::isSet());
        panel.stateInfoPanelSlot("closeWindow");
        QVERIFY(!panel.isVisible());
        QVERIFY(panel.getButtonState());
    }

    void faultsStayUntilConfirmed()
    {
        stateInfoPanel panel;
        panel.setButtonName("知道了");
        QSignalSpy confirmed(&panel, &stateInfoPanel::confirmed);
        for (const int code : {1005, 1006, 1007, 1009}) {
            beginBatch(panel);
            QCOMPARE(shown(panel), QString("正在准备扫描"));
            panel.stateInfoPanelSlot(state::text(code));
            QCOMPARE(offered(panel), QStringList("知道了"));
            panel.stateInfoPanelSlot("正在扫描第2张图像"); // it was put right
            QCOMPARE(offered(panel), QStringList("取消扫描"));
            panel.stateInfoPanelSlot(state::text(code));
            confirmed.clear();
            QTest::keyClick(&panel, Qt::Key_Return);
            QCOMPARE(confirmed.count(), 1);
            QVERIFY(!panel.isVisible());
        }
        panel.show(); // closing without a batch
        QVERIFY(panel.close());
        QVERIFY(!cancelflag::isSet()); // neither cancels anything
    }

    void cancel()
    {
        for (const char* how : {"button", "Esc", "window closed"}) {
            cancelflag::clear();
            const bool stays = how != QLatin1String("window closed");
            stateInfoPanel panel;
            beginBatch(panel);
            panel.stateInfoPanelSlot("正在扫描第1张图像");
            QSignalSpy cancelled(&panel, &stateInfoPanel::cancelRequested);
            if (how == QLatin1String("button"))
                button(panel, "cancelButton")->click();
            else if (how == QLatin1String("Esc"))
                QTest::keyClick(&panel, Qt::Key_Escape);
            else
                panel.close();
            QVERIFY(cancelflag::isSet());
            QCOMPARE(cancelled.count(), 1);
            QCOMPARE(panel.isVisible(), stays);
            QCOMPARE(offered(panel), QStringList());
            panel.stateInfoPanelSlot("正在扫描第2张图像"); // still in the page
            if (stays) {
                QCOMPARE(shown(panel), QString("正在取消扫描，请稍候……"));
                panel.stateInfoPanelSlot(state::text(state::Cancelled));
                QCOMPARE(shown(panel), QString("取消扫描"));
            }
            QTest::keyClick(&panel, Qt::Key_Escape); // twice: let me out
            QVERIFY(!panel.isVisible());
            QCOMPARE(cancelled.count(), 1);

            beginBatch(panel);
            QCOMPARE(offered(panel), QStringList("取消扫描"));
        }
    }

    void nextPage()
    {
        for (const int key : {int(Qt::Key_Return), int(Qt::Key_Escape), 0}) { // 0: the window is closed
            stateInfoPanel panel;
            beginBatch(panel);
            QSignalSpy answers(&panel, &stateInfoPanel::nextPageAnswered);
            panel.askNextPage();
            QCOMPARE(shown(panel), QString("继续扫描下一页？"));
            QCOMPARE(offered(panel), QStringList({"继续", "完成"}));
            if (key)
                QTest::keyClick(&panel, Qt::Key(key));
            else
                panel.close();
            QCOMPARE(answers.count(), 1);
            QCOMPARE(answers[0][0].toBool(), key == Qt::Key_Return);
            QVERIFY(!cancelflag::isSet()); // declining ends the batch, it does not throw it away
            if (key)
                QCOMPARE(offered(panel), QStringList("取消扫描"));
        }
    }

    // What the scanner says meanwhile waits behind the question; a batch that ends without an answer declines
    // it.
    void nextPageDuringTexts()
    {
        stateInfoPanel panel;
        beginBatch(panel);
        QSignalSpy answers(&panel, &stateInfoPanel::nextPageAnswered);
        panel.askNextPage();
        panel.stateInfoPanelSlot("正在扫描第2张图像");
        QCOMPARE(shown(panel), QString("继续扫描下一页？"));
        panel.stateInfoPanelSlot(state::text(state::JamOrCoverOpen));
        QCOMPARE(offered(panel), QStringList({"继续", "完成"}));
        button(panel, "finishButton")->click();
        QCOMPARE(offered(panel), QStringList("确定")); // the fault comes to light
        QCOMPARE(shown(panel), state::text(state::JamOrCoverOpen));

        panel.askNextPage();
        panel.stateInfoPanelSlot("closeWindow");
        QCOMPARE(answers.count(), 2);
        QVERIFY(!answers[1][0].toBool());
        QVERIFY(!panel.isVisible());
    }

    void everyTextFits()
    {
        stateInfoPanel panel;
        beginBatch(panel);
        auto* label = panel.findChild<QLabel*>(QStringLiteral("textLabel"));
        for (int code = 0; code < 3000; ++code) {
            const QString text = state::text(code);
            if (text.isEmpty())
                continue;
            panel.stateInfoPanelSlot(text);
            panel.layout()->activate();
            QVERIFY2(label->heightForWidth(label->width()) <= label->height(), qPrintable(text));
        }
    }

    void progressWords()
    {
        UsbScript usb;
        readBtn watcher(std::make_unique<ScriptedUsb>(usb), {1, 1, 1});
        const stateInfoPanel& panel = *watcher.panel();
        QVERIFY(state::write(3));
        watcher.dialogShowSlot("正在准备扫描");
        watcher.getAndSetFunctionSlot(1);
        watcher.start();
        QTRY_COMPARE(panel.showString(), QString("正在扫描第3张图像"));
        watcher.dialogShowSlot("正在处理第1张图像");
        for (const char* word : {"2222", "3333", "4444"})
            watcher.dialogShowSlot(word);
        QCOMPARE(panel.showString(), QString("正在处理第1张图像"));
        QVERIFY(panel.isVisible());

        const QString jam = state::text(state::JamOrCoverOpen);
        QVERIFY(state::write(state::JamOrCoverOpen));
        QTRY_COMPARE(panel.showString(), jam);
        watcher.dialogShowSlot("正在处理第2张图像"); // the pages before the jam
        QSignalSpy polls(&watcher, &readBtn::buttonStateSignal);
        watcher.dialogShowSlot("1234");
        QTRY_VERIFY(!polls.isEmpty());
        QCOMPARE(panel.showString(), jam);
        QVERIFY(panel.isVisible() && panel.getButtonState());

        watcher.dialogShowSlot("正在准备扫描");
        QCOMPARE(panel.showString(), QString("正在准备扫描"));
    }
};

QTEST_MAIN(TestStateInfoPanel)
#include "tst_stateinfopanel.moc"
