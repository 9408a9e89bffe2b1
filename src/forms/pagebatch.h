// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/pagepipeline.h"

#include <QStringList>
#include <functional>

class FunctionHost;

// Takes the page files of a batch through their processing one after the other, as pages or, where pages are
// merged, as sheets; shows the progress bar and listens to a cancel between two of them. The steps differ
// from function to function. GUI thread; the steps must pump events while they work.
struct PageBatch
{
    std::function<PageOptions()> options; // read afresh for every sheet
    std::function<PageResult(const QString& page)> page;
    std::function<PageResult(const QString& front, const QString& back)> sheet;
    std::function<void(int number)>
        announce; // before an input is processed, counted by files from 1; may be empty
    std::function<void(const PageResult& result, const QStringList& sources)> take;

    // Returns the number of files that a cancel left unprocessed.
    int run(const QStringList& files, FunctionHost& host) const;

private:
    int processNext(const QStringList& files, int index) const;
};
