// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recognition/boxreading.h"

#include <QSize>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

// What was recognised on one page.
struct PageText
{
    bool readable = false;      // false: the file is missing, damaged or empty, or see `problem`
    bool cancelled = false;     // the lines are incomplete then
    QString problem;            // for the user: why nothing can be recognised on any page
    QSize size;                 // of the page in pixels at 300 dpi, whatever it was scanned with
    std::vector<BoxText> lines; // text lines in reading order, boxes in these pixels, of any confidence
    int lostLines = 0;          // lines found that could not be read
};

// Reads the text of pages: a seam, so that documents can be tested with given lines.
class PageReader
{
public:
    virtual ~PageReader() = default;
    // `symbols`: each line says where its characters stand, if that can be told. `cancelled` may be empty; it
    // is asked in the calling thread.
    virtual PageText read(const QString& picture, bool symbols, const std::function<bool()>& cancelled) = 0;
};

// Reads with the recognition engine. The engine lives in a thread of its own, started at the first page; the
// model is loaded once, and read() pumps the calling thread's events until the page is done. Make one for a
// batch of documents, in the GUI thread.
class EnginePageReader : public PageReader
{
public:
    explicit EnginePageReader(int traceTo = 2); // file descriptor of the debug lines; -1: none
    ~EnginePageReader() override;
    PageText read(const QString& picture, bool symbols, const std::function<bool()>& cancelled) override;

private:
    class Worker;
    int m_traceTo;
    std::unique_ptr<Worker> m_worker;
};
