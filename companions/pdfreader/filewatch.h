// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QTimer>

namespace reader {

// Tells when the file that is shown becomes another one: written in place, replaced, removed. A change is
// told once, and only when the file has been quiet for half a second: whoever writes it may not be done.
class FileWatch : public QObject
{
    Q_OBJECT
public:
    explicit FileWatch(QObject* parent = nullptr);
    void watch(const QString& file); // empty: nothing

signals:
    void changed();
    void removed();

private:
    struct State
    {
        QDateTime written;
        qint64 size = -1;
        quint64 inode = 0;
        bool operator==(const State& o) const
        {
            return written == o.written && size == o.size && inode == o.inode;
        }
    };
    State look() const;
    void compare();

    QFileSystemWatcher m_watcher;
    QTimer m_quiet;
    QString m_file;
    State m_told;
};

} // namespace reader
