// SPDX-License-Identifier: GPL-3.0-or-later
#include "batch.h"

#include "pageworker.h"

#include <algorithm>
#include <cstdio>
#include <thread>
#include <unistd.h>

namespace companion {

namespace {

constexpr const char* kClearLine = "\r\033[K";

// What went wrong outside of the library, which itself never throws.
std::vector<PageReport> processed(PageWorker& worker, const PlannedPage& page)
{
    PageReport failure;
    failure.file = page.file;
    try {
        return worker.process(page);
    } catch (const std::bad_alloc&) {
        failure.error = QStringLiteral("not enough memory");
    } catch (const std::exception& error) {
        failure.error = QString::fromLocal8Bit(error.what());
    }
    return {failure};
}

} // namespace

Batch::Batch(const Request& request, QFile* report, const std::atomic<bool>& stop)
    : m_request(request), m_pages(planPages(request)), m_stop(stop), m_report(report),
      m_onTerminal(isatty(STDERR_FILENO) == 1)
{
}

int Batch::run()
{
    const size_t cores = std::max(1U, std::thread::hardware_concurrency());
    const size_t workers = std::min({static_cast<size_t>(m_request.jobs), cores, m_pages.size()});
    std::vector<std::thread> helpers;
    for (size_t i = 1; i < workers; ++i)
        helpers.emplace_back([this] { work(); });
    work();
    for (std::thread& helper : helpers)
        helper.join();

    if (m_onTerminal)
        std::fputs(kClearLine, stderr);
    if (m_report && (!m_report->flush() || m_report->error() != QFile::NoError)) {
        std::fprintf(stderr, "%s\n", qPrintable(tr("报告无法写完：%1").arg(m_report->errorString())));
        m_failed = true;
    }
    if (m_finished < m_pages.size()) {
        std::fprintf(stderr, "%s\n",
                     qPrintable(tr("已中断：%1 页中完成了 %2 页").arg(m_pages.size()).arg(m_finished)));
        return 130;
    }
    return m_failed ? 1 : 0;
}

void Batch::work()
{
    PageWorker worker(m_request);
    for (size_t place = m_next++; place < m_pages.size() && !m_stop; place = m_next++) {
        showProgress(m_pages[place].file);
        done(place, processed(worker, m_pages[place]));
    }
}

void Batch::done(size_t place, const std::vector<PageReport>& reports)
{
    QByteArray lines;
    for (const PageReport& report : reports)
        lines += reportLine(report) + '\n';
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_finished;
    for (const PageReport& report : reports)
        if (report.failed()) {
            m_failed = true;
            std::fprintf(stderr, "%s%s\n", m_onTerminal ? kClearLine : "",
                         qPrintable(tr("%1：处理失败：%2").arg(report.file, report.error)));
        }
    if (!m_report)
        return;
    m_waiting[place] = lines;
    for (auto next = m_waiting.begin(); next != m_waiting.end() && next->first == m_reported;
         next = m_waiting.erase(next), ++m_reported)
        m_report->write(next->second);
    m_report->flush();
}

void Batch::showProgress(const QString& name)
{
    if (!m_onTerminal)
        return;
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::fprintf(stderr, "%s%s", kClearLine,
                 qPrintable(tr("第 %1 页，共 %2 页  %3").arg(m_finished + 1).arg(m_pages.size()).arg(name)));
    std::fflush(stderr);
}

} // namespace companion
