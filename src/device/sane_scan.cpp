// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/sane_scan.h"

#include "device/cancelflag.h"
#include "device/console.h"

#include <QDebug>
#include <cerrno>
#include <cstring>

SaneHandle sane_scan::device = nullptr;
std::vector<unsigned char> sane_scan::buffer;
std::size_t sane_scan::buffer_size = 0;

namespace {

// No feeder holds so many sheets: a device that fails again and again but lets every start succeed would
// otherwise never end.
constexpr int badPagesInARowLimit = 200;

const char* assertionText = "Assertion failed: %s";

std::string pagePath(const std::string& prefix, int page)
{
    char number[16];
    std::snprintf(number, sizeof number, "-%04d.pnm", page);
    return prefix + number;
}

void sayDevice(const SaneDeviceInfo& record)
{
    say("Name: %s, vendor: %s, model: %s, type: %s\n", record.name.c_str(), record.vendor.c_str(),
        record.model.c_str(), record.type.c_str());
}

// The read buffer has memory for the length of a batch.
struct BatchBuffer
{
    BatchBuffer()
    {
        sane_scan::buffer_size = sane_scan::readBytes;
        sane_scan::buffer.resize(sane_scan::buffer_size);
    }
    ~BatchBuffer()
    {
        say("freebuffer\n");
        sane_scan::buffer = {};
    }
};

} // namespace

sane_scan::sane_scan(std::unique_ptr<SaneApi> api) : m_api(std::move(api)) {}

sane_scan::~sane_scan()
{
    scan_exit();
}

void sane_scan::init()
{
    scan_exit();
    int version = 0;
    const SaneStatus status = m_api->init(version);
    m_initialised = status == SaneStatus::Good;
    say("SANE version code: %d\n", version);
    if (!m_initialised)
        qWarning("SANE cannot be initialised: %s", m_api->statusText(status).c_str());
}

int sane_scan::get_devices(std::vector<SaneDeviceInfo>& devices)
{
    devices.clear();
    say("Get all devices...\n");
    const SaneStatus status = m_initialised ? m_api->localDevices(devices) : SaneStatus::Inval;
    if (status == SaneStatus::Good)
        say("sane_get_devices status: %s\n", m_api->statusText(status).c_str());
    else
        qWarning("no device list: %s", m_api->statusText(status).c_str());
    return 0;
}

SaneStatus sane_scan::open_device(const SaneDeviceInfo& record, SaneHandle& handle)
{
    sayDevice(record);
    const SaneStatus status = m_api->open(record.name, handle);
    if (status != SaneStatus::Good) {
        handle = nullptr;
        say("return status = %d\n", int(status));
        say("sane_open status: %s\n", m_api->statusText(status).c_str());
    }
    return status;
}

int sane_scan::main_scan_set_param(int resolution, int source, int paperSize, int imageType, int colorMode,
                                   int option9, int rotation, int edgeFill, int option12, int option13)
{
    m_parameters = {resolution, source,   paperSize, imageType, colorMode,
                    option9,    rotation, edgeFill,  option12,  option13};
    return 0;
}

SaneStatus sane_scan::start_scan(SaneHandle handle, const std::string& filePrefix)
{
    device = handle;
    return do_scan(filePrefix);
}

void sane_scan::setScanParam(int resolution, int source, int paperSize, int imageType, int colorMode,
                             int option9, int rotation, int edgeFill, int option12, int option13)
{
    say("resolution=%d\n\n\n\n\n", resolution);
    // What the device refuses keeps its former value; the scan goes on with that.
    if (scanoptions::isResolution(resolution))
        m_api->setOption(device, scanoptions::resolutionOption, resolution);
    const ScanParameters parameters = {resolution, source,   paperSize, imageType, colorMode,
                                       option9,    rotation, edgeFill,  option12,  option13};
    for (const StringOption& option : scanoptions::stringOptions(parameters))
        m_api->setOption(device, option.number, option.value);
}

