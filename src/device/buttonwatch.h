// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/usb_communicate.h"

#include <QString>
#include <condition_variable>
#include <functional>
#include <mutex>

// What buttonState() reports besides the key codes of the scanner.
namespace buttoncode {
inline constexpr int DeviceAbsent = 4;
inline constexpr int NoPress = 5;

// The key code in a report of `length` bytes; NoPress for anything but a well-formed report, and for the two
// codes above, which no key may claim.
int ofReport(const unsigned char* report, int length);
} // namespace buttoncode

// Commands to the status window; any other word is a text to show.
namespace panelcommand {
inline constexpr char HideButton[] = "setButtonHide";
inline constexpr char ShowWindow[] = "showWindow";
inline constexpr char CloseWindow[] = "closeWindow";
} // namespace panelcommand

// The watcher's work without a thread and a window of its own: polls the scanner's keys while idle and
// follows the state file while a job runs. loop() runs in one thread; everything else may be called from any
// other.
class ButtonWatch
{
public:
    enum State
    {
        Idle = 0, // the keys are polled
        Job = 1,  // a batch runs: the state file is followed
        Lent = 2, // maintenance has the device
    };

    struct Intervals // milliseconds
    {
        int poll = 2000;
        int afterFailedRelease = 4000;
        int stateFile = 100;
    };

    // Called in the thread of loop().
    struct Reports
    {
        std::function<void(int code)> button;
        std::function<void(const QString& commandOrText)> panel;
        std::function<void(bool denied)> access; // once per change; at first it is not denied
    };

    ButtonWatch(std::unique_ptr<UsbApi> api, Intervals intervals, Reports reports);

    // Returns after stop(), at most one step later; no wait outlasts it.
    void loop();
    void stop();

    // Takes effect at once. For a job or a loan it returns when a poll in progress has let go of the device,
    // 500 ms later at most. Other numbers than those of State are logged and ignored.
    void setState(int state);
    int state() const;
    // The key code of the last well-formed report; 0 before the first.
    int lastButton() const;

    // The text in the status window, set by those who write there besides this watcher.
    void setShownText(const QString& text);
    QString shownText() const;

private:
    struct Poll
    {
        int code = buttoncode::NoPress;
        bool releaseFailed = false;
    };

    struct JobView // what was last seen in the state file
    {
        int code = -1;
        bool readable = true;
    };

    unsigned jobsBegun() const;
    bool isCurrent(int state, unsigned job) const;
    void wait(int milliseconds, int whileState, unsigned whileJob);
    bool beginPoll();
    void endPoll();
    void idleStep();
    Poll poll(bool discardPresses);
    int readKey();
    int discardKeys();
    void reportAccess(bool denied);
    void followJob();
    bool showState(JobView& view);

    usb_communicate m_usb;
    const Intervals m_intervals;
    const Reports m_reports;

    mutable std::mutex m_mutex; // guards what follows
    std::condition_variable m_changed;
    bool m_running = true;
    bool m_polling = false; // m_usb belongs to loop() while set, else to who holds the mutex
    int m_state = Idle;
    unsigned m_jobs = 0; // counts jobs, so that one that follows at once is told from the one before
    QString m_shownText;

    int m_lastButton = 0;

    // only in loop()
    unsigned m_readAway = 0; // the keys pressed up to the end of this job have been read away
    bool m_accessDenied = false;
};
