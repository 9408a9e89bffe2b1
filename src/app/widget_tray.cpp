// SPDX-License-Identifier: GPL-3.0-or-later
// The tray icon, its menu and the balloons of the main window.
#include "app/widget.h"

#include "ui_widget.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QDebug>
#include <QDesktopServices>
#include <QFileInfo>
#include <QMenu>
#include <QStyle>
#include <QThread>
#include <QUrl>

namespace {

constexpr int kStateBalloonMs = 120000;
constexpr int kHintBalloonMs = 5000;
constexpr int kDockMs = 800;

} // namespace

void Widget::createActions()
{
    m_minimizeAction = new QAction(tr("最小化"), this);
    connect(m_minimizeAction, &QAction::triggered, this, &Widget::hideOrMinimise);
    m_showAction = new QAction(tr("显示窗体"), this);
    connect(m_showAction, &QAction::triggered, this, &QWidget::showNormal);
    m_quitAction = new QAction(tr("退出"), this);
    connect(m_quitAction, &QAction::triggered, this, [this] {
        if (closeTrigger())
            QCoreApplication::quit();
    });
}

void Widget::createTrayIcon()
{
    const auto addIcon = [this](const QString& text, const char* image) {
        ui->iconComboBox->addItem(QIcon(QLatin1String(image)), text);
    };
    addIcon(QStringLiteral("Ready"), ":/images/heart.png");
    addIcon(QStringLiteral("Ready"), ":/images/heart.png");
    addIcon(QStringLiteral("Stop"), ":/images/trash.png");
    addIcon(QStringLiteral("Error"), ":/images/bad.png");
    ui->iconComboBox->setCurrentIndex(1);

    const auto addType = [this](const QString& text, QStyle::StandardPixmap pixmap,
                                QSystemTrayIcon::MessageIcon icon) {
        ui->typeComboBox->addItem(style()->standardIcon(pixmap), text, static_cast<int>(icon));
    };
    addType(QStringLiteral("Information"), QStyle::SP_MessageBoxInformation, QSystemTrayIcon::Information);
    addType(QStringLiteral("Warning"), QStyle::SP_MessageBoxWarning, QSystemTrayIcon::Warning);
    addType(QStringLiteral("Critical"), QStyle::SP_MessageBoxCritical, QSystemTrayIcon::Critical);
    ui->typeComboBox->setCurrentIndex(0);

    m_trayMenu = new QMenu(this);
    m_trayMenu->addAction(m_minimizeAction);
    m_trayMenu->addAction(m_showAction);
    m_trayMenu->addSeparator();
    m_trayMenu->addAction(m_quitAction);
    m_tray = new QSystemTrayIcon(this);
    m_tray->setContextMenu(m_trayMenu);
    connect(m_tray, &QSystemTrayIcon::activated, this, &Widget::iconActivated);
    setIcon(1);

    m_notifier = new DesktopNotifier(this);
    connect(m_notifier, &DesktopNotifier::failed, this, &Widget::showTrayBalloon);
    connect(m_notifier, &DesktopNotifier::folderWanted, this,
            [](const QString& folder) { QDesktopServices::openUrl(QUrl::fromLocalFile(folder)); });
}

void Widget::showTrayBalloon(const DesktopNotifier::Message& message)
{
    m_tray->showMessage(message.title, message.text, message.icon, message.milliseconds);
}

void Widget::showBalloon(const DesktopNotifier::Message& message)
{
    if (m_notifier->isAvailable())
        m_notifier->show(message);
    else
        showTrayBalloon(message);
}

