// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/functionhost.h"
#include "forms/pagebatch.h"
#include "imaging/documentpages.h"
#include "imaging/pagepipeline.h"
#include "output/naming.h"

#include <QCoreApplication>
#include <functional>

class FunctionForm;

// What became of a document.
struct SavedDocument
{
    bool saved = false; // it stands in `file`
    QString file;
    QString problem;     // for the user: why there is none
    QStringList notices; // for the user: what else is worth knowing
    QStringList unread;  // page files that could not be read
};

// A panel's batch between the end of the scan and its documents: the scans become finished pages among the
// page files, and stay until a document of them is complete, so that a cancel in between loses nothing. GUI
// thread; the work on pages runs beside it while events are pumped.
class FunctionBatch
{
    Q_DECLARE_TR_FUNCTIONS(FunctionBatch)
public:
    // What differs from panel to panel.
    struct Panel
    {
        std::function<void(const QString&)> progress; // to the window
        std::function<PageOptions()> options;         // read afresh for every page
        // Of `steps`: page, sheet, announce; the others are the batch's.
        PageBatch steps;
        std::function<void(int number)> processed; // after an input, counted from 1; may be empty
    };

    FunctionBatch(const FunctionForm& form, FunctionHost& host, Panel panel);

    // The pipeline's options from the form, for pages that stand among the page files as `saveType` and carry
    // their resolution.
    PageOptions pageOptions(const QString& saveType) const;

    // One page, or the two sides of one sheet, through the pipeline; back sides that came out head down are
    // turned.
    PageResult imageProcess(const QString& pageFile);
    PageResult imageAppendProcess(const QString& frontFile, const QString& backFile);

    // Starts the scan with the parameters of the form; `over` is called when the scan thread has ended.
    void startScan(FunctionHost::Receiver receiver, std::function<void()> over, bool preview);
    // When the scan thread has ended. False: the scan was cancelled, and the job is over; the user knows. In
    // a preview nobody wants the pages of a cancelled batch.
    bool begin(bool preview);
    // Takes all scans to finished pages. False: cancelled, and the scans wait for the next batch.
    bool processPages();
    QVector<DocumentPage>& pages() { return m_pages; }
    // Drops the finished pages; the scans of what has not become a document wait for the next batch.
    void cancelDocuments(int scans);

    // Tells the user what became of a document, starts the program that shall open it, removes its pages and
    // their scans; the pages of one that failed are kept.
    void takeDocument(const SavedDocument& document, const QVector<DocumentPage>& pages,
                      const QString& baseName, const NamingRules& rules);
    // Where the rules want it: asks for the prefix of all saved documents, and starts the program then.
    void renameDocuments(const NamingRules& rules);
    // The last texts of a batch; the controls come back.
    void end(const QString& summary);
    // The same for a preview: its pages are shown, and nothing is left of them.
    void endPreview();

private:
    using PageStep = std::function<PageResult(PagePipeline&, const QStringList& files, const PageOptions&)>;

    bool isUpsideDown(const QString& pageFile) const;
    PageResult process(const QStringList& pageFiles, const PageStep& step);
    void takeResult(const PageResult& result, const QStringList& sources);
    void startApplication(const QString& path);

    const FunctionForm& m_form;
    FunctionHost& m_host;
    Panel m_panel;
    bool m_preview = false;
    QVector<DocumentPage> m_pages; // finished
    QStringList m_blankSources;
    int m_inputs = 0;     // pages and sheets that were processed
    int m_pageNumber = 0; // of the last finished page
};
