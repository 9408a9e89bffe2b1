// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "outputnames.h"

#include <functional>

namespace companion {

// Makes pages one after the other, with a library of its own: one worker a thread. Holds one page at a time.
class PageWorker
{
public:
    explicit PageWorker(const Request& request) : m_request(request) {}

    // Makes the page and writes it. One report, or one for each piece of a split page; the page's own times
    // stand in the first. Nothing is written for a blank page and after an error.
    std::vector<PageReport> process(const PlannedPage& page);

private:
    bool run(const char* name, PageReport& report, const std::function<void()>& work);
    ImageHandle load(const PlannedPage& page, PageReport& report);
    void edit(ImageHandle& image, PageReport& report);
    void write(ImageHandle& image, const QString& path, PageReport& report);
    std::vector<PageReport> writePieces(ImageHandle& image, const PlannedPage& page, PageReport& report);

    const Request& m_request;
    ImageConvertFunction m_library;
    QTemporaryDir m_scratch;
};

} // namespace companion
