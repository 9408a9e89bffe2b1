// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

class ImageConvertFunction;
class NoticeBoard;
class QString;
class QWidget;

// What a scan needs to know, in the order of the session's parameters.
struct ScanParameters
{
    int resolution = 300; // dpi
    int source = 1;
    int paper = 2;
    // Always colour, without rotation or borders: that is done in software afterwards.
    int imageType = 2;
    int colorMode = 1;
    int option9 = 2;
    int rotation = 1;
    int edgeFill = 1;
    int option12 = 1;
    int option13 = 1;
    bool continuous = false; // ask for the next page on the glass
};

// What the panel of a function needs of the window around it: the scanner, the job's state, notices. The
// window is it; a panel knows neither the window nor the device. GUI thread.
class FunctionHost
{
public:
    enum class Receiver
    {
        Pdf,
        Ocr
    };

    virtual ~FunctionHost() = default;

    // Begins a job for this panel: settings are stored, the controls that start a scan are disabled. True as
    // well when the window has just begun one for it; false: refused, the user has been told why.
    virtual bool beginJob(const QWidget* panel, bool preview) = 0;
    // Makes the scan thread unless there is one; true when it is new.
    virtual bool makeThread() = 0;
    // `slot` is called when a scan has ended; an earlier receiver is disconnected first.
    virtual void connectPageSlot(Receiver receiver, std::function<void()> slot) = 0;
    virtual void startThread(const ScanParameters& parameters) = 0;

    virtual bool isCancelled() const = 0;
    virtual void dropCancel() = 0;
    // The scanned pages that are left go with the next batch.
    virtual void leavePages() = 0;

    virtual ImageConvertFunction& library() = 0;
    virtual NoticeBoard& notices() = 0;
    virtual void reportOutcome() = 0; // a fault of the scan goes to the notices
    // The progress bar; at `done` = `count` it disappears.
    virtual void showPages(int done, int count) = 0;
    // Asks for the prefix of the saved files, where the settings of this group want it, and renames them.
    virtual void renameSaved(const QString& group) = 0;
    // The end of a batch in the status line, with a balloon when there were problems.
    virtual void showSummary(const QString& summary) = 0;
};
