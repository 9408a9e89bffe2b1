// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/pagewriter.h"
#include "device/saneapi.h"
#include "device/scanoptions.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// A scan session: initialises SANE, lists and opens devices, sets the options and scans a batch of pages
// into numbered PNM files. Progress goes to standard output only. Belongs to the scan worker's thread; the
// handle and the read buffer exist once per process, so two batches never run at once.
class sane_scan
{
public:
    static constexpr std::size_t readBytes = 32768;

    static SaneHandle device;                 // set for every batch
    static std::vector<unsigned char> buffer; // holds memory only during a batch
    static std::size_t buffer_size;

    // What came of the last batch.
    struct Report
    {
        int pages = 0;                            // complete page files
        SaneStatus firstFault = SaneStatus::Good; // no documents counts when there was no page before it
        bool writeFailed = false;                 // the first fault is a page file that could not be written
    };

    explicit sane_scan(std::unique_ptr<SaneApi> api = makeLibSane());
    ~sane_scan(); // ends SANE when it is still initialised
    sane_scan(const sane_scan&) = delete;
    sane_scan& operator=(const sane_scan&) = delete;

    void init();                                           // ends a former initialisation first
    int get_devices(std::vector<SaneDeviceInfo>& devices); // always 0; an error gives an empty list
    SaneStatus open_device(const SaneDeviceInfo& record, SaneHandle& handle);
    int main_scan_set_param(int resolution, int source, int paperSize, int imageType, int colorMode,
                            int option9, int rotation, int edgeFill, int option12, int option13);

    // Scans until the feeder is empty, or one page from the glass, into filePrefix-0001.pnm, ...; returns the
    // last status of the device, report() tells the rest.
    SaneStatus start_scan(SaneHandle handle, const std::string& filePrefix);
    SaneStatus do_scan(const std::string& filePrefix);
    SaneStatus scan_it(std::FILE* file); // one page
    void write_pnm_header(FrameFormat format, int pixelsPerLine, int lines, int depth, std::FILE* file);
    void setScanParam(int resolution, int source, int paperSize, int imageType, int colorMode, int option9,
                      int rotation, int edgeFill, int option12, int option13);
    void cancle_scan(SaneHandle handle);
    void close_device(SaneHandle handle);
    void scan_exit();

    const Report& report() const { return m_report; }

    // Called with the number of each page whose scan has begun.
    void setPageStarted(std::function<void(int)> pageStarted) { m_pageStarted = std::move(pageStarted); }

    // Asked after each page from the glass whether another one is to follow in this batch; without it a batch
    // is one page. Called in the scanning thread, which waits for the answer.
    void setAskNextPage(std::function<bool()> askNextPage) { m_askNextPage = std::move(askNextPage); }

private:
    enum class Next
    {
        Page,
        End
    };

    SaneStatus startPage(int page);
    SaneStatus startOnGlass();
    Next scanPage(int page, const std::string& filePrefix, SaneStatus& status);
    void keepPage(const std::string& partPath, const std::string& path);
    SaneStatus readFrame(PageWriter& writer);
    SaneStatus startNextFrame(FrameParameters& parm, PageWriter& writer);
    SaneStatus take(PageWriter::Result result);
    SaneStatus cancelled();
    void noteFault(SaneStatus status);
    void noteWriteFault(const char* what, const std::string& path);

    std::unique_ptr<SaneApi> m_api;
    ScanParameters m_parameters;
    Report m_report;
    FileHandle m_output; // of the page in work; a bad page's stays open until the next start
    bool m_initialised = false;
    bool m_onePage = false;     // the glass has no next page
    bool m_cannotWrite = false; // the disk took no more: further pages would be lost too
    std::function<void(int)> m_pageStarted;
    std::function<bool()> m_askNextPage;
};
