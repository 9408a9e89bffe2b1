// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/ocrpanel.h"

#include "config/leftovers.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/functioncontrols.h"
#include "forms/functionform.h"
#include "forms/functionsettings.h"
#include "forms/noticeboard.h"
#include "forms/previewwidget.h"
#include "forms/scanpagelogic.h"
#include "imaging/backgroundrun.h"
#include "ocr/documenttext.h"
#include "ocr/textdocument.h"
#include "ocr/textprobe.h"
#include "ocr/worddocument.h"
#include "output/documentnames.h"
#include "output/savefolder.h"
#include "ui_ocrpanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>

namespace {

constexpr int kPreviewSide = 2000; // pixels: readable, and soon on the screen

bool isWord(const QString& file)
{
    return file.endsWith(QLatin1String(".doc"));
}

} // namespace

// What the preview shows, independent of the files.
struct ocrpanel::Preview
{
    QString name;
    QVector<PreviewPicture> pages;
    QStringList texts; // one for all pages, or one for each
};

ocrpanel::ocrpanel(const QString& page, FunctionHost& host, QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::ocrpanel>()), m_host(host)
{
    ui->setupUi(this);
    ui->form->setSourceLabel(tr("扫描类型:"));
    ui->form->addToPages(ui->splitCheckBox);
    ui->form->showInsteadOfFormats(ui->documentTypeComboBox, tr("文档类型:"));
    ui->form->previewButton()->hide(); // what was recognised is shown after the scan
    bindControls(page);
    m_batch = std::make_unique<FunctionBatch>(*ui->form, m_host, batchSteps());
    ui->form->readStored();
}

ocrpanel::~ocrpanel() = default;

void ocrpanel::bindControls(const QString& page)
{
    constexpr int kSources = 4; // without the automatic one
    ScanPageControls c = ui->form->controls();
    c.split = ui->splitCheckBox;
    while (c.source->count() > kSources)
        c.source->removeItem(kSources);
    c.resolution->clear();
    c.resolution->addItems({QStringLiteral("300"), QStringLiteral("200"), QStringLiteral("400"),
                            QStringLiteral("600"), tr("自定义")});
    // Stored like everywhere; the pages themselves go without loss to the recogniser.
    c.fileType->addItems(
        {QStringLiteral("JPEG"), QStringLiteral("TIFF"), QStringLiteral("PNG"), QStringLiteral("BMP")});
    ui->form->setUp(c, panelGroups(page, QStringLiteral("OCR")));
    SettingBinding& binding = ui->form->settings().binding();
    binding.bind(keys::fileType, c.fileType);
    binding.bind(keys::docType, ui->documentTypeComboBox);
}

FunctionControls& ocrpanel::functionControls()
{
    return ui->form->function();
}

bool ocrpanel::isText() const
{
    return ui->documentTypeComboBox->currentIndex() == 0;
}

// --- settings --------------------------------------------------------------------------------------------

void ocrpanel::readIni(QSettings* settings)
{
    ui->form->settings().read(*settings);
}

void ocrpanel::writeIni(QSettings* settings) const
{
    ui->form->settings().write(*settings);
}

void ocrpanel::scanReadIni()
{
    ui->form->readStored();
}

bool ocrpanel::scanWriteIni()
{
    return ui->form->writeStored();
}

void ocrpanel::fileReadIni()
{
    ui->form->readStored();
}

bool ocrpanel::fileWriteIni()
{
    return ui->form->writeStored();
}

// The controls; folder and "saveFile" are stored at once.
void ocrpanel::ocrSetDefaultValue()
{
    ui->form->setDefaults();
}

bool ocrpanel::matches(QSettings& main, const QSettings& path) const
{
    return ui->form->matches(main, path);
}

// --- the batch ---------------------------------------------------------------------------------------------

void ocrpanel::scanButtonClicked()
{
    if (m_host.beginJob(this, m_preview))
        m_batch->startScan(
            FunctionHost::Receiver::Ocr, [this] { scanImageConvertOCRslots(); }, m_preview);
    else
        jobEnded();
}

void ocrpanel::previewButtonClicked()
{
    m_preview = true;
    scanButtonClicked();
}

FunctionBatch::Panel ocrpanel::batchSteps()
{
    FunctionBatch::Panel panel;
    panel.progress = [this](const QString& text) { emit sendOCRProcessMessg(text); };
    panel.options = [this] {
        PageOptions options = m_batch->pageOptions(QStringLiteral("png"));
        options.split = ScanPageLogic::isOn(ui->splitCheckBox);
        return options;
    };
    panel.steps.announce = [this](int number) {
        emit sendOCRProcessMessg(tr("正在处理第%1张图像").arg(number));
    };
    panel.steps.page = [this](const QString& page) { return imageProcess(page); };
    panel.steps.sheet = [this](const QString& front, const QString& back) {
        return imageAppendProcess(front, back);
    };
    return panel;
}

PageResult ocrpanel::imageProcess(const QString& pageFile)
{
    return m_batch->imageProcess(pageFile);
}

