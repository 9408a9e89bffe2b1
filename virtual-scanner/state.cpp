// SPDX-License-Identifier: GPL-3.0-or-later
#include "state.h"

#include <algorithm>

namespace vscan {

void State::load(std::vector<Sheet> sheets)
{
    m_feeder.assign(std::make_move_iterator(sheets.begin()), std::make_move_iterator(sheets.end()));
}

void State::setCover(bool open)
{
    m_coverOpen = open;
    if (!open)
        return;
    m_jammed = false;
    if (m_reading)
        interrupt(Status::CoverOpen);
}

void State::unplug()
{
    m_plugged = false;
    m_deadHandle = m_open;
    if (m_reading)
        interrupt(Status::IoError);
}

void State::clear()
{
    m_jammed = false;
    m_busy = 0;
    m_faults.clear();
}

bool State::pressCancel()
{
    if (m_started == 0)
        return false;
    m_cancelled = true; // the next page is refused, too
    if (m_reading)
        interrupt(Status::Cancelled);
    m_inside.reset();
    m_backWaits = false;
    return true;
}

Status State::open()
{
    if (!m_plugged)
        return Status::IoError;
    if (m_open)
        return Status::DeviceBusy;
    if (m_busy > 0) {
        --m_busy;
        return Status::DeviceBusy;
    }
    m_open = true;
    endBatch();
    return Status::Good;
}

void State::close()
{
    endBatch();
    m_open = false;
    m_deadHandle = false;
}

PageStart State::start(Source source)
{
    PageStart page;
    if (m_reading) {
        page.status = Status::DeviceBusy;
        return page;
    }
    page.status = m_cancelled ? Status::Cancelled : readiness();
    if (page.status != Status::Good)
        return page;
    if (!resolveFeeder(source)) {
        page.status = Status::NoDocs;
        return page;
    }
    const std::optional<Side> side = nextSide(source);
    if (!side) {
        page.status = Status::NoDocs;
        return page;
    }
    ++m_started;
    const std::optional<Fault> fault = takeFault();
    if (fault && fault->bytes < 0) {
        page.status = fault->status;
        pageFailed(fault->status);
    } else {
        m_reading = true;
        page.side = *side;
        page.failAt = fault ? fault->bytes : -1;
        page.failStatus = fault ? fault->status : Status::Good;
    }
    return page;
}

void State::pageDone()
{
    if (!m_reading)
        return;
    m_reading = false;
    m_interrupt.reset();
    ++m_pages;
    if (m_wear)
        m_wear->pageScanned();
    if (!m_backWaits)
        m_inside.reset();
}

void State::pageFailed(Status status)
{
    m_reading = false;
    if (status == Status::Jammed) {
        m_jammed = true;
        returnSheet();
    } else if (!m_backWaits) {
        m_inside.reset();
    }
}

void State::cancel()
{
    endBatch();
}

std::optional<Status> State::takeInterrupt()
{
    return std::exchange(m_interrupt, std::nullopt);
}

Status State::readiness() const
{
    if (!m_plugged || m_deadHandle || !m_open)
        return Status::IoError;
    if (m_coverOpen)
        return Status::CoverOpen;
    return m_jammed ? Status::Jammed : Status::Good;
}

// Turns the automatic source into the one that it stands for in this batch; false when its one flatbed page
// has been given.
bool State::resolveFeeder(Source& source)
{
    if (source != Source::AutoFeeder)
        return true;
    if (!m_autoSource)
        m_autoSource = m_feeder.empty() ? Source::Flatbed : Source::AdfFront;
    else if (m_autoSource == Source::Flatbed)
        return false;
    source = *m_autoSource;
    return true;
}

std::optional<Fault> State::takeFault()
{
    const auto it = std::find_if(m_faults.begin(), m_faults.end(),
                                 [this](const Fault& fault) { return fault.page == m_started; });
    if (it == m_faults.end())
        return std::nullopt;
    const Fault fault = *it;
    m_faults.erase(it);
    return fault;
}

std::optional<Side> State::nextSide(Source source)
{
    if (source == Source::Flatbed)
        return Side{m_flatbed, {}};
    if (m_backWaits && source == Source::AdfDuplex) {
        m_backWaits = false;
        return Side{m_inside->back, m_inside->front};
    }
    m_backWaits = false;
    if (m_feeder.empty()) {
        m_inside.reset();
        return std::nullopt;
    }
    m_inside = std::move(m_feeder.front());
    m_feeder.pop_front();
    if (m_wear)
        m_wear->sheetFed();
    m_backWaits = source == Source::AdfDuplex;
    return source == Source::AdfBack ? Side{m_inside->back, m_inside->front}
                                     : Side{m_inside->front, m_inside->back};
}

void State::interrupt(Status status)
{
    m_interrupt = status;
    m_reading = false;
    if (status != Status::Cancelled)
        returnSheet();
}

void State::returnSheet()
{
    if (m_inside)
        m_feeder.push_front(std::move(*m_inside));
    m_inside.reset();
    m_backWaits = false;
}

void State::endBatch()
{
    m_reading = false;
    m_cancelled = false;
    m_interrupt.reset();
    m_inside.reset();
    m_backWaits = false;
    m_started = 0;
    m_autoSource.reset();
}

} // namespace vscan
