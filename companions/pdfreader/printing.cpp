// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing.h"

#include <QFile>
#include <algorithm>
#include <cstdio>
#include <utility>

namespace reader {
namespace {

// Scans have no more than this, and an A4 page at 600 would take 140 MB.
constexpr double kMostDpi = 300;

QVector<int> repeated(const QVector<int>& pages, int copies, bool collated)
{
    QVector<int> all;
    for (int i = 0; i < pages.size() * copies; ++i)
        all << pages[collated ? i % pages.size() : i / copies];
    return all;
}

} // namespace

QVector<int> pagesToPrint(const QPrinter& printer, int pageCount, int currentPage)
{
    int first = 0, last = pageCount - 1;
    if (printer.printRange() == QPrinter::CurrentPage)
        first = last = currentPage;
    if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        first = printer.fromPage() - 1;
        last = std::min(last, std::max(printer.toPage(), printer.fromPage()) - 1);
    }
    QVector<int> pages;
    for (int page = first; page <= last; ++page)
        pages << page;
    if (printer.pageOrder() == QPrinter::LastPageFirst)
        std::reverse(pages.begin(), pages.end());
    return printer.supportsMultipleCopies() ? pages
                                            : repeated(pages, printer.copyCount(), printer.collateCopies());
}

QRect placeOnPaper(QSizeF pagePixels, QSize paper, bool fitToPaper)
{
    const QSizeF size = fitToPaper ? pagePixels.scaled(paper, Qt::KeepAspectRatio) : pagePixels;
    QRect place({0, 0}, size.toSize());
    place.moveCenter(QRect({0, 0}, paper).center());
    return place;
}

PrintRun::PrintRun(PrintOrder order) : m_order(std::move(order)), m_target(m_order.printer->outputFileName())
{
    if (!m_target.isEmpty()) {
        m_order.printer->setOutputFormat(QPrinter::PdfFormat);
        m_order.printer->setOutputFileName(m_target + ".part");
    }
}

PrintRun::~PrintRun()
{
    if (m_painter.isActive()) {
        m_order.printer->abort();
        m_painter.end();
    }
    if (!m_target.isEmpty() && !m_finished)
        QFile::remove(m_target + ".part");
}

bool PrintRun::start()
{
    if (m_painter.begin(m_order.printer.get()))
        return true;
    m_problem = m_target.isEmpty() ? tr("打印机不接受任务。") : tr("文件 %1 无法写入。").arg(m_target);
    return false;
}

bool PrintRun::finish()
{
    const bool ended = m_painter.end() && m_order.printer->printerState() != QPrinter::Error;
    if (!ended)
        m_problem = m_target.isEmpty() ? tr("打印机报告了错误。") : tr("文件 %1 无法写完整。").arg(m_target);
    if (ended && !m_target.isEmpty() &&
        std::rename(QFile::encodeName(m_target + ".part").constData(),
                    QFile::encodeName(m_target).constData()) != 0)
        m_problem = tr("文件 %1 无法写入。").arg(m_target);
    m_finished = m_problem.isEmpty();
    return false;
}

bool PrintRun::printPage(const Poppler::Page& page)
{
    const QSizeF points = page.pageSizeF();
    QPrinter& printer = *m_order.printer;
    printer.setPageOrientation(points.width() > points.height() ? QPageLayout::Landscape
                                                                : QPageLayout::Portrait);
    if (m_done == 0 ? !start() : !printer.newPage()) {
        if (m_problem.isEmpty())
            m_problem = tr("打印机报告了错误。");
        return false;
    }
    const QRect place =
        placeOnPaper(points * (printer.resolution() / 72.0),
                     printer.pageLayout().paintRectPixels(printer.resolution()).size(), m_order.fitToPaper);
    const double dpi = std::min(kMostDpi, place.width() / points.width() * 72);
    const QImage image = page.renderToImage(dpi, dpi);
    if (!image.isNull())
        m_painter.drawImage(place, image);
    return true;
}

bool PrintRun::step(const Document& document)
{
    if (m_done == total())
        return finish();
    const auto page = document.page(m_order.pages[m_done]);
    if (!page) {
        m_problem = tr("第 %1 页已损坏，打印已停止。").arg(m_order.pages[m_done] + 1);
        return false;
    }
    if (!printPage(*page))
        return false;
    ++m_done;
    return true;
}

} // namespace reader
