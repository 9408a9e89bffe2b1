// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/functionbatch.h"
#include "ocr/ocrjob.h"

#include <QPointer>
#include <QWidget>
#include <fstream>
#include <memory>

class DocumentNames;
class FunctionControls;
class FunctionHost;
class PreviewWidget;
class QSettings;
namespace Ui {
class ocrpanel;
}

// The panel of the "OCR  Utility" function: scans pages and writes their text into one document, plain or for
// Word. There is one on each page of the window. GUI thread; the work on pages and the document runs beside
// it while events are pumped.
class ocrpanel : public QWidget
{
    Q_OBJECT
public:
    // `page` begins the settings groups: "Scan" or "File". `host` must outlive the panel.
    ocrpanel(const QString& page, FunctionHost& host, QWidget* parent = nullptr);
    ~ocrpanel() override;

    FunctionControls& functionControls();

    void scanButtonClicked();
    void previewButtonClicked(); // shows the pages and makes no document

    // Pages, as on the window's own pages; the results go between the page files.
    PageResult imageProcess(const QString& pageFile);
    PageResult imageAppendProcess(const QString& frontFile, const QString& backFile);

    // The document of finished pages, of the type that the panel shows, under the batch's name. `savePath` is
    // an existing folder.
    OcrResult processedOcrType(const QString& savePath, const QStringList& files);
    OcrResult ocrProcess(const QString& savePath, const QStringList& files, const QString& name);
    OcrResult xmltowordpages(const QString& savePath, const QStringList& files, const QString& name);

    // Streams the text of a picture to an open file; in any thread.
    static void handleTxtOcrTest(const QString& imageFile, std::ofstream& out);

    // Settings. The group is begun in `settings`; the others open the files and work on the panel's groups.
    void readIni(QSettings* settings);
    void writeIni(QSettings* settings) const;
    void scanReadIni(); // of the panel on the scan page ...
    bool scanWriteIni();
    void fileReadIni(); // ... and on the file page
    bool fileWriteIni();
    void ocrSetDefaultValue();
    // Whether reading from these two files would leave all controls as they are.
    bool matches(QSettings& main, const QSettings& path) const;

    // The window has ended the job that this panel had begun.
    void jobEnded() { m_preview = false; }

public slots:
    void scanImageConvertOCRslots();

signals:
    void sendOCRProcessMessg(const QString& text);

private:
    struct Preview;

    void bindControls(const QString& page);
    FunctionBatch::Panel batchSteps();
    bool isText() const; // else for Word
    bool writeDocument(DocumentNames& names);
    OcrJob job(const QString& folder, const QString& name, int pages);
    Preview loadPreview(const OcrResult& document, const QStringList& pages) const;
    void show(const Preview& preview);

    std::unique_ptr<Ui::ocrpanel> ui;
    FunctionHost& m_host;
    std::unique_ptr<FunctionBatch> m_batch;
    bool m_preview = false; // while a preview scan runs
    QString m_documentName; // of this batch
    std::unique_ptr<Preview> m_loaded;
    QPointer<PreviewWidget> m_shown;
};
