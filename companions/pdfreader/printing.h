// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "document.h"

#include <QImage>
#include <QPainter>
#include <QPrinter>

namespace reader {

// What the print dialog was left with.
struct PrintOrder
{
    std::shared_ptr<QPrinter> printer; // used by the worker only once the order is given
    QVector<int> pages;                // from 0, in the order of printing
    bool fitToPaper = true;            // else the true size
};

// The pages that the dialog's choice means, from 0, turned round for a printer that wants the last one
// first, and repeated for one that makes no copies itself.
QVector<int> pagesToPrint(const QPrinter& printer, int pageCount, int currentPage);

// Where a page goes on the paper's printable area (pixels), in the middle and with its shape kept.
// pagePixels: its true size there.
QRect placeOnPaper(QSizeF pagePixels, QSize paper, bool fitToPaper);

// Prints one page at each call, so that the caller can do other work in between and stop. A file to print
// into is written beside its place and renamed when it is complete.
class PrintRun
{
    Q_DECLARE_TR_FUNCTIONS(reader::PrintRun)
public:
    explicit PrintRun(PrintOrder order);
    ~PrintRun();

    bool step(const Document& document); // false: finished, or failed with a problem()
    int done() const { return m_done; }
    int total() const { return m_order.pages.size(); }
    QString problem() const { return m_problem; }

private:
    bool start();
    bool finish();
    bool printPage(const Poppler::Page& page);

    PrintOrder m_order;
    QString m_target; // the file to print into; empty: a printer
    QPainter m_painter;
    QString m_problem;
    int m_done = 0;
    bool m_finished = false;
};

} // namespace reader

Q_DECLARE_METATYPE(reader::PrintOrder)
