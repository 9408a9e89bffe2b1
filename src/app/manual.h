// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QProcess>

// The user manual in the viewer that is installed beside it, one at a time. Once made it answers to F1 in
// every window of the program. GUI thread.
class Manual : public QObject
{
    Q_OBJECT
public:
    explicit Manual(QObject* parent = nullptr);

    // Starts the viewer; false when that cannot be, and refused() has told why. An open one stays.
    bool open();
    bool isOpen() const { return m_viewer.state() != QProcess::NotRunning; }

signals:
    void refused(const QString& problem); // for the user
    void closed();

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    QProcess m_viewer;
};
