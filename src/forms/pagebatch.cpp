// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/pagebatch.h"

#include "forms/functionhost.h"
#include "imaging/backgroundrun.h"
#include "imaging/lastpage.h"

int PageBatch::run(const QStringList& files, FunctionHost& host) const
{
    if (files.isEmpty())
        return 0;
    const double scanDpi = options().scanDpi;
    runWithEvents([&] { keepLastPage(files.last(), scanDpi); });
    int index = 0;
    while (index < files.size() && !host.isCancelled()) {
        host.showPages(index, files.size());
        if (announce)
            announce(index + 1);
        index += processNext(files, index);
    }
    host.showPages(files.size(), files.size());
    return files.size() - index;
}

// Processes the page at `index`, or the sheet beginning there; returns the number of files used.
int PageBatch::processNext(const QStringList& files, int index) const
{
    const QString& front = files.at(index);
    // A page whose other side is missing (a bad page, a cancelled batch) goes alone: pairs must not shift.
    const int number = pageNumber(front);
    const bool paired =
        number % 2 == 1 && index + 1 < files.size() && pageNumber(files.at(index + 1)) == number + 1;
    if (!paired || !options().merge) {
        take(page(front), {front});
        return 1;
    }
    const QString& back = files.at(index + 1);
    take(sheet(front, back), {front, back});
    return 2;
}
