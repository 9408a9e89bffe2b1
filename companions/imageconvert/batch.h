// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "outputnames.h"

#include <QFile>
#include <atomic>
#include <functional>
#include <map>
#include <mutex>

namespace companion {

// Makes all pages of a request with as many workers as it asks for, no more than there are cores.
class Batch
{
    Q_DECLARE_TR_FUNCTIONS(Batch)

public:
    // `report`: open for writing, or nullptr. `stop` may be set by a signal: pages at hand are finished.
    Batch(const Request& request, QFile* report, const std::atomic<bool>& stop);

    // Exit status: 0 all is well, 1 a file or the report failed, 130 stopped.
    int run();

private:
    void work();
    void done(size_t place, const std::vector<PageReport>& reports);
    void showProgress(const QString& name);

    const Request& m_request;
    const std::vector<PlannedPage> m_pages;
    const std::atomic<bool>& m_stop;
    std::atomic<size_t> m_next{0};

    std::mutex m_mutex; // guards what follows
    QFile* m_report;
    std::map<size_t, QByteArray> m_waiting; // report lines of pages that overtook an earlier one
    size_t m_reported = 0;
    size_t m_finished = 0;
    bool m_failed = false;
    bool m_onTerminal;
};

} // namespace companion
