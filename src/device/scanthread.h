// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QThread>
#include <memory>

class sane_scan;

// Runs one scan batch away from the GUI thread: finds the scanner by its model name, opens it (retrying
// while it is busy), scans everything in the feeder into page files and announces the end. May be started
// again for the next batch.
class scanThread : public QThread
{
    Q_OBJECT
public:
    // How a batch ended, for the notice that the user gets. Valid once the thread has finished.
    enum class Outcome { NotRun, Scanned, NoScanner, OpenFailed, StillBusy, FeederEmpty, Jam, CoverOpen, IoError, Cancelled };

    explicit scanThread(QObject* parent = nullptr);
    ~scanThread() override;

    // The ten scan parameters in the order of the device options; called before start().
    void setScanParamaters(int resolution, int source, int paperSize, int imageType, int colorMode, int option9,
                           int rotation, int edgeFill, int option12, int option13);

    Outcome outcome() const;
    int pagesScanned() const; // complete page files of the last batch

signals:
    // The end of a batch in which a device was found, whether or not it could be opened.
    void scanOverSignals();

protected:
    void run() override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
