// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/lastpage.h"

#include <QImage>
#include <QObject>
#include <QString>
#include <QTemporaryDir>
#include <QThreadPool>
#include <functional>

// Shows what settings do to the page that was scanned last, or to a drawn page when there is none yet: makes
// the picture in a worker, so that the sliders move freely. Of several requests only the newest is finished.
// GUI thread.
class EffectPreview : public QObject
{
    Q_OBJECT
public:
    struct Result
    {
        QImage picture; // null: could not be made
        QString text;   // what else is to be told
    };
    // Runs in the worker; `folder` (with "/") is for its files.
    using Work = std::function<Result(const SamplePage& sample, const QString& folder)>;

    explicit EffectPreview(QObject* parent = nullptr);
    ~EffectPreview() override; // waits for the worker

    void request(Work work);

signals:
    // `before` is the detail as it was scanned; `drawn`: nothing has been scanned yet.
    void ready(const QImage& before, const EffectPreview::Result& after, bool drawn);

private:
    void begin();
    void finished(const QImage& before, const Result& after, bool drawn);

    QTemporaryDir m_folder;
    QThreadPool m_pool;
    Work m_waiting;
    bool m_busy = false;
};
