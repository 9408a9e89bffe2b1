// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/maintenance.h"

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

class QPushButton;
class usb_communicate;

namespace Ui {
class FunctionalApp;
}

// The maintenance page: standby time and wear counters of the scanner. GUI thread. An exchange with the
// device runs in a worker thread; its caller waits in an event loop, so the window lives on. Only one runs at
// a time, and none while a batch is scanned (setScanRunning).
class FunctionalApp : public QWidget
{
    Q_OBJECT
public:
    using MakeChannel = std::function<std::unique_ptr<usb_communicate>()>;

    explicit FunctionalApp(QWidget* parent = nullptr);
    // With other channels to the device; called in the worker thread, once per exchange.
    explicit FunctionalApp(MakeChannel makeChannel, QWidget* parent = nullptr);
    ~FunctionalApp() override;

    // Reads and shows all three counters.
    void getScannerPrimiters();
    // Standby after 0 (never) to 1440 minutes, whatever the dialog shows. Returns 0 or the failure's code
    // (usb_communicate); DeviceNotFound also while the device is in use.
    int setSleepTime(int minutes);

    bool isExchanging() const { return m_exchanging; }

public slots:
    // The group "wholeSet": open tab, standby choice, minutes and the counters' limits.
    void readIni();
    bool writeIni(); // false: the file could not be written
    // While the scanner works on a batch the device is not to be had.
    void setScanRunning(bool running);

    void on_sleepTime_btn_clicked();
    void on_reset_plat_clicked();
    void on_reset_btn_incom_clicked();
    void on_reset_btn_ruandian_clicked();
    void on_refreshButton_clicked();
    void on_no_sleep_clicked(bool checked);
    void on_sleep_clicked(bool checked);
    void on_xiumian_clicked(bool checked);

signals:
    // Around each exchange: whoever else uses the device lets go of it before exchangeStarted() returns.
    void exchangeStarted();
    void exchangeEnded();

protected:
    void showEvent(QShowEvent* event) override;

private:
    struct CounterControls;
    using Work = std::function<void(usb_communicate&)>;

    void setUpCounters();
    bool exchange(const Work& work);
    void enableButtons();
    void readWhenShown();
    void showReading(const CounterControls& controls, const maintenance::Reading& reading);
    void showWear(const CounterControls& controls);
    void reset(maintenance::Counter counter);
    int sendStandby(int minutes);
    bool confirm(const QString& text);
    void showUnavailable();
    void showResult(int result, const QString& success);
    void showConnectionError();
    void showStatus(const QString& text, bool good);
    void showStandby();

    std::unique_ptr<Ui::FunctionalApp> m_ui;
    MakeChannel m_makeChannel;
    std::vector<CounterControls> m_counters; // in maintenance::kReadingOrder
    bool m_exchanging = false;
    bool m_scanRunning = false;
    bool m_accessDenied = false; // found by the last exchange
};
