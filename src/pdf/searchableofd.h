// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pdf/documentreading.h"
#include "pdf/textlines.h"

#include <QMap>

class OfdPackage;

// Writes an OFD document that holds the recognised text of pages where it stands on the scan, and nothing
// else: no page picture. Its parts are written into the save folder and packed there by the companion program
// of the install root. One object for one document; GUI thread; nothing is thrown.
class SearchableOfd
{
public:
    SearchableOfd(PageReader& reader, DocumentJob job);

    // Recognises and writes all pages in their order; a page that cannot be read stays empty in the document.
    // Parts that an interrupted run left are removed first; parts that are the user's own end the work.
    DocumentResult ofdOcrProcess(const QStringList& pages);

    // The lines of one page. Empty for a page without text or one that cannot be read.
    QMap<int, zarnOFDLINERET> ofdOpenSource(const QString& imagePath);

private:
    bool writePages(const QStringList& pages, OfdPackage& package);
    bool pack();

    DocumentReading m_reading;
    int m_pageWidthMm = 0;
};
