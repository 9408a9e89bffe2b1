// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QThread>
#include <memory>

class SaneApi;
class WaitClock;

// Runs one scan batch away from the GUI thread: finds the scanner by its model name, opens it (retrying
// while it is busy), scans everything in the feeder into page files and announces the end. May be started
// again for the next batch.
class scanThread : public QThread
{
    Q_OBJECT
public:
    // How a batch ended, for the notice that the user gets. Valid once the thread has finished.
    enum class Outcome
    {
        NotRun,
        Scanned, // every page, without a fault
        NoScanner,
        OpenFailed,
        StillBusy, // 21 times, or between two pages
        FeederEmpty,
        Jam,
        CoverOpen,
        IoError,
        WriteFailed, // a page file could not be written: disk full, folder read-only or missing
        Cancelled
    };

    explicit scanThread(QObject* parent = nullptr);
    // With another SANE library and another clock.
    scanThread(std::unique_ptr<SaneApi> api, std::unique_ptr<WaitClock> clock, QObject* parent = nullptr);
    // Cancels a batch that still runs and waits for its end.
    ~scanThread() override;

    // The ten scan parameters in the order of the device options; called before every start(), not during a
    // batch. Clears the cancel flag for the new batch.
    void setScanParamaters(int resolution, int source, int paperSize, int imageType, int colorMode,
                           int option9, int rotation, int edgeFill, int option12, int option13);

    // On: after each page from the glass nextPageAsked() asks whether another one is to join the batch.
    // Called before start().
    void setContinuous(bool on);
    // The answer to nextPageAsked(); from any thread.
    void answerNextPage(bool another);

    Outcome outcome() const;
    // Complete page files of the last batch; also counts pages before a fault or a cancel.
    int pagesScanned() const;

signals:
    // The end of a batch in which a device was found, whether or not it could be opened.
    void scanOverSignals();

    // The scan of this page, from 1, has begun.
    void pageStarted(int page);

    // The batch waits for answerNextPage() or a cancel.
    void nextPageAsked();

protected:
    void run() override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
