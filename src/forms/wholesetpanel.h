// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/settingbinding.h"

#include <QDialog>
#include <memory>

class BeforeAfter;

namespace Ui {
class wholesetpanel;
}

// The global settings: what holds for every scan function, whichever page it was started from, and the
// scanner's maintenance as a further page. GUI thread.
class wholesetpanel : public QDialog
{
    Q_OBJECT
public:
    explicit wholesetpanel(QWidget* parent = nullptr);
    ~wholesetpanel() override;

    // Adds the maintenance page and owns it from now on; once. The page has the signals exchangeStarted() and
    // exchangeEnded() around its use of the device and the slots readIni() and bool writeIni().
    void addMaintenancePage(QWidget* page);

    int scanTypeState() const { return m_scanTypeState; }

public slots:
    // The group "wholeSet".
    void readIni();
    bool writeIni(); // false, and a message: the file could not be written
    // The window's page that is in use: 0 the file page, 2 the scan page. Each page has its own way to speak
    // of splitting: the file page cuts documents, the scan page cuts pages.
    void changeScanTypeState(int mode);

    void accept() override; // stores and closes
    void reject() override; // closes; the controls show what is stored

signals:
    // 2: the maintenance page is about to use the device; 0: it is done.
    void getAndSetFunctionalSignals(int state);
    void settingsWritten();

protected:
    void showEvent(QShowEvent* event) override;

private slots:
    void lendDevice();
    void takeDeviceBack();

private:
    void bindControls();
    void addPreview();
    void showValues();
    void showEffect();
    void showBlank();
    void setDefaults();

    std::unique_ptr<Ui::wholesetpanel> m_ui;
    SettingBinding m_binding;
    BeforeAfter* m_preview;
    bool m_showsCharacters = false; // else the background
    QWidget* m_maintenance = nullptr;
    int m_scanTypeState = 2;
};
