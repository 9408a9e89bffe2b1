// SPDX-License-Identifier: GPL-3.0-or-later
// The panel's batch from the end of the scan to the last document.
#include "config/applicationlist.h"
#include "config/leftovers.h"
#include "config/progresswords.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/functioncontrols.h"
#include "forms/functionform.h"
#include "forms/functionhost.h"
#include "forms/noticeboard.h"
#include "forms/pagebatch.h"
#include "forms/previewwidget.h"
#include "forms/scanpagelogic.h"
#include "imaging/backgroundrun.h"
#include "output/savefolder.h"
#include "pdf/documentjob.h"
#include "pdf/pdfpanel.h"
#include "pdf/searchableofd.h"
#include "pdf/searchablepdf.h"
#include "pdf/turnedcopy.h"
#include "ui_pdfpanel.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr int kSettleMs = 2000;    // after a scan, before the page files are listed
constexpr int kCancelledMs = 2000; // how long the cancel text stays before the controls come back
constexpr int kLastTextMs = 200;   // how long the last page's text stays
constexpr int kDuplex = 4;         // source number
constexpr int kPaperOffset = 2;    // of paper codes over the paper list's items

int wholeSetting(const char* key)
{
    const auto settings = openMainSettings();
    const GroupScope scope(*settings, groups::wholeSet);
    return readInt(*settings, key);
}

