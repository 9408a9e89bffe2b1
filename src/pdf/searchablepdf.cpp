// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/searchablepdf.h"

#include "config/leftovers.h"
#include "config/paths.h"
#include "imaging/backgroundrun.h"
#include "pdf/charactermap.h"
#include "pdf/textpages.h"

#include <QCoreApplication>
#include <QDebug>
#include <QTemporaryDir>

namespace {

class SearchablePdfText
{
    Q_DECLARE_TR_FUNCTIONS(SearchablePdf)
public:
    static QString cannotPrint(const QString& folder) { return tr("临时文件夹“%1”无法写入").arg(folder); }
};

} // namespace

SearchablePdf::SearchablePdf(PageReader& reader, DocumentJob job) : m_reading(reader, std::move(job), false)
{
}

DocumentResult SearchablePdf::pdfOcrProcess(const QStringList& pages)
{
    const DocumentJob& job = m_reading.job();
    const QString target = m_reading.folder() + job.baseName + '.' + job.typeWord;
    // The printer writes without telling of errors and under the name it is given: not in the user's folder.
    const QTemporaryDir workshop(paths::tempFolder() + "searchable-XXXXXX");
    const QString printed = workshop.filePath("text.pdf");
    TextPages drawn(printed, job.paperIndex);
    m_paper = drawn.paper();
    if (!workshop.isValid() || !drawn.begin()) {
        qWarning().noquote() << "cannot print into" << paths::tempFolder() << workshop.errorString();
        m_reading.fail(SearchablePdfText::cannotPrint(paths::tempFolder()));
    } else {
        const bool complete = drawPages(pages, drawn) && m_reading.anyPageRead(pages.size());
        drawn.end(); // a failure shows when the file is read again
        QString problem;
        if (complete)
            runWithEvents([&] { problem = mendCharacterMap(printed, target, job.baseName, drawn.shown()); });
        m_reading.fail(problem);
    }
    clearTempTexts();
    return m_reading.finish(target);
}

bool SearchablePdf::pdfHandleMutiTest(const QString& imagePath, QMap<int, zarnPDFLINERET>& lines)
{
    const PageText page = m_reading.read(imagePath);
    lines = pdfTextLines(page, m_paper);
    return page.readable && !m_reading.stopped();
}

bool SearchablePdf::drawPages(const QStringList& pages, TextPages& drawn)
{
    for (int i = 0; i < pages.size(); ++i) {
        if (i > 0)
            drawn.newPage();
        if (!m_reading.announce(i))
            return false;
        QMap<int, zarnPDFLINERET> lines;
        pdfHandleMutiTest(pages.at(i), lines);
        if (m_reading.stopped())
            return false;
        QString last;
        for (const zarnPDFLINERET& line : lines) {
            if (line.text != last) // a line that was found twice is drawn once
                drawn.draw(drawnLeft(line.x), line.baseline, line.text);
            last = line.text;
        }
    }
    return true;
}
