// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ocr/ocrjob.h"
#include "ocr/wordelements.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QMap>

class QSaveFile;

// Writes recognised pages as one Word 2003 XML document that looks like the pages: every box is a text box at
// its place, every doubtful one a picture of the place. Use one object for one document.
class WordDocument
{
    Q_DECLARE_TR_FUNCTIONS(WordDocument)
public:
    explicit WordDocument(OcrJob job);

    // Recognises all pages and writes folder + "/" + name + ".doc", whole or not at all. A page that cannot
    // be read stays empty. When cancelled nothing is written.
    OcrResult xmltowordpages(const QStringList& files);

    // The paragraphs of one page by the number of their first box; the engine is ready.
    QMap<int, QDomElement> getOnePageP(const QString& imageFile, tesseract::TessBaseAPI* api,
                                       PageNotes& notes);

    // The same from the lines read on it; `frame` is where pictures are cut from.
    QMap<int, QDomElement> pageParagraphs(const QMap<int, zarnTXTLINERET>& lines, const cv::Mat& frame);

    // The document as far as it was built: after pages, end it with finishBody().
    QDomDocument& document() { return m_document; }
    void addPage(const QMap<int, QDomElement>& paragraphs, bool breakAfter);
    void finishBody();

private:
    QDomElement paragraph(const zarnTXTLINERET& record, const cv::Mat& frame);
    QDomElement picture(const zarnTXTLINERET& record, const cv::Mat& frame);
    QDomElement lineBox(const zarnTXTLINERET& record);
    QDomElement paragraphBox(const zarnTXTLINERET& record);
    bool save(QSaveFile& file);

    PageLoop m_loop;
    QDomDocument m_document;
    WordElements m_elements;
    QDomElement m_body;
    bool m_anyBox = false;
};
