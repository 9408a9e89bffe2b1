// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/functionhost.h"
#include "forms/noticeboard.h"
#include "imageconvert/imageconvertfunction.h"

// A window without a scanner: records what a panel wants of it and cancels when a test wants it.
class RecordingHost : public FunctionHost
{
public:
    bool beginJob(const QWidget*, bool preview) override
    {
        begun += accepts ? 1 : 0;
        lastPreview = preview;
        return accepts;
    }
    bool makeThread() override { return true; }
    void connectPageSlot(Receiver, std::function<void()> slot) override { scanOver = std::move(slot); }
    void startThread(const ScanParameters& parameters) override { started = parameters; }
    bool isCancelled() const override { return shown >= cancelAt; }
    void dropCancel() override {}
    void leavePages() override { pagesLeft = true; }
    ImageConvertFunction& library() override { return images; }
    NoticeBoard& notices() override { return board; }
    void reportOutcome() override {}
    void showPages(int, int) override { ++shown; }
    void renameSaved(const QString&) override {}
    void showSummary(const QString& text) override { summary = text; }

    bool accepts = true;
    bool lastPreview = false;
    int begun = 0;
    int shown = 0;
    int cancelAt = 1000;
    bool pagesLeft = false;
    QString summary;
    std::function<void()> scanOver;
    ScanParameters started;
    ImageConvertFunction images;
    NoticeBoard board;
};
