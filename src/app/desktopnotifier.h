// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QSystemTrayIcon>

class QDBusPendingCallWatcher;

// Messages through the desktop's notification service (the freedesktop.org protocol 1.2, session bus).
// Nothing waits for the service: calls are asynchronous. GUI thread.
class DesktopNotifier : public QObject
{
    Q_OBJECT
public:
    explicit DesktopNotifier(QObject* parent = nullptr);

    // Whether a service has answered; known some milliseconds after construction.
    bool isAvailable() const { return m_available; }

    struct Message
    {
        QString title;
        QString text;
        QSystemTrayIcon::MessageIcon icon = QSystemTrayIcon::Information;
        int milliseconds = 5000;
        QString folder; // not empty: the message offers to open it
    };
    void show(const Message& message);

signals:
    void folderWanted(const QString& folder);             // the user chose "open folder"
    void failed(const DesktopNotifier::Message& message); // the service did not take it

private slots:
    void actionInvoked(uint id, const QString& action);
    void notificationClosed(uint id, uint reason);

private:
    void takeCapabilities(QDBusPendingCallWatcher* watcher);
    void takeReply(QDBusPendingCallWatcher* watcher, const Message& message);

    bool m_available = false;
    bool m_hasActions = false;
    bool m_hasMarkup = false;
    QHash<uint, QString> m_folders; // of the messages on the screen
};
