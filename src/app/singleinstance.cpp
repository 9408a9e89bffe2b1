// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/singleinstance.h"

#include "config/installroot.h"

#include <QCryptographicHash>
#include <QDebug>
#include <QDir>
#include <QStandardPaths>

SingleInstance::SingleInstance()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty() || !QDir().mkpath(folder))
        folder = QDir::tempPath();
    // One lock per install root: demo runs and tests have roots of their own.
    const QByteArray root =
        QCryptographicHash::hash(installRoot().toUtf8(), QCryptographicHash::Md5).toHex().left(8);
    const QString user = QString::fromLocal8Bit(qgetenv("USER"));
    m_lock = std::make_unique<QLockFile>(folder + QStringLiteral("/qwd200-") + user +
                                         QString::fromLatin1(root) + QStringLiteral(".lock"));
    m_lock->setStaleLockTime(0); // held by a living process however long, broken at once when it is dead
    m_primary = m_lock->tryLock(0);
    if (!m_primary && m_lock->error() != QLockFile::LockFailedError) {
        // Without a place for the lock the program is more useful started twice than not at all.
        qWarning() << "no single-instance lock in" << folder;
        m_primary = true;
    }
}