SaneStatus sane_scan::do_scan(const std::string& filePrefix)
{
    const BatchBuffer batchBuffer;
    m_report = {};
    m_cannotWrite = false;
    const ScanParameters& p = m_parameters;
    m_onePage = p.source == scansource::Flatbed;
    setScanParam(p.resolution, p.source, p.paperSize, p.imageType, p.colorMode, p.option9, p.rotation,
                 p.edgeFill, p.option12, p.option13);

    SaneStatus status = SaneStatus::Good;
    int badInARow = 0;
    for (int page = 1; badInARow < badPagesInARowLimit; ++page) {
        const int before = m_report.pages;
        if (scanPage(page, filePrefix, status) == Next::End)
            break;
        badInARow = m_report.pages > before ? 0 : badInARow + 1;
    }
    m_output.reset();
    return status;
}

// One turn of the batch: starts page `page` and brings it to its file.
sane_scan::Next sane_scan::scanPage(int page, const std::string& filePrefix, SaneStatus& status)
{
    say("do_scan start\n");
    const std::string path = pagePath(filePrefix, page);
    const std::string partPath = path + ".part";
    say("do_scan part_path = %s\n", partPath.c_str());
    say("path = %s\n", path.c_str());
    status = startPage(page);
    say("sane_start end\n");
    if (status != SaneStatus::Good) {
        say("sane_start return != SANE_STATUS_GOOD\n");
        if (status != SaneStatus::NoDocs || page == 1)
            noteFault(status);
        return Next::End;
    }
    if (m_pageStarted)
        m_pageStarted(page);

    m_output.reset(std::fopen(partPath.c_str(), "wb"));
    if (!m_output) {
        noteWriteFault("open", partPath);
        status = SaneStatus::AccessDenied;
        return Next::End;
    }
    status = scan_it(m_output.get());
    say("sane scan_it over\n");
    if (status == SaneStatus::NoDocs) {
        say("sane scan_it SANE_STATUS_NO_DOCS\n");
        std::remove(partPath.c_str());
        m_output.reset();
        if (page == 1)
            noteFault(status);
        return Next::End;
    }
    if (status == SaneStatus::Good || status == SaneStatus::Eof) {
        say("sane scan_it SANE_STATUS_GOOD   SANE_STATUS_EOF\n");
        keepPage(partPath, path);
        if (!m_onePage || (m_askNextPage && m_askNextPage()))
            return Next::Page;
        status = SaneStatus::NoDocs; // as an empty feeder would say it
        return Next::End;
    }
    noteFault(status);
    // The part file stays, whatever it holds. The device says at the next start whether it can go on.
    const bool over = m_onePage || m_cannotWrite || status == SaneStatus::Cancelled;
    return over ? Next::End : Next::Page;
}

SaneStatus sane_scan::startPage(int page)
{
    if (cancelflag::isSet())
        return cancelled();
    const SaneStatus status = m_api->start(device);
    const bool feederEmpty = status == SaneStatus::NoDocs && page == 1;
    return feederEmpty && m_parameters.source == scansource::Automatic ? startOnGlass() : status;
}

// The automatic source with an empty feeder: one page from the glass instead.
SaneStatus sane_scan::startOnGlass()
{
    m_api->cancel(device); // options cannot be set while a batch is under way
    if (m_api->setOption(device, scanoptions::sourceOption, scanoptions::flatbed()) != SaneStatus::Good)
        return SaneStatus::NoDocs;
    m_onePage = true;
    return m_api->start(device);
}

void sane_scan::keepPage(const std::string& partPath, const std::string& path)
{
    if (std::fclose(m_output.release()) != 0) {
        say("sane scan_it !ofp || 0 != fclose(ofp)\n");
        noteWriteFault("close", partPath);
        return;
    }
    say("sane scan_it ofp == 1 || 0 == fclose(ofp)\n");
    if (std::rename(partPath.c_str(), path.c_str()) != 0) {
        say("sane scan_it rename (part_path, path) error\n");
        noteWriteFault("rename", partPath);
        return;
    }
    ++m_report.pages;
}

