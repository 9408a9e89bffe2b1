// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/buttonwatch.h"

#include "device/statefile.h"
#include "device/statetexts.h"

#include <QDebug>
#include <chrono>

namespace {

constexpr unsigned int reportBytes = 8; // room for a report; a press has 4
constexpr int pressBytes = 4;
constexpr unsigned char pressTag = 0x04;
constexpr int keptReports = 16; // more presses than the scanner remembers
constexpr std::chrono::milliseconds letGo(500);

} // namespace

int buttoncode::ofReport(const unsigned char* report, int length)
{
    if (length != pressBytes || report[0] != pressTag || report[1] != 0 || report[2] != 0)
        return NoPress;
    const int code = report[3];
    if (code == DeviceAbsent || code == NoPress) {
        qWarning("key report with code %d ignored", code);
        return NoPress;
    }
    return code;
}

ButtonWatch::ButtonWatch(std::unique_ptr<UsbApi> api, Intervals intervals, Reports reports)
    : m_usb(std::move(api)), m_intervals(intervals), m_reports(std::move(reports))
{
}

void ButtonWatch::loop()
{
    for (;;) {
        std::unique_lock lock(m_mutex);
        if (!m_running)
            return;
        const int current = m_state;
        if (current == Lent) {
            m_changed.wait(lock, [this] { return !m_running || m_state != Lent; });
            continue;
        }
        lock.unlock();
        if (current == Job)
            followJob();
        else
            idleStep();
    }
}

void ButtonWatch::stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_running = false;
    }
    m_changed.notify_all();
}

void ButtonWatch::setState(int newState)
{
    if (newState < Idle || newState > Lent) {
        qWarning("the key watcher has no state %d", newState);
        return;
    }
    std::unique_lock lock(m_mutex);
    if (newState == m_state)
        return;
    m_state = newState;
    if (newState == Job)
        ++m_jobs;
    m_changed.notify_all();
    if (newState == Idle)
        return;
    if (!m_changed.wait_for(lock, letGo, [this] { return !m_polling; })) {
        qWarning("the poll in progress does not let go of the scanner");
        return;
    }
    m_usb.close(); // what a failed release left open
    qDebug("release device in slot");
}

int ButtonWatch::state() const
{
    const std::lock_guard lock(m_mutex);
    return m_state;
}

int ButtonWatch::lastButton() const
{
    const std::lock_guard lock(m_mutex);
    return m_lastButton;
}

void ButtonWatch::setShownText(const QString& text)
{
    const std::lock_guard lock(m_mutex);
    m_shownText = text;
}

QString ButtonWatch::shownText() const
{
    const std::lock_guard lock(m_mutex);
    return m_shownText;
}

unsigned ButtonWatch::jobsBegun() const
{
    const std::lock_guard lock(m_mutex);
    return m_jobs;
}

bool ButtonWatch::isCurrent(int state, unsigned job) const
{
    const std::lock_guard lock(m_mutex);
    return m_running && m_state == state && m_jobs == job;
}

void ButtonWatch::wait(int milliseconds, int whileState, unsigned whileJob)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, std::chrono::milliseconds(milliseconds),
                       [&] { return !m_running || m_state != whileState || m_jobs != whileJob; });
}

// False when the device is not the watcher's at the moment.
bool ButtonWatch::beginPoll()
{
    const std::lock_guard lock(m_mutex);
    m_polling = m_running && m_state == Idle;
    return m_polling;
}

void ButtonWatch::endPoll()
{
    {
        const std::lock_guard lock(m_mutex);
        m_polling = false;
    }
    m_changed.notify_all();
}

void ButtonWatch::idleStep()
{
    const unsigned job = jobsBegun();
    if (!beginPoll())
        return;
    const Poll result = poll(job != m_readAway);
    const bool denied = m_usb.accessDenied();
    endPoll();

    reportAccess(denied);
    if (result.releaseFailed) {
        qWarning("usb releaseDevice RETURN_ERROR");
        wait(m_intervals.afterFailedRelease, Idle, job);
        return;
    }
    m_readAway = job; // a device that is gone has forgotten its presses too
    // A press that crossed the start of a job is one made during the job.
    if (jobsBegun() == job)
        m_reports.button(result.code);
    wait(m_intervals.poll, Idle, job);
}

ButtonWatch::Poll ButtonWatch::poll(bool discardPresses)
{
    Poll result;
    if (m_usb.initDevice() != usb_communicate::Done) {
        result.code = buttoncode::DeviceAbsent;
        return result;
    }
    result.code = discardPresses ? discardKeys() : readKey();
    result.releaseFailed = m_usb.releaseDevice() == usb_communicate::DeviceError;
    return result;
}

int ButtonWatch::readKey()
{
    unsigned char report[reportBytes] = {};
    const int code = buttoncode::ofReport(report, m_usb.ReadCmd(report, reportBytes));
    if (code != buttoncode::NoPress) {
        qInfo("scanner key %d", code);
        const std::lock_guard lock(m_mutex);
        m_lastButton = code;
    }
    return code;
}

// Reads everything away that was pressed during a job.
int ButtonWatch::discardKeys()
{
    unsigned char report[reportBytes] = {};
    for (int reports = 0; reports < keptReports; ++reports) {
        const int length = m_usb.ReadCmd(report, reportBytes);
        if (length == usb_communicate::ReadFailed)
            break;
        const int code = buttoncode::ofReport(report, length);
        if (code != buttoncode::NoPress)
            qInfo("key %d, pressed during the job, ignored", code);
    }
    return buttoncode::NoPress;
}

void ButtonWatch::reportAccess(bool denied)
{
    if (denied == m_accessDenied)
        return;
    m_accessDenied = denied;
    if (denied)
        qWarning("no right to open the scanner");
    m_reports.access(denied);
}

void ButtonWatch::followJob()
{
    const unsigned job = jobsBegun();
    m_reports.panel(panelcommand::HideButton);
    m_reports.panel(panelcommand::ShowWindow);
    JobView view;
    while (isCurrent(Job, job)) {
        if (showState(view)) {
            const std::lock_guard lock(m_mutex);
            if (m_state == Job && m_jobs == job)
                m_state = Idle;
            return;
        }
        wait(m_intervals.stateFile, Job, job);
    }
    // Ended by others: once more, since a fault is written right before the end.
    if (isCurrent(Idle, job) && !showState(view) && !state::isFaultText(shownText()))
        m_reports.panel(panelcommand::CloseWindow);
}

// True when the state file says that the job is over; the window is closed then.
bool ButtonWatch::showState(JobView& view)
{
    int code = -1;
    const bool readable = state::read(code);
    if (!readable && view.readable)
        qWarning("open error");
    view.readable = readable;
    if (code == state::Idle) {
        // Still the end of the job before: this one has not written yet.
        if (shownText() == state::text(state::Preparing))
            return false;
        m_reports.panel(panelcommand::CloseWindow);
        return true;
    }
    if (code == view.code)
        return false;
    view.code = code;
    const QString text = state::text(code);
    if (!text.isEmpty()) {
        setShownText(text);
        m_reports.panel(text);
    }
    return false;
}
