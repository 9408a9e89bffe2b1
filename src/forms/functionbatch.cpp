// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/functionbatch.h"

#include "config/applicationlist.h"
#include "config/leftovers.h"
#include "config/progresswords.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/functionform.h"
#include "forms/noticeboard.h"
#include "forms/previewwidget.h"
#include "forms/scanpagelogic.h"
#include "imaging/backgroundrun.h"
#include "imaging/turnedcopy.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <memory>
#include <vector>

namespace {

constexpr int kSettleMs = 2000;    // after a scan, before the page files are listed
constexpr int kCancelledMs = 2000; // how long the cancel text stays before the controls come back
constexpr int kDuplex = 4;         // source number

bool backsAreTurned()
{
    const auto settings = openMainSettings();
    const GroupScope scope(*settings, groups::wholeSet);
    return readInt(*settings, keys::longShortRotate) == 1;
}

} // namespace

FunctionBatch::FunctionBatch(const FunctionForm& form, FunctionHost& host, Panel panel)
    : m_form(form), m_host(host), m_panel(std::move(panel))
{
    m_panel.steps.options = m_panel.options;
    m_panel.steps.take = [this](const PageResult& result, const QStringList& sources) {
        takeResult(result, sources);
    };
}

// --- one page --------------------------------------------------------------------------------------------

PageOptions FunctionBatch::pageOptions(const QString& saveType) const
{
    PageOptions options = m_form.function().pageOptions(true);
    options.saveType = saveType;
    options.compression.reset(); // the library's default
    options.replaceExisting = true;
    return options;
}

// A sheet turned about its short edge between the two scans has its back upside down.
bool FunctionBatch::isUpsideDown(const QString& pageFile) const
{
    return m_form.function().logic->sourceNumber() == kDuplex && pageNumber(pageFile) % 2 == 0 &&
           backsAreTurned();
}

PageResult FunctionBatch::imageProcess(const QString& pageFile)
{
    return process({pageFile},
                   [](PagePipeline& pipeline, const QStringList& files, const PageOptions& options) {
                       return pipeline.processPage(files.first(), options);
                   });
}

PageResult FunctionBatch::imageAppendProcess(const QString& frontFile, const QString& backFile)
{
    return process({frontFile, backFile},
                   [](PagePipeline& pipeline, const QStringList& files, const PageOptions& options) {
                       return pipeline.processSheet(files.first(), files.last(), options);
                   });
}

PageResult FunctionBatch::process(const QStringList& pageFiles, const PageStep& step)
{
    const PageOptions options = m_panel.options();
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
        PagePipeline chain(m_host.library(), [this] { return pageBaseName(++m_pageNumber); });
        result = step(chain, files, options);
    });
    return result;
}

// --- the batch ---------------------------------------------------------------------------------------------

void FunctionBatch::startScan(FunctionHost::Receiver receiver, std::function<void()> over, bool preview)
{
    m_panel.progress(progress::preparing());
    if (m_host.makeThread())
        qDebug() << (receiver == FunctionHost::Receiver::Pdf ? "pdf" : "ocr") << "new scanThread";
    m_host.connectPageSlot(receiver, std::move(over));
    const FunctionControls& function = m_form.function();
    ScanParameters parameters;
    parameters.resolution = function.logic->scanResolution();
    parameters.source = function.logic->sourceNumber();
    parameters.paper = function.logic->paperCode();
    parameters.option13 = preview ? 2 : 1;
    parameters.continuous = ScanPageLogic::isOn(function.controls.contiScan);
    m_host.startThread(parameters);
}

