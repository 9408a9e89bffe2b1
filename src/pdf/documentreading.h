// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pdf/documentjob.h"
#include "pdf/pagereader.h"

#include <QMap>
#include <QStringList>

// Takes the pages of a searchable document through recognition and keeps account of what the user must know
// at the end: cancelled, impossible, pages and lines that are missing.
class DocumentReading
{
public:
    DocumentReading(PageReader& reader, DocumentJob job, bool symbols);

    const DocumentJob& job() const { return m_job; }
    QString folder() const; // the job's, ending in "/"

    // Announces page `index` (from 0). False: cancelled, do not go on.
    bool announce(int index);
    // The text of one page; without lines when it could not be read.
    PageText read(const QString& picture);
    bool stopped() const { return m_result.cancelled || !m_result.problem.isEmpty(); }
    void fail(const QString& problem);

    // The result so far, with `file` as the saved document when nothing stopped the work.
    DocumentResult finish(const QString& file);

    // Nothing is left to write when no page of several could be read. Fails then.
    bool anyPageRead(int pages);

private:
    PageReader& m_reader;
    DocumentJob m_job;
    bool m_symbols;
    DocumentResult m_result;
    int m_lostLines = 0;
};