void Widget::waitForTray(int milliseconds)
{
    const auto waitFor = [](int limitMs, const auto& condition) {
        QDeadlineTimer deadline(limitMs);
        while (!condition() && !deadline.hasExpired()) {
            QCoreApplication::processEvents();
            QThread::msleep(20);
        }
    };
    waitFor(milliseconds, [] { return QSystemTrayIcon::isSystemTrayAvailable(); });
    m_tray->setVisible(true);
    // A balloon shown before the icon has its place would point to the corner of the screen.
    if (QSystemTrayIcon::isSystemTrayAvailable())
        waitFor(kDockMs, [this] { return !m_tray->geometry().topLeft().isNull(); });
}

void Widget::setIcon(int index)
{
    const QIcon icon = ui->iconComboBox->itemIcon(index);
    m_tray->setIcon(icon);
    setWindowIcon(icon);
    m_tray->setToolTip(ui->iconComboBox->itemText(index));
}

void Widget::triggerBubbleOn(int kind, const QString& title, const QString& text)
{
    m_lastText = text;
    m_lastTitle = title;
    m_lastKind = kind;
    setIcon(kind);
    showMessage();
}

namespace {

// Kinds 1, 2, 3 stand at the list's entries 0, 1, 2.
QSystemTrayIcon::MessageIcon iconOfKind(const QComboBox* types, int kind)
{
    return static_cast<QSystemTrayIcon::MessageIcon>(types->itemData(qMax(0, kind - 1)).toInt());
}

} // namespace

void Widget::showMessage()
{
    showBalloon({m_lastTitle, m_lastText, iconOfKind(ui->typeComboBox, m_lastKind), kStateBalloonMs, {}});
}

void Widget::iconActivated(QSystemTrayIcon::ActivationReason reason)
{
    switch (reason) {
    case QSystemTrayIcon::Trigger:
        showBalloon({tr("提示"),
                     tr("请双击或右键打开主界面"),
                     iconOfKind(ui->typeComboBox, m_lastKind),
                     kHintBalloonMs,
                     {}});
        break;
    case QSystemTrayIcon::DoubleClick:
        // Before the first report about the scanner nothing is known against it.
        if (m_connected || m_onlineState == 0)
            showNormal();
        else
            showBalloon({tr("警告"),
                         tr("扫描仪尚未连接"),
                         iconOfKind(ui->typeComboBox, m_lastKind),
                         kHintBalloonMs,
                         {}});
        break;
    case QSystemTrayIcon::MiddleClick:
        showMessage();
        break;
    default:
        break;
    }
}

void Widget::showMessageOnWindow(int kind, const QString& title, const QString& text)
{
    switch (kind) {
    case 1:
        triggerBubbleOn(1, title, text);
        break;
    case 2:
        triggerBubbleOn(2, title, text);
        show();
        break;
    case 3:
        show();
        triggerBubbleOn(3, title, text);
        break;
    case 4:
        hideOrMinimise();
        break;
    default:
        break;
    }
}

// Without a tray a hidden window could not be brought back.
void Widget::hideOrMinimise()
{
    if (QSystemTrayIcon::isSystemTrayAvailable())
        hide();
    else
        showMinimized();
}

void Widget::notice(const QString& text)
{
    qInfo().noquote() << "notice:" << text;
    showStatus(text);
    showBalloon({tr("提示"), text, QSystemTrayIcon::Information, kHintBalloonMs, {}});
}

void Widget::showSummary(const QString& summary)
{
    const bool problems = m_notices.hasProblems();
    showStatus(summary);
    if (problems)
        ui->statusLabel->setToolTip(m_notices.problems());
    qInfo().noquote() << "status:" << summary;
    DesktopNotifier::Message message{tr("提示"), summary, QSystemTrayIcon::Information, kHintBalloonMs, {}};
    if (!m_notices.saved().isEmpty())
        message.folder = QFileInfo(m_notices.saved().last()).path();
    // A balloon has no action: without problems it would only repeat the status line.
    if (m_notifier->isAvailable() || problems)
        showBalloon(message);
}

void Widget::showStatus(const QString& text)
{
    ui->statusLabel->setText(text);
    ui->statusLabel->setToolTip(text);
}
