// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QObject>
#include <QTimer>
#include <functional>

class QComboBox;
class QWidget;

// Marks the selected template in its list while the window shows other settings. Looks again a moment after a
// control of the window has changed, and when the window becomes active (a dialog may have stored something).
// GUI thread.
class TemplateMark : public QObject
{
    Q_OBJECT
public:
    // `differs`: whether the settings differ from those of the template of this name.
    TemplateMark(QWidget* window, QComboBox* list, std::function<bool(const QString&)> differs);

    void look(); // at once
    void lookSoon() { m_soon.start(); }
    bool isMarked() const { return m_marked; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow(QWidget* control);

    QWidget* m_window;
    QComboBox* m_list;
    std::function<bool(const QString&)> m_differs;
    QTimer m_soon;
    bool m_marked = false;
};
