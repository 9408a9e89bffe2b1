// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCache>
#include <QDateTime>
#include <QMutex>
#include <QObject>
#include <QPixmap>
#include <QSet>
#include <QThreadPool>
#include <QVector>
#include <atomic>

// Small pictures of image files, made one after the other in one worker, the latest asked first. GUI thread.
class Thumbnails : public QObject
{
    Q_OBJECT
public:
    explicit Thumbnails(int side, QObject* parent = nullptr); // `side`: pixels of the longer one
    ~Thumbnails() override;

    // The picture of this state of the file. Null: it is being made (ready() follows), or the file is none
    // that can be shown.
    QPixmap picture(const QString& path, const QDateTime& modified);
    // Forgets what was asked for and is not made yet.
    void drop();

signals:
    void ready(const QString& path);

private:
    struct Wish
    {
        QString path;
        QString key;
    };

    void work();
    bool takeWish(Wish& wish);

    int m_side;
    QCache<QString, QPixmap> m_made; // cost: bytes; a null picture: cannot be shown
    QMutex m_mutex;                  // over the next three
    QVector<Wish> m_wishes;
    QSet<QString> m_making; // keys; until their picture has arrived
    bool m_working = false;
    std::atomic_bool m_stopped = false;
    QThreadPool m_pool;
};
