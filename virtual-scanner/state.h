// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "protocol.h"
#include "settings.h"
#include "wear.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace vscan {

struct Sheet
{
    std::string front; // picture file; empty: a plain white side
    std::string back;
};

// One side of a sheet on its way through the scanner.
struct Side
{
    std::string picture;  // empty: a plain white side
    std::string sizeFrom; // picture that a plain side takes its size from; empty: A4
};

// A fault that waits for a page.
struct Fault
{
    Status status = Status::Jammed;
    int page = 1;         // of the batch, counted from 1 since the device was opened or a scan was cancelled
    long long bytes = -1; // of the page that are still delivered; -1: the page does not start at all
};

// What the scanner answers when a page is asked for.
struct PageStart
{
    Status status = Status::Good;
    Side side;
    long long failAt = -1; // bytes after which the page fails with failStatus; -1: never
    Status failStatus = Status::Good;
};

// The scanner's mechanics: feeder, flatbed, lid, plug and the faults that were ordered. Knows neither sockets
// nor pictures nor SANE. One thread. A sheet that is stopped inside the scanner (jam, lid, plug) goes back on
// top of the feeder, as its user would put it there; a sheet that was cancelled or failed in transfer has
// passed.
class State
{
public:
    // The user's side.
    void load(std::vector<Sheet> sheets);
    void setFlatbed(const std::string& picture) { m_flatbed = picture; }
    void setCover(bool open); // opening frees a jam
    void setBusy(int opens) { m_busy = opens; }
    void addFault(const Fault& fault) { m_faults.push_back(fault); }
    void unplug();
    void replug() { m_plugged = true; }
    void clear();       // frees a jam, forgets ordered faults
    bool pressCancel(); // the device's clear key; false when no scan runs that it could end
    void countOn(Wear& wear) { m_wear = &wear; }

    // The client's side. A handle that lived through an unplug stays dead until it is closed.
    Status open();
    void close();
    PageStart start(Source source);
    void pageDone();
    void pageFailed(Status status);
    void cancel();

    // A status that ends the page being read, for its reader; given out once.
    std::optional<Status> takeInterrupt();

    bool plugged() const { return m_plugged; }
    bool isOpen() const { return m_open; }
    bool reading() const { return m_reading; }
    bool coverOpen() const { return m_coverOpen; }
    bool jammed() const { return m_jammed; }
    int busy() const { return m_busy; }
    int pages() const { return m_pages; }
    size_t sheets() const { return m_feeder.size(); }
    const std::string& flatbed() const { return m_flatbed; }
    const std::vector<Fault>& faults() const { return m_faults; }

private:
    Status readiness() const;
    bool resolveFeeder(Source& source);
    std::optional<Fault> takeFault();
    std::optional<Side> nextSide(Source source);
    void interrupt(Status status);
    void returnSheet();
    void endBatch();

    Wear* m_wear = nullptr;
    std::deque<Sheet> m_feeder;
    std::string m_flatbed;
    std::vector<Fault> m_faults;
    bool m_plugged = true;
    bool m_coverOpen = false;
    bool m_jammed = false;
    int m_busy = 0;

    bool m_open = false;
    bool m_deadHandle = false;
    bool m_reading = false;
    bool m_cancelled = false;           // by the key, until the client cancels or closes
    std::optional<Status> m_interrupt;  // not yet told to the reader
    std::optional<Sheet> m_inside;      // the sheet on its way
    bool m_backWaits = false;           // the front of m_inside has been scanned, its back is next
    int m_started = 0;                  // pages asked for in this batch
    int m_pages = 0;                    // pages delivered since the start of the program
    std::optional<Source> m_autoSource; // what the automatic source chose for this batch
};

} // namespace vscan
