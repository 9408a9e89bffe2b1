// SPDX-License-Identifier: GPL-3.0-or-later
#include "scansession.h"

#include "options.h"

#include <algorithm>
#include <poll.h>

namespace vscan {

namespace {

constexpr int paceSliceMs = 10; // how late a cancel or an unplugged scanner may be noticed

SANE_Status toSane(Status status)
{
    return static_cast<SANE_Status>(status);
}

} // namespace

// Keeps the handle to this call. A cancel that arrives meanwhile finds the lock taken and is carried out by
// the call that holds it, when it lets go.
class ScanSession::Busy
{
public:
    explicit Busy(ScanSession& session) : m_session(session)
    {
        m_session.m_mutex.lock();
        m_session.finishCancel();
    }
    ~Busy()
    {
        m_session.finishCancel();
        m_session.m_mutex.unlock();
        if (m_session.m_cancel && m_session.m_mutex.try_lock()) {
            m_session.finishCancel();
            m_session.m_mutex.unlock();
        }
    }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    ScanSession& m_session;
};

ScanSession::~ScanSession()
{
    // Waits for the answer, so that a client may open again at once.
    m_link.request({verb::close});
}

SANE_Status ScanSession::open()
{
    return m_link.connect() ? toSane(m_link.request({verb::open})) : SANE_STATUS_IO_ERROR;
}

SANE_Status ScanSession::control(int option, SANE_Action action, void* value, SANE_Int* info)
{
    const Busy busy(*this);
    if (m_phase == Phase::Reading && action == SANE_ACTION_SET_VALUE)
        return SANE_STATUS_DEVICE_BUSY;
    return controlOption(m_settings, option, action, value, info);
}

SANE_Parameters ScanSession::parameters()
{
    const Busy busy(*this);
    StartReply page = m_page;
    if (m_phase != Phase::Reading && m_phase != Phase::PageRead) {
        SizeMm area = paperSize(m_settings.paper());
        if (area.width <= 0)
            area = paperSize(Paper::A4);
        page.width = toPixels(area.width, m_settings.dpi());
        page.height = toPixels(area.height, m_settings.dpi());
        page.colour = m_settings.colour() == ColourMode::Colour;
        page.depth = m_settings.colour() == ColourMode::BlackWhite ? 1 : 8;
        page.bytesPerLine = page.depth == 1 ? (page.width + 7) / 8 : page.width * (page.colour ? 3 : 1);
    }
    SANE_Parameters parameters{};
    parameters.format = page.colour ? SANE_FRAME_RGB : SANE_FRAME_GRAY;
    parameters.last_frame = SANE_TRUE;
    parameters.bytes_per_line = page.bytesPerLine;
    parameters.pixels_per_line = page.width;
    parameters.lines = page.height;
    parameters.depth = page.depth;
    return parameters;
}

SANE_Status ScanSession::start()
{
    const Busy busy(*this);
    if (m_phase == Phase::Reading)
        return SANE_STATUS_DEVICE_BUSY;
    dropPage(Phase::Idle);
    m_link.takeInterrupt(); // of a page that had been read by then
    Fields request{verb::start, std::to_string(m_settings.value(OptResolution))};
    for (const WordOption& option : wordOptions)
        request.push_back(std::to_string(m_settings.value(option.option)));
    Fields reply;
    const Status status = m_link.request(request, reply, &m_data);
    if (status != Status::Good)
        return toSane(status);
    if (!m_data)
        return SANE_STATUS_NO_MEM;
    m_page = StartReply::fromFields(reply, 1);
    m_phase = Phase::Reading;
    m_position = 0;
    m_pageBegan = std::chrono::steady_clock::now();
    return m_cancel ? SANE_STATUS_CANCELLED : SANE_STATUS_GOOD;
}

SANE_Status ScanSession::read(SANE_Byte* buffer, SANE_Int capacity, SANE_Int& length)
{
    const Busy busy(*this);
    length = 0;
    switch (m_phase) {
    case Phase::Idle:
        return SANE_STATUS_INVAL;
    case Phase::PageRead:
        return SANE_STATUS_EOF;
    case Phase::Cancelled:
        return SANE_STATUS_CANCELLED;
    case Phase::Reading:
        break;
    }
    return readLocked(buffer, capacity, length);
}

SANE_Status ScanSession::readLocked(SANE_Byte* buffer, SANE_Int capacity, SANE_Int& length)
{
    m_link.poll();
    if (const auto interrupt = m_link.takeInterrupt())
        return fail(*interrupt, false);
    long long available = static_cast<long long>(m_page.bytesPerLine) * m_page.height - m_position;
    if (m_page.failAt >= 0) {
        const long long beforeFault = m_page.failAt - m_position;
        if (beforeFault <= 0 || available <= 0)
            return fail(m_page.failStatus, true);
        available = std::min(available, beforeFault);
    }
    if (available <= 0)
        return endOfData();
    const SANE_Int wanted = static_cast<SANE_Int>(std::min<long long>(available, std::max(0, capacity)));
    const SANE_Status status = waitForPace(wanted);
    if (status != SANE_STATUS_GOOD)
        return status;
    const ssize_t got = pread(m_data.get(), buffer, static_cast<size_t>(wanted), m_position);
    if (got < 0 || (got == 0 && wanted > 0))
        return fail(Status::IoError, true);
    length = static_cast<SANE_Int>(got);
    m_position += got;
    return SANE_STATUS_GOOD;
}

// Waits until the device would have sent `length` more bytes, with an eye on the socket and the cancel flag.
SANE_Status ScanSession::waitForPace(SANE_Int length)
{
    using namespace std::chrono;
    const double mebibytes = static_cast<double>(m_position + length) / (1024 * 1024);
    const auto due =
        m_pageBegan +
        microseconds(static_cast<long long>(mebibytes * static_cast<double>(m_page.microsecondsPerMiB)));
    while (!m_cancel) {
        const auto left = duration_cast<milliseconds>(due - steady_clock::now()).count();
        if (left <= 0)
            return SANE_STATUS_GOOD;
        pollfd socket{m_link.descriptor(), POLLIN, 0};
        ::poll(&socket, 1, static_cast<int>(std::min<long long>(left, paceSliceMs)));
        m_link.poll();
        if (const auto interrupt = m_link.takeInterrupt())
            return fail(*interrupt, false);
    }
    return SANE_STATUS_CANCELLED;
}

SANE_Status ScanSession::endOfData()
{
    const Status status = m_link.request({verb::done});
    if (const auto interrupt = m_link.takeInterrupt())
        return fail(*interrupt, false);
    if (status != Status::Good)
        return fail(status, false);
    dropPage(Phase::PageRead);
    return SANE_STATUS_EOF;
}

SANE_Status ScanSession::fail(Status status, bool tellDaemon)
{
    if (tellDaemon)
        m_link.request({verb::failed, std::to_string(static_cast<int>(status))});
    dropPage(status == Status::Cancelled ? Phase::Cancelled : Phase::Idle);
    return toSane(status);
}

void ScanSession::dropPage(Phase next)
{
    m_data = Fd();
    m_phase = next;
}

void ScanSession::cancel()
{
    m_cancel = true;
    if (m_mutex.try_lock()) {
        finishCancel();
        m_mutex.unlock();
    }
}

// With the lock held.
void ScanSession::finishCancel()
{
    if (!m_cancel.exchange(false))
        return;
    m_link.post({verb::cancel});
    if (m_phase == Phase::Reading || m_phase == Phase::Cancelled)
        dropPage(Phase::Cancelled);
    else
        dropPage(Phase::Idle);
}

} // namespace vscan
