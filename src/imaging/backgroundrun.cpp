// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/backgroundrun.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>
#include <memory>

void runWithEvents(const std::function<void()>& work)
{
    const std::unique_ptr<QThread> worker(QThread::create(work));
    QEventLoop loop;
    QObject::connect(worker.get(), &QThread::finished, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    worker->start();
    loop.exec();
    // A quit of the application ends the inner loop early. The work is still finished before we return, and
    // events go on being delivered because it may be waiting for an answer of this thread.
    while (!worker->wait(20))
        QCoreApplication::processEvents();
}

void pumpEvents(int milliseconds)
{
    constexpr int kSliceMs = 100;
    QDeadlineTimer deadline(milliseconds);
    while (!deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, kSliceMs);
        QThread::msleep(5);
    }
}
