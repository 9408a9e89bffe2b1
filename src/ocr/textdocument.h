// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ocr/ocrjob.h"

#include <QCoreApplication>
#include <QMap>

// Writes recognised pages as plain text. Each page with text begins the file anew, so that it ends up with
// the text of the last such page; a page without text leaves it as it is.
class TextDocument
{
    Q_DECLARE_TR_FUNCTIONS(TextDocument)
public:
    explicit TextDocument(OcrJob job) : m_loop(std::move(job)) {}

    // Recognises all pages and writes folder + "/" + name + ".txt"; without any text an empty file. When the
    // file cannot be written the former one is kept.
    OcrResult ocrProcess(const QStringList& files);

    // One page with a ready engine: false when it has text that could not be written.
    bool handleTxtOcrbycv(const QString& imageFile, int pageIndex, tesseract::TessBaseAPI* api,
                          const QString& textFile, PageNotes& notes);

private:
    void noteFailure(bool failed); // with errno, when it did
    void finish(int pageCount, OcrResult& result);

    PageLoop m_loop;
    bool m_anyText = false;
    bool m_failed = false;
    int m_error = 0; // errno of the first failure
};

// Appends the text and a line end to the file (UTF-8). False when that failed.
bool outtofile(const QString& path, const QString& text);

// Replaces the file by the page's lines in their order, whole or not at all; lines without text are left out.
// Returns the number of lines written: 0 when there are none (the file is then left as it is), -1 when
// writing failed.
int writePageLines(const QString& textFile, const QMap<int, QString>& lines);
