// SPDX-License-Identifier: GPL-3.0-or-later
// The panel's batch from the end of the scan to the last document.
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/functioncontrols.h"
#include "forms/functionform.h"
#include "forms/functionhost.h"
#include "forms/noticeboard.h"
#include "forms/scanpagelogic.h"
#include "imaging/backgroundrun.h"
#include "output/savefolder.h"
#include "pdf/documentjob.h"
#include "pdf/documentplan.h"
#include "pdf/pdfpanel.h"
#include "pdf/searchableofd.h"
#include "pdf/searchablepdf.h"
#include "ui_pdfpanel.h"

#include <QComboBox>
#include <QDebug>
#include <QFileInfo>

namespace {

constexpr int kLastTextMs = 200; // how long the last page's text stays
constexpr int kPaperOffset = 2;  // of paper codes over the paper list's items

int wholeSetting(const char* key)
{
    const auto settings = openMainSettings();
    const GroupScope scope(*settings, groups::wholeSet);
    return readInt(*settings, key);
}

} // namespace

// --- one page --------------------------------------------------------------------------------------------

int pdfpanel::formatIndex() const
{
    return ui->form->function().logic->fileFormat();
}

const char* pdfpanel::getSaveType() const
{
    return documentType(formatIndex());
}

QString pdfpanel::getImageName() const
{
    return takeImageName(ui->form->function().groups.scan, m_preview == 1);
}

// JPEG for grey and colour, else PNG.
PageOptions pdfpanel::pageOptions() const
{
    const bool twoLevel = functionControls().logic->colorMode() == ScanPageLogic::BlackWhite;
    return m_batch->pageOptions(twoLevel ? QStringLiteral("png") : QStringLiteral("jpg"));
}

PageResult pdfpanel::imageProcess(const QString& pageFile)
{
    return m_batch->imageProcess(pageFile);
}

PageResult pdfpanel::imageAppendProcess(const QString& frontFile, const QString& backFile)
{
    return m_batch->imageAppendProcess(frontFile, backFile);
}

// --- the batch ---------------------------------------------------------------------------------------------

FunctionBatch::Panel pdfpanel::batchSteps()
{
    FunctionBatch::Panel panel;
    panel.progress = [this](const QString& text) { emit sendPDFProcessMessg(text); };
    panel.options = [this] { return pageOptions(); };
    panel.steps.page = [this](const QString& page) { return imageProcess(page); };
    panel.steps.sheet = [this](const QString& front, const QString& back) {
        return imageAppendProcess(front, back);
    };
    // The event loop has run during the work and goes on with the next page: the text is seen.
    panel.processed = [this](int number) { emit sendPDFProcessMessg(tr("正在处理第%1张图像").arg(number)); };
    return panel;
}

void pdfpanel::scanImageConvertPDFslots()
{
    if (!m_batch->begin(m_preview == 1))
        return;
    DocumentNames names(functionControls().groups.scan);
    if (m_batch->processPages()) {
        pumpEvents(kLastTextMs);
        emit sendPDFProcessMessg(tr("正在生成版式文件数据"));
        writeDocuments(names);
    }
    finishBatch(names.rules());
}

void pdfpanel::writeDocuments(DocumentNames& names)
{
    if (m_preview == 1)
        return;
    QVector<DocumentPage> pages;
    pages.swap(m_batch->pages());
    const bool split = ScanPageLogic::isOn(ui->handcombineCheckBox);
    const QVector<QVector<DocumentPage>> documents = groupPages(pages, split, wholeSetting(keys::splitCount));
    int written = 0;
    for (; written < documents.size(); ++written) {
        const QString type = QString::fromLatin1(getSaveType());
        m_host.showPages(written, documents.size());
        if (m_host.isCancelled() ||
            !writeDocument(documents.at(written), names.next(written, ui->form->folder(), type),
                           names.rules())) {
            for (const QVector<DocumentPage>& left : documents.mid(written))
                m_batch->pages() << left;
            m_batch->cancelDocuments(sourcesOf(m_batch->pages()).size());
            break;
        }
    }
    m_host.showPages(documents.size(), documents.size());
    names.advance(written);
    m_reader.reset();
}

