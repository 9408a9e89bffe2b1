// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/widget.h"
#include "config/freshroot.h"
#include "device/readbtn.h"
#include "device/scriptedusb.h"
#include "forms-dialogs/driving.h"
#include "forms/functionform.h"
#include "forms/panels.h"

#include <QStackedWidget>
#include <QTextCodec>
#include <memory>

// The main window without a scanner: SANE finds no backend here, and the scanner's keys are scripted.
class WindowFixture : public QObject
{
    Q_OBJECT

protected:
    UsbScript m_usb; // before the window, whose watcher uses it
    std::unique_ptr<Widget> m_window;

    void restart()
    {
        m_window.reset();
        m_window = std::make_unique<Widget>(std::make_unique<readBtn>(std::make_unique<ScriptedUsb>(m_usb),
                                                                      ButtonWatch::Intervals{20, 20, 10}),
                                            0);
        m_window->show();
    }

    // One of the window's own controls: the panels' forms use some of the pages' names and stand behind them.
    template <typename Control>
    Control* control(const char* name)
    {
        for (Control* found : m_window->findChildren<Control*>(QLatin1String(name))) {
            const QWidget* above = found;
            while (above && !qobject_cast<const FunctionForm*>(above) &&
                   !qobject_cast<const FolderPanel*>(above))
                above = above->parentWidget();
            if (!above)
                return found;
        }
        qFatal("no control %s", name);
    }
    template <typename Control>
    static Control* control(const QWidget& window, const char* name)
    {
        return ::control<Control>(window, name);
    }
    QString status() { return control<QLabel>("statusLabel")->text(); }
    QWidget* shownPanel() { return control<QStackedWidget>("functionStack")->currentWidget(); }

protected slots:
    void initTestCase()
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("utf-8"));
        const QString sane = defaultSaveFolder() + "-sane";
        QVERIFY(QDir().mkpath(sane));
        qputenv("SANE_CONFIG_DIR", QFile::encodeName(sane));
    }
    void init()
    {
        QVERIFY(freshRoot());
        restart();
    }
    void cleanup() { m_window.reset(); }
};
