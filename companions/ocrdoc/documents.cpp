// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents.h"

#include "config/paths.h"
#include "ocr/textdocument.h"
#include "ocr/worddocument.h"
#include "pdf/searchableofd.h"
#include "pdf/searchablepdf.h"

#include <QElapsedTimer>
#include <QFileInfo>

namespace companion {

namespace {

// Passes pages on to the engine's reader and notes what came back.
class NotingReader : public PageReader
{
public:
    PageText read(const QString& picture, bool symbols, const std::function<bool()>& cancelled) override
    {
        QElapsedTimer timer;
        timer.start();
        PageText text = m_reader.read(picture, symbols, cancelled);
        PageLine line;
        line.file = picture;
        line.boxes = static_cast<int>(text.lines.size()) + text.lostLines;
        for (const BoxText& box : text.lines)
            line.confidence += box.confidence / static_cast<double>(text.lines.size());
        line.seconds = timer.nsecsElapsed() / 1e9;
        if (!text.readable)
            line.problem = text.problem.isEmpty() ? QStringLiteral("unreadable") : text.problem;
        else if (text.lostLines > 0)
            line.problem = QStringLiteral("%1 lines were not read").arg(text.lostLines);
        m_lines << line;
        return text;
    }

    const QList<PageLine>& lines() const { return m_lines; }

private:
    EnginePageReader m_reader{-1};
    QList<PageLine> m_lines;
};

} // namespace

Documents::Documents(const Request& request, std::function<bool()> cancelled,
                     std::function<void(const QString&)> progress)
    : m_request(request), m_cancelled(std::move(cancelled)), m_progress(std::move(progress))
{
}

Documents::Outcome Documents::write(const QStringList& pages)
{
    const bool text = m_request.kind == DocumentKind::Text || m_request.kind == DocumentKind::Word;
    return text ? writeText(pages) : writeSearchable(pages);
}

Documents::Outcome Documents::writeText(const QStringList& pages)
{
    const QFileInfo out(m_request.out);
    OcrJob job;
    job.folder = out.absolutePath();
    job.name = out.completeBaseName();
    job.progress = m_progress;
    job.cancelled = m_cancelled;
    job.traceTo = -1;
    const OcrResult result = m_request.kind == DocumentKind::Text ? TextDocument(job).ocrProcess(pages)
                                                                  : WordDocument(job).xmltowordpages(pages);
    Outcome outcome{result.saved, result.problem, result.notices, {}};
    for (int i = 0; i < result.pages.size(); ++i) {
        const PageNotes& notes = result.pages[i];
        outcome.pages << PageLine{pages[i], notes.boxes, notes.confidence, notes.seconds,
                                  notes.problems.join(QStringLiteral("; "))};
    }
    return outcome;
}

Documents::Outcome Documents::writeSearchable(const QStringList& pages)
{
    paths::ensureFolders(); // the writers work in the temporary folder below the install root
    const QFileInfo out(m_request.out);
    DocumentJob job;
    job.folder = out.absolutePath();
    job.baseName = out.completeBaseName();
    job.paperIndex = m_request.paperIndex;
    job.progress = m_progress;
    job.cancelled = m_cancelled;
    NotingReader reader;
    const DocumentResult result = m_request.kind == DocumentKind::Pdf
                                      ? SearchablePdf(reader, job).pdfOcrProcess(pages)
                                      : SearchableOfd(reader, job).ofdOcrProcess(pages);
    Outcome outcome{result.saved, result.problem, {}, reader.lines()};
    if (!result.warning.isEmpty())
        outcome.notices << result.warning;
    return outcome;
}

} // namespace companion