// False: cancelled, nothing was saved and the pages are where they were.
bool pdfpanel::writeDocument(const QVector<DocumentPage>& pages, const QString& baseName,
                             const NamingRules& rules)
{
    const SaveFolder folder = prepareSaveFolder(ui->form->folder());
    DocumentResult result;
    if (folder.good())
        result = savePDForOFD(filesOf(pages), baseName, getSaveType());
    else
        result.problem = folder.problem;
    if (result.cancelled)
        return false;
    SavedDocument document{result.saved, result.file, result.problem, {}, result.unread};
    if (!result.warning.isEmpty())
        document.notices << result.warning;
    m_batch->takeDocument(document, pages, baseName, rules);
    return true;
}

DocumentResult pdfpanel::savePDForOFD(const QStringList& pages, const QString& baseName, const char* type)
{
    if (pages.isEmpty() || !type) {
        qDebug() << "no image";
        return {};
    }
    const bool pdf = qstrcmp(type, "pdf") == 0;
    if (!isSearchable(formatIndex()))
        return plainDocument(pages, baseName, type);
    if (pdf)
        return pdfOcrProcess(pages, baseName, type);
    qDebug().noquote() << "now is 可搜索OFD";
    return ofdOcrProcess(pages, ui->form->folder() + QLatin1Char('/'), baseName,
                         functionControls().controls.paperSize->currentIndex() + kPaperOffset);
}

// The pages' pictures as they are, written by the image library.
DocumentResult pdfpanel::plainDocument(const QStringList& pages, const QString& baseName, const char* type)
{
    const QString folder = ui->form->folder();
    const int paperCode = functionControls().controls.paperSize->currentIndex() + kPaperOffset;
    ImageConvertFunction& library = m_host.library();
    DocumentResult result;
    result.file = folder + QLatin1Char('/') + baseName + QLatin1Char('.') + QLatin1String(type);
    runWithEvents([&] {
        result.saved = qstrcmp(type, "pdf") == 0
                           ? library.savePDF(pages, folder, baseName, type)
                           : library.saveOFD(pages, folder + QLatin1Char('/'), baseName, paperCode);
    });
    if (result.saved)
        return result;
    qWarning().noquote() << "document" << result.file << "not written:" << library.lastError();
    if (!library.lastErrorPage().isEmpty())
        result.problem = tr("页面 %1 无法读取").arg(QFileInfo(library.lastErrorPage()).fileName());
    else
        result.problem =
            library.lastErrorIsDiskFull() ? tr("磁盘空间不足") : tr("无法写入文件夹 %1").arg(folder);
    return result;
}

DocumentJob pdfpanel::documentJob(const QString& folder, const QString& baseName, int paperIndex, int pages)
{
    DocumentJob job;
    job.folder = folder;
    job.baseName = baseName;
    job.paperIndex = paperIndex;
    job.progress = [this, pages, page = 0](const QString& text) mutable {
        m_host.showPages(page++, pages); // a text for every page
        emit sendPDFProcessMessg(text);
    };
    job.cancelled = [this] { return m_host.isCancelled(); };
    return job;
}

DocumentResult pdfpanel::pdfOcrProcess(const QStringList& pages, const QString& baseName, const char* type)
{
    DocumentJob job = documentJob(ui->form->folder(), baseName,
                                  functionControls().controls.paperSize->currentIndex(), pages.size());
    job.typeWord = QString::fromLatin1(type);
    return SearchablePdf(reader(), job).pdfOcrProcess(pages);
}

DocumentResult pdfpanel::ofdOcrProcess(const QStringList& pages, const QString& saveDir,
                                       const QString& baseName, int paperCode)
{
    return SearchableOfd(reader(), documentJob(saveDir, baseName, paperCode - kPaperOffset, pages.size()))
        .ofdOcrProcess(pages);
}

// One engine serves all documents of a batch: loading the model takes its time.
PageReader& pdfpanel::reader()
{
    if (!m_reader)
        m_reader = std::make_unique<EnginePageReader>();
    return *m_reader;
}

// --- the end -----------------------------------------------------------------------------------------------

void pdfpanel::finishBatch(const NamingRules& rules)
{
    if (m_preview == 1) {
        m_batch->endPreview();
        return;
    }
    m_batch->renameDocuments(rules);
    m_batch->end(m_host.notices().summary(ui->form->folder()));
}
