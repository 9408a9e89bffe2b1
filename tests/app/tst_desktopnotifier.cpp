// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktopnotifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QSignalSpy>
#include <QtTest>

// The desktop's side: a notification service on a bus of the test's own.
class NotificationService : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    QStringList capabilities{QStringLiteral("body"), QStringLiteral("actions"),
                             QStringLiteral("body-markup")};
    bool refuses = false;
    QString title, body;
    QStringList actions;
    QVariantMap hints;
    uint count = 0;

public slots:
    QStringList GetCapabilities() { return capabilities; }
    uint Notify(const QString&, uint, const QString&, const QString& summary, const QString& text,
                const QStringList& offered, const QVariantMap& wishes, int, const QDBusMessage& message)
    {
        if (refuses) {
            message.setDelayedReply(true);
            QDBusConnection::sessionBus().send(
                message.createErrorReply(QDBusError::LimitsExceeded, "too many"));
            return 0;
        }
        title = summary;
        body = text;
        actions = offered;
        hints = wishes;
        return ++count;
    }

signals:
    void ActionInvoked(uint id, const QString& action);
    void NotificationClosed(uint id, uint reason);
};

class TestDesktopNotifier : public QObject
{
    Q_OBJECT

private:
    QProcess m_bus;
    NotificationService m_service;

private slots:
    void initTestCase()
    {
        m_bus.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        QVERIFY(m_bus.waitForReadyRead());
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
        QVERIFY(QDBusConnection::sessionBus().isConnected());
    }

    void cleanupTestCase()
    {
        m_bus.terminate();
        m_bus.waitForFinished();
    }

    void withoutServiceItIsNotAvailable()
    {
        DesktopNotifier notifier;
        QTest::qWait(200);
        QVERIFY(!notifier.isAvailable());
        QSignalSpy failed(&notifier, &DesktopNotifier::failed);
        notifier.show({"title", "text", QSystemTrayIcon::Information, 1000, {}});
        QTRY_COMPARE(failed.count(), 1);
    }

    void messagesOfferTheirOwnFolder()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        QVERIFY(bus.registerObject("/org/freedesktop/Notifications", &m_service,
                                   QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
        QVERIFY(bus.registerService("org.freedesktop.Notifications"));
        DesktopNotifier notifier;
        QTRY_VERIFY(notifier.isAvailable());
        QSignalSpy folders(&notifier, &DesktopNotifier::folderWanted);

        notifier.show({"done", "a < b", QSystemTrayIcon::Critical, 1000, "/scans/one"});
        QTRY_COMPARE(m_service.count, 1U);
        QCOMPARE(m_service.body, QString("a &lt; b"));
        QCOMPARE(m_service.actions.value(0), QString("open-folder"));
        QCOMPARE(m_service.hints.value("urgency").value<uchar>(), uchar(2));
        notifier.show({"done", "two", QSystemTrayIcon::Information, 1000, "/scans/two"});
        notifier.show({"no folder", "text", QSystemTrayIcon::Information, 1000, {}});
        QTRY_COMPARE(m_service.count, 3U);
        QVERIFY(m_service.actions.isEmpty());

        QTest::qWait(50);                                // the replies with the numbers
        emit m_service.ActionInvoked(77, "open-folder"); // another program's
        emit m_service.NotificationClosed(2, 1);
        emit m_service.ActionInvoked(2, "open-folder");
        emit m_service.ActionInvoked(1, "default");
        emit m_service.ActionInvoked(1, "open-folder");
        QTRY_COMPARE(folders.count(), 1);
        QCOMPARE(folders.value(0).value(0).toString(), QString("/scans/one"));
    }

    void aRefusedMessageComesBack()
    {
        DesktopNotifier notifier;
        QTRY_VERIFY(notifier.isAvailable());
        QSignalSpy failed(&notifier, &DesktopNotifier::failed);
        m_service.refuses = true;
        notifier.show({"title", "text", QSystemTrayIcon::Information, 1000, {}});
        QTRY_COMPARE(failed.count(), 1);
    }
};

QTEST_MAIN(TestDesktopNotifier)
#include "tst_desktopnotifier.moc"
