// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ocr/pagetext.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class OcrEngine;

// One document to write from finished page pictures. The page files are only read; removing them is the
// caller's business, who knows from the result which ones have served.
struct OcrJob
{
    QString folder; // an existing folder, with or without "/" at its end
    QString name;   // a valid file name without extension; a file of that name is replaced

    // All may be empty. Called in the calling thread.
    std::function<void(const QString&)> progress; // "正在识别第1张图像"
    // Does the work of one page, and returns when it is done: in a worker thread where a window must stay
    // alive meanwhile.
    std::function<void(const std::function<void()>&)> run;
    // Called in the thread that `run` works in: must be safe there.
    std::function<bool()> cancelled;

    int traceTo = 2; // as ReadingControl
};

struct OcrResult
{
    bool saved = false;     // the document stands in `file`
    bool cancelled = false; // by the user, between two pages
    QString file;           // full path of the document
    QString problem;        // for the user: why there is no (complete) document
    QStringList notices;    // for the user: what else is worth knowing of it
    QStringList unread;     // page files that could not be read
    QList<PageNotes> pages; // in the order of the page files, as far as work got
};

// What both document writers do with a list of pages: one engine for the batch, initialised anew for each
// page, progress, cancelling, timing.
class PageLoop
{
    Q_DECLARE_TR_FUNCTIONS(PageLoop)
public:
    explicit PageLoop(OcrJob job);
    ~PageLoop();

    // Calls `work` for each page file with its index from 0, the initialised engine, and the notes to fill.
    // Returns early when cancelled or without a language model. Fills the result but for `saved` and `file`.
    using PageWork = std::function<void(const QString&, int, tesseract::TessBaseAPI*, PageNotes&)>;
    void overPages(const QStringList& files, const PageWork& work, OcrResult& result);

    const OcrJob& job() const { return m_job; }
    QString path(const QString& extension) const; // of the document
    ReadingControl control() const;
    // For the user; `error` as errno, 0 when unknown.
    static QString cannotWrite(const QString& file, int error);

private:
    bool readyEngine();

    OcrJob m_job;
    std::unique_ptr<OcrEngine> m_engine;
};
