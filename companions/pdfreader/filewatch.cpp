// SPDX-License-Identifier: GPL-3.0-or-later
#include "filewatch.h"

#include <QFile>
#include <QFileInfo>
#include <sys/stat.h>

namespace reader {

FileWatch::FileWatch(QObject* parent) : QObject(parent)
{
    constexpr int quietMs = 500;
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quietMs);
    connect(&m_quiet, &QTimer::timeout, this, &FileWatch::compare);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_quiet, QOverload<>::of(&QTimer::start));
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_quiet, QOverload<>::of(&QTimer::start));
}

void FileWatch::watch(const QString& file)
{
    const QStringList old = m_watcher.files() + m_watcher.directories();
    if (!old.isEmpty())
        m_watcher.removePaths(old);
    m_quiet.stop();
    m_file = file;
    m_told = look();
    if (!file.isEmpty())
        m_watcher.addPaths({file, QFileInfo(file).absolutePath()});
}

FileWatch::State FileWatch::look() const
{
    struct stat about
    {
    };
    if (m_file.isEmpty() || stat(QFile::encodeName(m_file).constData(), &about) != 0)
        return {};
    return {QFileInfo(m_file).lastModified(), about.st_size, about.st_ino};
}

void FileWatch::compare()
{
    if (QFileInfo::exists(m_file) && !m_watcher.files().contains(m_file))
        m_watcher.addPath(m_file); // a replaced file is no longer watched
    const State now = look();
    if (now == m_told)
        return;
    m_told = now;
    if (now.size < 0)
        emit removed();
    else
        emit changed();
}

} // namespace reader
