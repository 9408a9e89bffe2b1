// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/buttonwatch.h"

#include <QThread>
#include <memory>

class stateInfoPanel;

// The thread that watches the scanner's keys and, during a batch, feeds the status window, which it owns.
// Create, use and destroy it in the GUI thread; its signals come from its own thread.
class readBtn : public QThread
{
    Q_OBJECT
public:
    explicit readBtn(QObject* parent = nullptr);
    // With another USB library and other intervals.
    readBtn(std::unique_ptr<UsbApi> api, ButtonWatch::Intervals intervals, QObject* parent = nullptr);
    // Stops the thread and waits for it.
    ~readBtn() override;

    // Watches until stop(); what run() does.
    void scannerBtnStar();
    // Any thread. The thread ends after the step in progress; it cannot be started again.
    void stop();

    stateInfoPanel* panel() const;

public slots:
    // 0 idle, 1 a batch runs, 2 the device is lent to maintenance. For 1 and 2 the device is free on return
    // (at most 500 ms later).
    void getAndSetFunctionSlot(int state);
    // Shows a progress text in the status window. The control word "1234" ends the job; the others are not
    // for this window, and a fault that is on the screen gives way only to a new batch.
    void dialogShowSlot(const QString& text);

signals:
    // A key code, 4 = the device is not available, 5 = available and no key was pressed; once per poll.
    void buttonStateSignal(int code);
    // A text for the status window or a command to it.
    void stateInfoPanelSignal(const QString& commandOrText);
    // The scanner is there but this user may not open it (true), or that is over (false); once per change.
    void accessDeniedSignal(bool denied);

protected:
    void run() override;

private:
    ButtonWatch m_watch;
    std::unique_ptr<stateInfoPanel> m_panel;
};