SaneStatus sane_scan::scan_it(std::FILE* file)
{
    FrameParameters parm;
    SaneStatus status = m_api->parameters(device, parm);
    if (status != SaneStatus::Good) {
        say("clean up \n");
        return status;
    }
    say("first_frame\n");
    PageWriter writer(file);
    if (const char* condition = writer.beginFrame(parm)) {
        qWarning(assertionText, condition);
        say("clean up \n");
        return SaneStatus::IoError;
    }
    if (writer.buffers()) {
        say("must_buffer\n");
        say("image.width = %d, image.height = %d\n", parm.pixelsPerLine, parm.lines);
    }
    status = readFrame(writer);
    while (status == SaneStatus::Eof && !parm.lastFrame) {
        status = startNextFrame(parm, writer);
        if (status == SaneStatus::Good)
            status = readFrame(writer);
    }
    if (status == SaneStatus::Eof) {
        const SaneStatus written = take(writer.finish());
        if (written != SaneStatus::Good)
            status = written;
    }
    say("clean up \n");
    return status;
}

// Reads to the end of the frame: end of file, or what went wrong.
SaneStatus sane_scan::readFrame(PageWriter& writer)
{
    for (;;) {
        if (cancelflag::isSet())
            return cancelled();
        int length = 0;
        const SaneStatus status = m_api->read(device, buffer.data(), int(buffer_size), length);
        if (status != SaneStatus::Good)
            return status;
        if (length < 0 || std::size_t(length) > buffer_size) {
            qWarning("the scanner claims to have sent %d bytes into a buffer of %zu", length, buffer_size);
            return SaneStatus::IoError;
        }
        const SaneStatus written = take(writer.write(buffer.data(), std::size_t(length)));
        if (written != SaneStatus::Good)
            return written;
    }
}

SaneStatus sane_scan::startNextFrame(FrameParameters& parm, PageWriter& writer)
{
    if (cancelflag::isSet())
        return cancelled();
    say("scan_it !first_fram sane_start\n");
    SaneStatus status = m_api->start(device);
    say("scan_it !first_fram sane_start\n");
    if (status != SaneStatus::Good) {
        say("scan_it !first_fram status != SANE_STATUS_GOOD\n");
        return status;
    }
    status = m_api->parameters(device, parm);
    if (status != SaneStatus::Good)
        return status;
    if (const char* condition = writer.beginFrame(parm)) {
        qWarning(assertionText, condition);
        return SaneStatus::IoError;
    }
    return SaneStatus::Good;
}

// What the result of writing means for the page.
SaneStatus sane_scan::take(PageWriter::Result result)
{
    switch (result) {
    case PageWriter::Result::Good:
        return SaneStatus::Good;
    case PageWriter::Result::OutOfMemory:
        qWarning("the page is too large to be collected in memory");
        return SaneStatus::NoMem;
    case PageWriter::Result::Empty:
        qWarning("the scanner sent a page without a line");
        return SaneStatus::IoError;
    case PageWriter::Result::WriteFailed:
        break;
    }
    noteWriteFault("write", "the page");
    m_cannotWrite = true;
    return SaneStatus::IoError;
}

SaneStatus sane_scan::cancelled()
{
    m_api->cancel(device);
    return SaneStatus::Cancelled;
}

void sane_scan::noteFault(SaneStatus status)
{
    if (status == SaneStatus::Cancelled) // at the device: whoever takes the pages has to know it, too
        cancelflag::set();
    if (m_report.firstFault != SaneStatus::Good)
        return;
    m_report.firstFault = status;
    qWarning("the batch has a fault: %s", m_api->statusText(status).c_str());
}

void sane_scan::noteWriteFault(const char* what, const std::string& path)
{
    qWarning("cannot %s %s: %s", what, path.c_str(), std::strerror(errno));
    if (m_report.firstFault != SaneStatus::Good)
        return;
    m_report.firstFault = SaneStatus::IoError;
    m_report.writeFailed = true;
}

void sane_scan::write_pnm_header(FrameFormat format, int pixelsPerLine, int lines, int depth, std::FILE* file)
{
    writePnmHeader(format, pixelsPerLine, lines, depth, file);
}

void sane_scan::cancle_scan(SaneHandle handle)
{
    m_api->cancel(handle);
}

void sane_scan::close_device(SaneHandle handle)
{
    m_api->close(handle);
    if (device == handle)
        device = nullptr;
}

void sane_scan::scan_exit()
{
    if (m_initialised)
        m_api->exit();
    m_initialised = false;
}
