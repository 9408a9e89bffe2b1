// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pdf/documentreading.h"
#include "pdf/textlines.h"

#include <QMap>
#include <QSize>

// Writes a PDF that holds the recognised text of pages where it stands on the scan, and nothing else: no page
// picture. One object for one document; GUI thread (needs a QGuiApplication); nothing is thrown.
class SearchablePdf
{
public:
    SearchablePdf(PageReader& reader, DocumentJob job);

    // Recognises and writes all pages in their order; a page that cannot be read stays empty in the document.
    // Empties the folder for temporary texts at the end.
    DocumentResult pdfOcrProcess(const QStringList& pages);

    // The lines of one page to be drawn, with places on the job's paper. False when the page could not be
    // read or the work is cancelled.
    bool pdfHandleMutiTest(const QString& imagePath, QMap<int, zarnPDFLINERET>& lines);

private:
    bool drawPages(const QStringList& pages, class TextPages& drawn);

    DocumentReading m_reading;
    QSize m_paper; // pixels at 300 dpi
};
