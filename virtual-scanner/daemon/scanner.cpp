// SPDX-License-Identifier: GPL-3.0-or-later
#include "scanner.h"

#include "feeder.h"
#include "page.h"
#include "picture.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <sstream>

namespace vscan {

namespace {

constexpr double secondsPerSheet = 1.5; // 40 sheets a minute, up to 300 dpi

Fields statusOnly(Status status)
{
    return {std::to_string(static_cast<int>(status))};
}

bool readSettings(const Fields& request, Settings& settings)
{
    const long long resolution = number(request, 1, 0);
    if (std::find(resolutions.begin(), resolutions.end(), resolution) == resolutions.end())
        return false;
    settings.set(OptResolution, static_cast<int>(resolution));
    size_t field = 2;
    for (const WordOption& option : wordOptions) {
        int count = 0;
        while (option.words[count])
            ++count;
        const long long index = number(request, field++, -1);
        if (index < 0 || index >= count)
            return false;
        settings.set(option.option, static_cast<int>(index));
    }
    return true;
}

std::string describe(const Settings& settings)
{
    std::string text = "1=" + std::to_string(settings.value(OptResolution));
    for (const WordOption& option : wordOptions)
        text += " " + std::to_string(option.option) + "=" + option.words[settings.value(option.option)];
    return text;
}

} // namespace

bool Scanner::setUp(const ScannerSetup& setup, std::string& error)
{
    m_setup = setup;
    return (setup.feeder.empty() || load(setup.feeder, error)) &&
           (setup.flatbed.empty() || setFlatbed(setup.flatbed, error));
}

Scanner::Answer Scanner::handle(const Fields& request, int client)
{
    if (request[0].rfind('@', 0) == 0)
        return handleClient(request, client);
    Answer answer;
    answer.reply = runCommand(*this, request);
    return answer;
}

Scanner::Answer Scanner::handleClient(const Fields& request, int client)
{
    Answer answer;
    const std::string& verb = request[0];
    if (verb == verb::devices) {
        answer.reply = statusOnly(Status::Good);
        if (m_state.plugged())
            answer.reply.push_back(m_setup.model);
    } else if (verb == verb::open) {
        answer.reply = statusOnly(open(client));
    } else if (client != m_owner) {
        answer.reply = statusOnly(Status::Invalid);
    } else if (verb == verb::start) {
        answer = start(request);
    } else if (verb == verb::done) {
        m_state.pageDone();
        log("page read");
        answer.reply = statusOnly(Status::Good);
    } else if (verb == verb::failed) {
        const Status status = static_cast<Status>(number(request, 1, static_cast<int>(Status::IoError)));
        m_state.pageFailed(status);
        log("page failed: " + std::to_string(static_cast<int>(status)));
        answer.reply = statusOnly(Status::Good);
    } else if (verb == verb::cancel) {
        m_state.cancel();
        log("cancel");
    } else if (verb == verb::close) {
        disconnected(client);
        answer.reply = statusOnly(Status::Good);
    } else {
        answer.reply = statusOnly(Status::Invalid);
    }
    return answer;
}

Status Scanner::open(int client)
{
    const bool refused = m_setup.exclusive && m_state.plugged() && m_usb && m_usb->claimed();
    const Status status = refused ? Status::DeviceBusy : m_state.open();
    log("open: " + std::to_string(static_cast<int>(status)) +
        (refused ? ", the USB interface is claimed" : ""));
    if (status == Status::Good) {
        m_owner = client;
        m_opened = true;
    }
    return status;
}

void Scanner::disconnected(int client)
{
    if (client != m_owner)
        return;
    m_state.close();
    m_owner = -1;
    m_opened = false;
    log("close");
}

Scanner::Answer Scanner::start(const Fields& request)
{
    Answer answer;
    Settings settings;
    if (!readSettings(request, settings)) {
        answer.reply = statusOnly(Status::Invalid);
        return answer;
    }
    const PageStart page = m_state.start(settings.source());
    log("start " + describe(settings) + ": " + std::to_string(static_cast<int>(page.status)));
    answer.reply = statusOnly(page.status);
    if (page.status != Status::Good)
        return answer;
    StartReply shape;
    std::string error;
    if (!renderPage(page.side, settings, m_setup.dpi, answer.data, shape, error)) {
        log(error);
        std::fprintf(stderr, "vscan: %s\n", error.c_str());
        m_state.pageFailed(Status::IoError);
        answer.data = Fd();
        answer.reply = statusOnly(Status::IoError);
        return answer;
    }
    shape.failAt = page.failAt;
    shape.failStatus = page.failStatus;
    shape.microsecondsPerMiB = pace(settings, shape);
    for (std::string& field : shape.toFields())
        answer.reply.push_back(std::move(field));
    return answer;
}

long long Scanner::pace(const Settings& settings, const StartReply& page) const
{
    if (m_msPerMiB >= 0)
        return m_msPerMiB * 1000;
    if (!m_setup.realSpeed)
        return 0;
    const double mebibytes = static_cast<double>(page.bytesPerLine) * page.height / (1024 * 1024);
    const double sides = settings.source() == Source::AdfDuplex ? 2 : 1;
    const double seconds = secondsPerSheet / sides * std::max(1.0, settings.dpi() / 300.0);
    return static_cast<long long>(seconds * 1e6 / std::max(mebibytes, 1e-3));
}

int Scanner::takeInterrupt(Status& status)
{
    const std::optional<Status> interrupt = m_state.takeInterrupt();
    if (!interrupt)
        return -1;
    status = *interrupt;
    log("page stopped: " + std::to_string(static_cast<int>(status)));
    return m_owner;
}

bool Scanner::load(const std::string& folder, std::string& error)
{
    std::vector<Sheet> sheets = sheetsOf(folder, error);
    if (sheets.empty())
        return false;
    m_state.load(std::move(sheets));
    return true;
}

bool Scanner::setFlatbed(const std::string& file, std::string& error)
{
    Picture picture;
    if (!readPicture(file, m_setup.dpi, picture, error))
        return false;
    m_state.setFlatbed(std::filesystem::absolute(file).string());
    return true;
}

std::string Scanner::statusText() const
{
    std::ostringstream text;
    text << "model=" << m_setup.model << "\nplugged=" << (m_state.plugged() ? "yes" : "no")
         << "\nopen=" << (m_state.isOpen() ? "yes" : "no")
         << "\nscanning=" << (m_state.reading() ? "yes" : "no") << "\nsheets=" << m_state.sheets()
         << "\nflatbed=" << m_state.flatbed() << "\ncover=" << (m_state.coverOpen() ? "open" : "closed")
         << "\njam=" << (m_state.jammed() ? "yes" : "no") << "\nbusy=" << m_state.busy()
         << "\npages=" << m_state.pages() << "\npace=";
    if (m_msPerMiB >= 0)
        text << m_msPerMiB << " ms/MiB";
    else
        text << (m_setup.realSpeed ? "real" : "fast");
    for (const Fault& fault : m_state.faults())
        text << "\nfault=" << static_cast<int>(fault.status) << " page " << fault.page << " byte "
             << fault.bytes;
    text << "\nusb=" << (m_usb ? "yes" : "no") << "\nclaimed=" << (m_usb && m_usb->claimed() ? "yes" : "no")
         << m_channel.statusText();
    return text.str();
}

} // namespace vscan