bool FunctionBatch::begin(bool preview)
{
    m_preview = preview;
    m_pages.clear();
    m_blankSources.clear();
    m_inputs = 0;
    m_pageNumber = 0;
    pumpEvents(kSettleMs);
    if (!m_host.isCancelled()) {
        m_host.reportOutcome();
        removeStalePages();
        return true;
    }
    m_panel.progress(progress::cancelled());
    pumpEvents(kCancelledMs);
    m_host.dropCancel();
    const QStringList left = pageFiles();
    if (m_preview)
        removeFiles(left);
    else if (!left.isEmpty())
        m_host.leavePages();
    const bool kept = !m_preview && !left.isEmpty();
    const QString text = kept ? tr("取消扫描，已扫描的页面将与下一次任务一起处理") : progress::cancelled();
    m_host.notices().addProblem(text);
    m_panel.progress(progress::kFinished);
    m_host.showSummary(text);
    return false;
}

bool FunctionBatch::processPages()
{
    const QStringList files = pageFiles();
    if (m_panel.steps.run(files, m_host) > 0) {
        cancelDocuments(files.size());
        return false;
    }
    removeFiles(m_blankSources);
    return true;
}

void FunctionBatch::takeResult(const PageResult& result, const QStringList& sources)
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
    } else if (!result.files.isEmpty()) {
        qDebug() << "image is not blank";
    }
    ++m_inputs;
    if (m_panel.processed)
        m_panel.processed(m_inputs);
}

void FunctionBatch::cancelDocuments(int scans)
{
    removeFiles(filesOf(m_pages));
    m_pages.clear();
    if (m_preview) {
        removeFiles(pageFiles());
        m_host.notices().addProblem(progress::cancelled());
        return;
    }
    m_host.leavePages();
    m_host.notices().addProblem(tr("取消扫描，%1 页未处理，将与下一次任务一起处理").arg(scans));
}

namespace {

QStringList without(QStringList files, const QStringList& kept)
{
    for (const QString& file : kept)
        files.removeAll(file);
    return files;
}

} // namespace

// --- a document --------------------------------------------------------------------------------------------

void FunctionBatch::takeDocument(const SavedDocument& document, const QVector<DocumentPage>& pages,
                                 const QString& baseName, const NamingRules& rules)
{
    const QStringList files = filesOf(pages);
    const QStringList unreadScans = scansOf(pages, document.unread);
    NoticeBoard& notices = m_host.notices();
    if (document.saved) {
        notices.addSaved({document.file});
        for (const QString& notice : document.notices)
            notices.addProblem(notice);
        if (!document.unread.isEmpty())
            notices.addProblem(tr("文档 %1 中 %2 页无法读取，页面已移至 %3")
                                   .arg(baseName)
                                   .arg(document.unread.size())
                                   .arg(keepFailedPages(document.unread + unreadScans, baseName)));
        removeFiles(without(files, document.unread));
        if (!(rules.askAfter && rules.userDefined))
            startApplication(document.file);
    } else {
        notices.addProblem(
            tr("文档 %1 未能保存：%2；页面已移至 %3")
                .arg(baseName, document.problem, keepFailedPages(files + unreadScans, baseName)));
    }
    removeFiles(without(sourcesOf(pages), unreadScans));
}

// The program that the naming rules want when the scan is finished, else the one chosen in the panel.
void FunctionBatch::startApplication(const QString& path)
{
    const FunctionControls& function = m_form.function();
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

void FunctionBatch::renameDocuments(const NamingRules& rules)
{
    if (!rules.askAfter || !rules.userDefined)
        return;
    m_host.renameSaved(m_form.function().groups.scan);
    for (const QString& path : m_host.notices().saved())
        startApplication(path);
}

void FunctionBatch::end(const QString& summary)
{
    m_host.showSummary(summary);
    m_panel.progress(progress::kFinished);
}

void FunctionBatch::endPreview()
{
    QVector<DocumentPage> pages;
    pages.swap(m_pages);
    removeFiles(sourcesOf(pages));
    end(m_host.notices().previewSummary(pages.size()));
    const auto group = std::make_shared<PreviewGroup>();
    for (const QString& path : filesOf(pages)) {
        qDebug().noquote() << "preview" << path;
        auto* viewer = new PreviewWidget(group);
        viewer->setPreviewFilePthAndShow(path);
        QFile::remove(path);
        qDebug() << " remove ";
        QCoreApplication::processEvents(); // a large picture takes its time to load
    }
}
