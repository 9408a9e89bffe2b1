// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktopnotifier.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDebug>
#include <QGuiApplication>
#include <QVariantMap>

namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kOpenFolder = QStringLiteral("open-folder");

QDBusMessage serviceCall(const char* method)
{
    return QDBusMessage::createMethodCall(kService, kPath, kService, QLatin1String(method));
}

// The hint "urgency": 0 low, 1 normal, 2 critical.
uchar urgency(QSystemTrayIcon::MessageIcon icon)
{
    return icon == QSystemTrayIcon::Critical ? 2 : 1;
}

QString iconName(QSystemTrayIcon::MessageIcon icon)
{
    switch (icon) {
    case QSystemTrayIcon::Critical:
        return QStringLiteral("dialog-error");
    case QSystemTrayIcon::Warning:
        return QStringLiteral("dialog-warning");
    default:
        return QGuiApplication::desktopFileName();
    }
}

} // namespace

DesktopNotifier::DesktopNotifier(QObject* parent) : QObject(parent)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    bus.connect(kService, kPath, kService, QStringLiteral("ActionInvoked"), this,
                SLOT(actionInvoked(uint, QString)));
    bus.connect(kService, kPath, kService, QStringLiteral("NotificationClosed"), this,
                SLOT(notificationClosed(uint, uint)));
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(serviceCall("GetCapabilities")), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &DesktopNotifier::takeCapabilities);
}

void DesktopNotifier::takeCapabilities(QDBusPendingCallWatcher* watcher)
{
    const QDBusPendingReply<QStringList> reply = *watcher;
    watcher->deleteLater();
    if (reply.isError()) {
        qDebug().noquote() << "no notification service:" << reply.error().message();
        return;
    }
    m_available = true;
    m_hasActions = reply.value().contains(QLatin1String("actions"));
    m_hasMarkup = reply.value().contains(QLatin1String("body-markup"));
}

void DesktopNotifier::show(const Message& message)
{
    QStringList actions;
    if (m_hasActions && !message.folder.isEmpty())
        actions << kOpenFolder << tr("打开文件夹");
    const QVariantMap hints{{QStringLiteral("urgency"), QVariant::fromValue(urgency(message.icon))},
                            {QStringLiteral("desktop-entry"), QGuiApplication::desktopFileName()}};
    QDBusMessage call = serviceCall("Notify");
    call << QCoreApplication::applicationName() << 0U << iconName(message.icon) << message.title
         << (m_hasMarkup ? message.text.toHtmlEscaped() : message.text) << actions << hints
         << message.milliseconds;
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, message](QDBusPendingCallWatcher* finished) { takeReply(finished, message); });
}

void DesktopNotifier::takeReply(QDBusPendingCallWatcher* watcher, const Message& message)
{
    const QDBusPendingReply<uint> reply = *watcher;
    watcher->deleteLater();
    if (reply.isError()) {
        qWarning().noquote() << "the notification service refused a message:" << reply.error().message();
        emit failed(message);
    } else if (!message.folder.isEmpty()) {
        m_folders.insert(reply.value(), message.folder);
    }
}

void DesktopNotifier::actionInvoked(uint id, const QString& action)
{
    // The signal tells of every program's messages.
    if (action == kOpenFolder && m_folders.contains(id))
        emit folderWanted(m_folders.take(id));
}

void DesktopNotifier::notificationClosed(uint id, uint)
{
    m_folders.remove(id);
}
