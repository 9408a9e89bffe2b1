// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/scanthread.h"

#include "config/paths.h"
#include "device/cancelflag.h"
#include "device/console.h"
#include "device/sane_scan.h"
#include "device/statefile.h"
#include "device/waitclock.h"

#include <QDebug>
#include <QFile>
#include <QSemaphore>
#include <atomic>

namespace {

using Outcome = scanThread::Outcome;

constexpr int retryMs = 5000;
constexpr int busyLimit = 20; // the scanner may be busy that often
const char* const modelName = "qwd200";

Outcome outcomeOf(const sane_scan::Report& report)
{
    if (report.writeFailed)
        return Outcome::WriteFailed;
    switch (report.firstFault) {
    case SaneStatus::Good:
        return Outcome::Scanned;
    case SaneStatus::Cancelled:
        return Outcome::Cancelled;
    case SaneStatus::DeviceBusy:
        return Outcome::StillBusy;
    case SaneStatus::Jammed:
        return Outcome::Jam;
    case SaneStatus::NoDocs:
        return Outcome::FeederEmpty;
    case SaneStatus::CoverOpen:
        return Outcome::CoverOpen;
    default:
        return Outcome::IoError;
    }
}

state::Code stateOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::NotRun:
    case Outcome::Scanned:
        return state::Idle;
    case Outcome::Cancelled:
        return state::Cancelled;
    case Outcome::FeederEmpty:
        return state::FeederEmpty;
    case Outcome::Jam:
    case Outcome::CoverOpen:
        return state::JamOrCoverOpen;
    case Outcome::OpenFailed:
    case Outcome::StillBusy:
        return state::Busy;
    case Outcome::NoScanner:
    case Outcome::IoError:
    case Outcome::WriteFailed:
        break;
    }
    return state::CommunicationError;
}

struct Ending
{
    Outcome outcome;
    state::Code code; // what the state file says in the end

    Ending(Outcome how) : outcome(how), code(stateOf(how)) {}
    Ending(Outcome how, state::Code last) : outcome(how), code(last) {}
};

} // namespace

struct scanThread::Private
{
    Private(std::unique_ptr<SaneApi> api, std::unique_ptr<WaitClock> waitClock)
        : session(std::move(api)), clock(std::move(waitClock))
    {
    }

    bool findScanner(SaneDeviceInfo& found);
    Ending runBatch();
    Ending scan(SaneHandle handle);

    sane_scan session;
    std::unique_ptr<WaitClock> clock;
    std::atomic<Outcome> outcome{Outcome::NotRun};
    std::atomic<int> pages{0};
    QSemaphore answers;
    std::atomic<bool> another{false};
};

// Looks the scanner up afresh; false when there is none.
bool scanThread::Private::findScanner(SaneDeviceInfo& found)
{
    qDebug("Init!!!!\n");
    session.init();
    std::vector<SaneDeviceInfo> devices;
    session.get_devices(devices);
    say("Open a device\n");
    for (const SaneDeviceInfo& record : devices) {
        say("Name: %s, vendor: %s, model: %s, type: %s\n", record.name.c_str(), record.vendor.c_str(),
            record.model.c_str(), record.type.c_str());
        if (record.model == modelName) {
            say("find scanner QWD200!!!\n\n");
            found = record;
            return true;
        }
    }
    say("No devices connected\n");
    return false;
}

// Opens the scanner, again and again while it is busy, and scans.
Ending scanThread::Private::runBatch()
{
    int busyAnswers = 0;
    for (int attempts = 1;; ++attempts) {
        SaneDeviceInfo record;
        if (!findScanner(record))
            return Outcome::NoScanner;
        SaneHandle handle = nullptr;
        const SaneStatus status = session.open_device(record, handle);
        if (status == SaneStatus::Good)
            return scan(handle);
        if (status == SaneStatus::DeviceBusy) {
            ++busyAnswers;
            say("Device busy\n");
        }
        state::write(state::Busy);
        if (!waitUnlessCancelled(*clock, retryMs))
            return Outcome::Cancelled;
        if (busyAnswers > busyLimit)
            return {Outcome::StillBusy, state::Idle}; // the user was told all the time
        // A scanner that was busy once may come back from another failure too, but not for ever.
        if (busyAnswers == 0 || attempts > busyLimit)
            return Outcome::OpenFailed;
    }
}

Ending scanThread::Private::scan(SaneHandle handle)
{
    session.start_scan(handle, QFile::encodeName(paths::pagePrefix()).toStdString());
    session.cancle_scan(handle);
    session.close_device(handle);
    pages = session.report().pages;
    return outcomeOf(session.report());
}

scanThread::scanThread(QObject* parent) : scanThread(makeLibSane(), std::make_unique<SystemClock>(), parent)
{
}

scanThread::scanThread(std::unique_ptr<SaneApi> api, std::unique_ptr<WaitClock> clock, QObject* parent)
    : QThread(parent), d(std::make_unique<Private>(std::move(api), std::move(clock)))
{
    d->session.setPageStarted([this](int page) {
        state::write(state::pageCode(page));
        emit pageStarted(page);
    });
}

scanThread::~scanThread()
{
    if (isRunning())
        cancelflag::set();
    wait();
}

void scanThread::setScanParamaters(int resolution, int source, int paperSize, int imageType, int colorMode,
                                   int option9, int rotation, int edgeFill, int option12, int option13)
{
    cancelflag::clear(); // here and not in the thread: a cancel right after the start must not be lost
    d->session.main_scan_set_param(resolution, source, paperSize, imageType, colorMode, option9, rotation,
                                   edgeFill, option12, option13);
}

void scanThread::setContinuous(bool on)
{
    if (!on) {
        d->session.setAskNextPage({});
        return;
    }
    d->session.setAskNextPage([this] {
        constexpr int sliceMs = 100;
        d->answers.tryAcquire(d->answers.available());
        emit nextPageAsked();
        while (!d->answers.tryAcquire(1, sliceMs)) {
            if (cancelflag::isSet())
                return true; // the start of the next page ends the batch as cancelled
        }
        return d->another.load();
    });
}

void scanThread::answerNextPage(bool another)
{
    d->another = another;
    d->answers.release();
}

scanThread::Outcome scanThread::outcome() const
{
    return d->outcome;
}

int scanThread::pagesScanned() const
{
    return d->pages;
}

void scanThread::run()
{
    d->outcome = Outcome::NotRun;
    d->pages = 0;
    state::write(state::Preparing);
    const Ending ending = d->runBatch();
    d->outcome = ending.outcome;
    state::write(ending.code);
    if (ending.outcome == Outcome::NoScanner)
        return;
    emit scanOverSignals();
    say("run ok\n");
}
