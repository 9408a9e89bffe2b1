// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/functionbatch.h"
#include "output/documentnames.h"

#include <QStringList>
#include <QVector>
#include <QWidget>
#include <memory>

class FunctionControls;
class FunctionHost;
class PageReader;
class QSettings;
struct DocumentJob;
struct DocumentResult;
namespace Ui {
class pdfpanel;
}

// The panel of the "PDF  Utility" function: scans and gathers the pages into PDF or OFD documents. There is
// one on each page of the window. GUI thread; the work on pages and documents runs beside it while events are
// pumped.
class pdfpanel : public QWidget
{
    Q_OBJECT
public:
    // `page` begins the settings groups: "Scan" or "File". `host` must outlive the panel.
    pdfpanel(const QString& page, FunctionHost& host, QWidget* parent = nullptr);
    ~pdfpanel() override;

    FunctionControls& functionControls();
    const FunctionControls& functionControls() const;

    void scanButtonClicked();
    void previewButtonClicked();
    const char* getSaveType() const; // "pdf", "ofd"; null for a format that no list has
    // Writes one document; type as of getSaveType().
    DocumentResult savePDForOFD(const QStringList& pages, const QString& baseName, const char* type);
    DocumentResult pdfOcrProcess(const QStringList& pages, const QString& baseName, const char* type);
    DocumentResult ofdOcrProcess(const QStringList& pages, const QString& saveDir, const QString& baseName,
                                 int paperCode);
    QString getImageName() const; // takes the next name of the panel's group

    // Pages, as on the window's own pages; the results go between the page files.
    PageResult imageProcess(const QString& pageFile);
    PageResult imageAppendProcess(const QString& frontFile, const QString& backFile);

    // Settings. The group is begun in `settings`; the others open the files and work on the panel's groups.
    void readIni(QSettings* settings);
    void writeIni(QSettings* settings) const;
    void scanReadIni(); // of the panel on the scan page ...
    bool scanWriteIni();
    void fileReadIni(); // ... and on the file page
    bool fileWriteIni();
    void setDefaultValue();
    // Whether reading from these two files would leave all controls as they are.
    bool matches(QSettings& main, const QSettings& path) const;

    void setPreviewEnabled(bool enabled);
    // The window has ended the job that this panel had begun.
    void jobEnded();

public slots:
    void scanImageConvertPDFslots();
    // What the watcher of the scanner's keys reports. 4: off-line, nothing can be previewed.
    void scannerOnLineFlagslots(int code);
    void on_previewPushButton_clicked();

signals:
    void sendPDFProcessMessg(const QString& text);

private:
    void bindControls(const QString& page);
    int formatIndex() const;
    // pages
    PageOptions pageOptions() const;
    FunctionBatch::Panel batchSteps();
    // documents
    void writeDocuments(DocumentNames& names);
    bool writeDocument(const QVector<DocumentPage>& pages, const QString& baseName, const NamingRules& rules);
    DocumentResult plainDocument(const QStringList& pages, const QString& baseName, const char* type);
    DocumentJob documentJob(const QString& folder, const QString& baseName, int paperIndex, int pages);
    PageReader& reader();
    void finishBatch(const NamingRules& rules);

    std::unique_ptr<Ui::pdfpanel> ui;
    FunctionHost& m_host;
    std::unique_ptr<FunctionBatch> m_batch;
    bool m_previewRequested = false; // by the panel's own button: the form is set back afterwards
    int m_preview = 0;               // 1 while a preview scan runs
    std::unique_ptr<PageReader> m_reader;
};