void removeFiles(const QStringList& files)
{
    for (const QString& file : files)
        QFile::remove(file);
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

// Finished pages stand among the page files, with their resolution: JPEG for grey and colour, else PNG.
PageOptions pdfpanel::pageOptions() const
{
    PageOptions options = ui->form->function().pageOptions(true);
    const bool twoLevel = options.colorMode == ColorMode::BlackAndWhite;
    options.saveType = QString::fromLatin1(twoLevel ? "png" : "jpg");
    options.compression.reset(); // the library's default: JPEG 85
    options.replaceExisting = true;
    return options;
}

PagePipeline pdfpanel::pipeline()
{
    return PagePipeline(m_host.library(), [this] { return pageBaseName(++m_pageNumber); });
}

// A sheet turned about its short edge between the two scans has its back upside down.
bool pdfpanel::isUpsideDown(const QString& pageFile) const
{
    return ui->form->function().logic->sourceNumber() == kDuplex && pageNumber(pageFile) % 2 == 0 &&
           wholeSetting(keys::longShortRotate) == 1;
}

PageResult pdfpanel::imageProcess(const QString& pageFile)
{
    return process({pageFile},
                   [](PagePipeline& pipeline, const QStringList& files, const PageOptions& options) {
                       return pipeline.processPage(files.first(), options);
                   });
}

PageResult pdfpanel::imageAppendProcess(const QString& frontFile, const QString& backFile)
{
    return process({frontFile, backFile},
                   [](PagePipeline& pipeline, const QStringList& files, const PageOptions& options) {
                       return pipeline.processSheet(files.first(), files.last(), options);
                   });
}

PageResult pdfpanel::process(const QStringList& pageFiles, const PageStep& step)
{
    const PageOptions options = pageOptions();
    std::vector<bool> upsideDown;
    for (const QString& file : pageFiles)
        upsideDown.push_back(isUpsideDown(file));
    PageResult result;
    runWithEvents([&] {
        std::vector<std::unique_ptr<TurnedCopy>> copies;
        QStringList files;
        for (int i = 0; i < pageFiles.size(); ++i) {
            copies.push_back(std::make_unique<TurnedCopy>(m_host.library(), pageFiles.at(i),
                                                          upsideDown[static_cast<std::size_t>(i)]));
            if (!copies.back()->good()) {
                result.problems
                    << tr("无法旋转页面文件 %1，文件已保留").arg(QFileInfo(pageFiles.at(i)).fileName());
                return;
            }
            files << copies.back()->path();
        }
        PagePipeline chain = pipeline();
        result = step(chain, files, options);
    });
    return result;
}

// --- the batch ---------------------------------------------------------------------------------------------

void pdfpanel::scanImageConvertPDFslots()
{
    pumpEvents(kSettleMs);
    m_pages.clear();
    m_blankSources.clear();
    m_inputs = 0;
    m_pageNumber = 0;
    if (m_host.isCancelled()) {
        cancelledScan();
        return;
    }
    m_host.reportOutcome();
    DocumentNames names(functionControls().groups.scan);
    removeStalePages();
    if (processPages()) {
        emit sendPDFProcessMessg(tr("正在生成版式文件数据"));
        writeDocuments(names);
    }
    finishBatch(names.rules());
}

void pdfpanel::cancelledScan()
{
    emit sendPDFProcessMessg(tr("取消扫描"));
    pumpEvents(kCancelledMs);
    m_host.dropCancel();
    const QStringList left = pageFiles();
    if (m_preview == 1)
        removeFiles(left);
    else if (!left.isEmpty())
        m_host.leavePages();
    const bool kept = m_preview == 0 && !left.isEmpty();
    const QString text = kept ? tr("取消扫描，已扫描的页面将与下一次任务一起处理") : tr("取消扫描");
    m_host.notices().addProblem(text);
    emit sendPDFProcessMessg(progress::kFinished);
    m_host.showSummary(text);
}

// False: the user has cancelled, and the page files wait for the next batch.
bool pdfpanel::processPages()
{
    const QStringList files = pageFiles();
    PageBatch batch;
    batch.merging = [this] { return pageOptions().merge; };
    batch.page = [this](const QString& page) { return imageProcess(page); };
    batch.sheet = [this](const QString& front, const QString& back) {
        return imageAppendProcess(front, back);
    };
    batch.take = [this](const PageResult& result, const QStringList& sources) {
        takeResult(result, sources);
    };
    const int left = batch.run(files, m_host);
    if (left > 0) {
        cancelDocuments(files.size());
        return false;
    }
    removeFiles(m_blankSources);
    pumpEvents(kLastTextMs);
    return true;
}

// A page's scan stays until its document is complete: a cancel in between loses nothing.
void pdfpanel::takeResult(const PageResult& result, const QStringList& sources)
{
    for (const QString& file : result.files)
        m_pages << DocumentPage{file, {}};
    if (result.sourceDone && !result.files.isEmpty())
        m_pages.last().sources = sources;
    for (const QString& problem : result.problems)
        m_host.notices().addProblem(problem);
    if (result.blank) {
        qDebug() << "image is blank";
        m_host.notices().addBlank();
        m_blankSources << sources;
    }
    // The event loop has run during the work and goes on with the next page: the text is seen.
    emit sendPDFProcessMessg(tr("正在处理第%1张图像").arg(++m_inputs));
}

// The scans of what has not become a document wait for the next batch; after a preview nobody wants them.
void pdfpanel::cancelDocuments(int scans)
{
    removeFiles(filesOf(m_pages));
    m_pages.clear();
    if (m_preview == 1) {
        removeFiles(pageFiles());
        m_host.notices().addProblem(tr("取消扫描"));
        return;
    }
    m_host.leavePages();
    m_host.notices().addProblem(tr("取消扫描，%1 页未处理，将与下一次任务一起处理").arg(scans));
}

void pdfpanel::writeDocuments(DocumentNames& names)
{
    if (m_preview == 1) {
        m_previewFiles = filesOf(m_pages);
        removeFiles(sourcesOf(m_pages));
        return;
    }
    const bool split = ScanPageLogic::isOn(ui->handcombineCheckBox);
    const QVector<QVector<DocumentPage>> documents =
        groupPages(m_pages, split, wholeSetting(keys::splitCount));
    m_pages.clear();
    for (int k = 0; k < documents.size(); ++k) {
        const QString type = QString::fromLatin1(getSaveType());
        m_host.showPages(k, documents.size());
        if (m_host.isCancelled() ||
            !writeDocument(documents.at(k), names.next(k, ui->form->folder(), type), names.rules())) {
            for (const QVector<DocumentPage>& pages : documents.mid(k))
                m_pages << pages;
            names.advance(k);
            cancelDocuments(sourcesOf(m_pages).size());
            break;
        }
    }
    m_host.showPages(documents.size(), documents.size());
    if (m_pages.isEmpty())
        names.advance(documents.size());
    m_reader.reset();
}

// False: cancelled, nothing was saved and the pages are where they were.
bool pdfpanel::writeDocument(const QVector<DocumentPage>& pages, const QString& baseName,
                             const NamingRules& rules)
{
    const QStringList files = filesOf(pages);
    const SaveFolder folder = prepareSaveFolder(ui->form->folder());
    DocumentResult result;
    if (folder.good())
        result = savePDForOFD(files, baseName, getSaveType());
    else
        result.problem = folder.problem;
    if (result.cancelled)
        return false;
    NoticeBoard& notices = m_host.notices();
    if (result.saved) {
        notices.addSaved({result.file});
        if (!result.warning.isEmpty())
            notices.addProblem(result.warning);
        if (!result.unread.isEmpty())
            notices.addProblem(tr("文档 %1 中 %2 页无法读取，页面已移至 %3")
                                   .arg(baseName)
                                   .arg(result.unread.size())
                                   .arg(keepFailedPages(result.unread, baseName)));
        removeFiles(files);
        if (!(rules.askAfter && rules.userDefined))
            startApplication(result.file);
    } else {
        notices.addProblem(tr("文档 %1 未能保存：%2；页面已移至 %3")
                               .arg(baseName, result.problem, keepFailedPages(files, baseName)));
    }
    removeFiles(sourcesOf(pages));
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

// The program that the naming rules want when the scan is finished, else the one chosen in the panel.
void pdfpanel::startApplication(const QString& path)
{
    const FunctionControls& function = functionControls();
    const NamingRules rules = function.namingRules(); // read afresh
    const bool chosen = ScanPageLogic::isOn(function.controls.appStart);
    if (!(rules.finishStartApp || chosen) || !QFileInfo::exists(path))
        return;
    const QString named = applicationCommand(function.applications, rules.appName);
    const QString command = !rules.finishStartApp ? function.selectedCommand()
                            : named.isEmpty()     ? rules.appName
                                                  : named;
    const QFileInfo file(path);
    if (!m_host.library().imageStartExe(file.path() + QLatin1Char('/'),
                                        QFile::encodeName(file.completeBaseName()).constData(),
                                        file.suffix().toLatin1().constData(), command.toUtf8().constData()))
        m_host.notices().addProblem(tr("无法启动应用程序打开 %1").arg(path));
}

void pdfpanel::finishBatch(const NamingRules& rules)
{
    const QStringList previews = m_previewFiles;
    const bool preview = m_preview == 1;
    if (!preview && rules.askAfter && rules.userDefined) {
        m_host.renameSaved(functionControls().groups.scan);
        for (const QString& path : m_host.notices().saved())
            startApplication(path);
    }
    m_host.showSummary(preview && !m_host.notices().hasProblems()
                           ? tr("预览完成")
                           : m_host.notices().summary(ui->form->folder()));
    emit sendPDFProcessMessg(progress::kFinished);
    const auto group = std::make_shared<PreviewGroup>();
    for (const QString& path : previews) {
        qDebug().noquote() << "preview" << path;
        auto* viewer = new PreviewWidget(group);
        viewer->setPreviewFilePthAndShow(path);
        QFile::remove(path);
        qDebug() << " remove ";
        QCoreApplication::processEvents(); // a large picture takes its time to load
    }
}
