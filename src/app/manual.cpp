// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/manual.h"

#include "config/paths.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QKeyEvent>

Manual::Manual(QObject* parent) : QObject(parent)
{
    m_viewer.setProcessChannelMode(QProcess::ForwardedChannels);
    m_viewer.setStandardInputFile(QProcess::nullDevice());
    connect(&m_viewer, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, &Manual::closed);
    connect(&m_viewer, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return; // finished() comes, too
        emit refused(tr("PDF 阅读器 %1 无法启动").arg(paths::pdfReader()));
        emit closed();
    });
    QCoreApplication::instance()->installEventFilter(this);
}

bool Manual::open()
{
    if (isOpen())
        return true;
    QString missing;
    if (!QFileInfo(paths::pdfReader()).isExecutable())
        missing = tr("找不到 PDF 阅读器 %1，请重新安装程序").arg(paths::pdfReader());
    else if (!QFileInfo::exists(paths::manual()))
        missing = tr("找不到用户手册 %1，请重新安装程序").arg(paths::manual());
    if (!missing.isEmpty()) {
        emit refused(missing);
        return false;
    }
    m_viewer.start(paths::pdfReader(), {paths::manual()});
    return m_viewer.state() != QProcess::NotRunning;
}

// A dialog is a window of its own: a shortcut of the main window does not count in it.
bool Manual::eventFilter(QObject* receiver, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(receiver, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier)
        return QObject::eventFilter(receiver, event);
    if (!key->isAutoRepeat())
        open();
    return true;
}