PageResult ocrpanel::imageAppendProcess(const QString& frontFile, const QString& backFile)
{
    return m_batch->imageAppendProcess(frontFile, backFile);
}

void ocrpanel::scanImageConvertOCRslots()
{
    if (!m_batch->begin(m_preview))
        return;
    DocumentNames names(functionControls().groups.scan, DocumentNames::Counter::Batches);
    const bool complete = m_batch->processPages();
    if (m_preview) {
        m_batch->endPreview();
        return;
    }
    if (complete && (m_batch->pages().isEmpty() || writeDocument(names)))
        names.advance(1);
    m_batch->renameDocuments(names.rules());
    m_batch->end(m_host.notices().summary(ui->form->folder()));
    if (m_loaded)
        show(*m_loaded);
    m_loaded.reset();
}

// False: cancelled, and the scans wait for the next batch.
bool ocrpanel::writeDocument(DocumentNames& names)
{
    QVector<DocumentPage> pages;
    pages.swap(m_batch->pages());
    const SaveFolder folder = prepareSaveFolder(ui->form->folder());
    m_documentName = names.next(0, folder.path, isText() ? QStringLiteral("txt") : QStringLiteral("doc"));
    OcrResult result;
    const bool replaces = names.rules().cover;
    if (folder.good())
        result = processedOcrType(folder.path, filesOf(pages));
    else
        result.problem = folder.problem;
    m_host.showPages(pages.size(), pages.size());
    if (result.cancelled) {
        if (!replaces)
            QFile::remove(result.file); // a text of some pages; the name was free
        m_batch->pages() = pages;
        m_batch->cancelDocuments(sourcesOf(pages).size());
        return false;
    }
    if (result.saved)
        m_loaded = std::make_unique<Preview>(loadPreview(result, filesOf(pages)));
    m_batch->takeDocument({result.saved, result.file, result.problem, result.notices, result.unread}, pages,
                          m_documentName, names.rules());
    clearTempTexts();
    return true;
}

// --- the document ------------------------------------------------------------------------------------------

OcrJob ocrpanel::job(const QString& folder, const QString& name, int pages)
{
    OcrJob job;
    job.folder = folder;
    job.name = name;
    job.progress = [this, pages, page = 0](const QString& text) mutable {
        const auto tell = [this, pages, text, done = page++] {
            m_host.showPages(done, pages);
            emit sendOCRProcessMessg(text);
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection); // from the worker
    };
    job.cancelled = [this] { return m_host.isCancelled(); };
    job.traceTo = -1;
    return job;
}

OcrResult ocrpanel::processedOcrType(const QString& savePath, const QStringList& files)
{
    return isText() ? ocrProcess(savePath, files, m_documentName)
                    : xmltowordpages(savePath, files, m_documentName);
}

// One worker for the whole document: recognising children live as long as the thread that started them.
OcrResult ocrpanel::ocrProcess(const QString& savePath, const QStringList& files, const QString& name)
{
    OcrResult result;
    runWithEvents(
        [&, task = job(savePath, name, files.size())] { result = TextDocument(task).ocrProcess(files); });
    return result;
}

OcrResult ocrpanel::xmltowordpages(const QString& savePath, const QStringList& files, const QString& name)
{
    OcrResult result;
    runWithEvents(
        [&, task = job(savePath, name, files.size())] { result = WordDocument(task).xmltowordpages(files); });
    return result;
}

void ocrpanel::handleTxtOcrTest(const QString& imageFile, std::ofstream& out)
{
    ::handleTxtOcrTest(imageFile, out);
}

// --- preview -----------------------------------------------------------------------------------------------

// The page files are removed before the preview appears.
ocrpanel::Preview ocrpanel::loadPreview(const OcrResult& document, const QStringList& pages) const
{
    Preview preview;
    preview.name = QFileInfo(document.file).fileName();
    runWithEvents([&] {
        for (const QString& page : pages) {
            PreviewPicture picture;
            picture.load(page, kPreviewSide);
            preview.pages << picture;
        }
        preview.texts = documentText(document.file);
    });
    return preview;
}

// A window of its own for each page of which one is seen; the preview of the batch before goes.
void ocrpanel::show(const Preview& preview)
{
    if (m_shown)
        m_shown->close();
    const auto group = std::make_shared<PreviewGroup>();
    for (int i = 0; i < preview.pages.size(); ++i) {
        auto* viewer = new PreviewWidget(group);
        viewer->setText(preview.texts.value(isWord(preview.name) ? i : 0), tr("文档的文字"));
        viewer->setPreviewAndShow(preview.pages.at(i), preview.name);
    }
    const QVector<PreviewWidget*> windows = group->pages();
    if (windows.isEmpty())
        return;
    m_shown = windows.first();
    if (!isWord(preview.name) && windows.size() > 1) { // the text is the last page's
        m_shown = windows.last();
        m_shown->show();
        windows.first()->hide();
    }
}
