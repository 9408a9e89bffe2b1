// SPDX-License-Identifier: GPL-3.0-or-later
// A batch from the request to scan to the last saved file.
#include "app/widget.h"

#include "app/globals.h"
#include "config/carryover.h"
#include "config/leftovers.h"
#include "config/progresswords.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "device/cancelflag.h"
#include "device/functionalapp.h"
#include "device/readbtn.h"
#include "device/scanthread.h"
#include "device/statefile.h"
#include "device/stateinfopanel.h"
#include "forms/pagebatch.h"
#include "forms/prefixdialog.h"
#include "forms/previewwidget.h"
#include "forms/scanpagelogic.h"
#include "imaging/backgroundrun.h"
#include "imaging/lastpage.h"
#include "imaging/pageoptions.h"
#include "ocr/ocrpanel.h"
#include "output/naming.h"
#include "output/savefolder.h"
#include "pdf/pdfpanel.h"
#include "ui_widget.h"

#include <QAction>
#include <QCheckBox>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>

namespace {

constexpr int kSettleMs = 2000;    // after a scan, before the page files are listed
constexpr int kCancelledMs = 3000; // how long the cancel text stays before the controls come back

} // namespace

void Widget::on_scanButton_clicked()
{
    TemplatePage& page = selectedPage();
    startScan(page, page.function());
}

void Widget::on_previewPushButton_5_clicked()
{
    if (m_jobRunning)
        return;
    m_preview = true;
    ui->previewPushButton_5->setEnabled(false);
    ui->applyPushButton->setEnabled(false);
    on_scanButton_clicked();
    if (!m_jobRunning && m_preview)
        endJob(); // the start was refused
}

void Widget::buttonStateSlots(int code)
{
    constexpr int kScanKey = 1;
    constexpr int kPdfKey = 2;
    constexpr int kOffline = 4;
    constexpr int kOnline = 5;
    switch (code) {
    case kScanKey:
        startScan(*m_scanPage, currentMode == QLatin1String("OCR") ? Function::Ocr : Function::Scan);
        break;
    case kPdfKey:
        startScan(*m_filePage, Function::Pdf);
        break;
    case kOffline: {
        // While a job holds the device the watcher cannot see it.
        if (m_jobRunning)
            break;
        m_connected = 0;
        setScanControls(false);
        m_showAction->setEnabled(false);
        if (m_onlineState == kOffline)
            break;
        m_onlineState = kOffline;
        if (m_lastKind != 3)
            showMessageOnWindow(3, tr("扫描仪离线"), tr("扫描仪断开或进入休眠！"));
        dropReceivers();
        hideOrMinimise();
        break;
    }
    case kOnline:
        if (m_jobRunning)
            break;
        m_connected = 1;
        setScanControls(true);
        m_showAction->setEnabled(true);
        if (m_onlineState == kOnline)
            break;
        m_onlineState = kOnline;
        if (m_lastKind != 1)
            showMessageOnWindow(1, tr("扫描仪在线"), tr("扫描仪链接成功！"));
        break;
    default:
        qDebug() << "scanner key without a function:" << code;
        break;
    }
}

void Widget::startScan(TemplatePage& page, Function function)
{
    if (!beginJob(page, function))
        return;
    switch (function) {
    case Function::Ocr:
        if (m_preview)
            page.ocr->previewButtonClicked();
        else
            page.ocr->scanButtonClicked();
        return;
    case Function::Pdf:
        if (m_preview)
            page.pdf->previewButtonClicked();
        else
            page.pdf->scanButtonClicked();
        return;
    default:
        startOwnScan();
        return;
    }
}

bool Widget::beginJob(TemplatePage& page, Function function)
{
    if (m_jobRunning)
        return false;
    if (m_maintenance->isExchanging()) {
        notice(tr("正在维护扫描仪，请稍候再扫描"));
        return false;
    }
    m_jobRunning = true;
    m_batchPage = &page;
    m_batchFunction = function;
    m_startingPanel = page.panelFor(function);
    m_notices.clear();
    setScanControls(false);
    m_maintenance->setScanRunning(true);              // before the job: an exchange's end must not end it
    m_keys->getAndSetFunctionSlot(ButtonWatch::Lent); // a dialog may come first: no status window before it
    sendProgress(progress::preparing());
    if (!confirmPrefix(page.controlsOf(function).groups.scan)) {
        sendProgress(progress::kFinished);
        endJob();
        ui->statusLabel->setText(progress::cancelled());
        return false;
    }
    state::write(state::Preparing); // the watcher must not see how the batch before ended
    m_keys->getAndSetFunctionSlot(ButtonWatch::Job);
    applySettings();
    makeThread();
    dropReceivers();
    return true;
}

bool Widget::confirmPrefix(const QString& group)
{
    const auto file = openMainSettings();
    GroupScope scope(*file, group);
    const NamingRules rules = readNamingRules(*file);
    if (!rules.askBefore || !rules.userDefined || m_preview)
        return true;
    PrefixDialog dialog(PrefixDialog::Moment::BeforeBatch, rules, this);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    file->setValue(QLatin1String(keys::name), dialog.prefix());
    return saveSettings(*file);
}

void Widget::startOwnScan()
{
    connectOwnPageSlot();
    const FunctionControls& function = workControls();
    ScanParameters parameters;
    parameters.resolution = function.logic->scanResolution();
    parameters.source = function.logic->sourceNumber();
    parameters.paper = function.logic->paperCode();
    parameters.continuous = function.logic->isOn(function.controls.contiScan);
    startThread(parameters);
}

void Widget::scanImageConvertSlot()
{
    qDebug().noquote() << QString(84, QLatin1Char('*'));
    qDebug() << "scanIMage scan slot in";
    pumpEvents(kSettleMs);
    if (cancelflag::isSet()) {
        sendProgress(progress::cancelled());
        pumpEvents(kCancelledMs);
        m_leftCancelledPages = !pageFiles().isEmpty();
        sendProgress(progress::kFinished);
        endJob();
        notice(m_leftCancelledPages ? tr("取消扫描，已扫描的页面将与下一次任务一起处理")
                                    : progress::cancelled());
        return;
    }
    reportOutcome();
    processPageFiles();
    finishBatch();
}

void Widget::processPageFiles()
{
    const QStringList files = pageFiles();
    if (files.isEmpty())
        return;
    if (!m_preview) {
        const SaveFolder folder = prepareSaveFolder(workControls().saveFolder());
        if (!folder.good()) {
            m_notices.addFault(tr("%1，已扫描的页面已保留").arg(folder.problem));
            return;
        }
    }
    PageBatch batch;
    batch.announce = [this](int number) { sendProgress(tr("正在处理第%1张图像").arg(number)); };
    batch.options = [this] { return workControls().pageOptions(m_preview); };
    batch.page = [this](const QString& page) { return imageProcess(QFile::encodeName(page).constData()); };
    batch.sheet = [this](const QString& front, const QString& back) {
        return imageAppendProcess(QFile::encodeName(front).constData(), QFile::encodeName(back).constData());
    };
    batch.take = [this](const PageResult& result, const QStringList& sources) {
        takeResult(result, sources);
    };
    if (const int left = batch.run(files, *this); left > 0) {
        m_leftCancelledPages = true;
        m_notices.addProblem(tr("取消扫描，%1 页未处理，将与下一次任务一起处理").arg(left));
    }
}

void Widget::takeResult(const PageResult& result, const QStringList& sources)
{
    m_notices.addSaved(result.files);
    if (result.blank)
        m_notices.addBlank();
    for (const QString& problem : result.problems)
        m_notices.addProblem(problem);
    if (!result.sourceDone)
        return;
    for (const QString& source : sources)
        QFile::remove(source);
}

void Widget::finishBatch()
{
    const bool preview = m_preview;
    if (preview)
        showPreviews();
    else
        renameSaved(workControls().groups.scan);
    const FunctionControls& function = workControls();
    const NamingRules rules = function.namingRules();
    if (!preview && rules.finishStartApp && !m_notices.saved().isEmpty()) {
        const QFileInfo last(m_notices.saved().last());
        if (!m_library.imageStartExe(
                last.path() + QLatin1Char('/'), QFile::encodeName(last.completeBaseName()).constData(),
                last.suffix().toLatin1().constData(), rules.appName.toUtf8().constData()))
            m_notices.addProblem(tr("无法启动程序 %1").arg(rules.appName));
    }
    showSummary(preview ? m_notices.previewSummary(m_notices.saved().size())
                        : m_notices.summary(function.saveFolder()));
    sendProgress(progress::kFinished);
    endJob();
}

void Widget::showPreviews()
{
    const auto group = std::make_shared<PreviewGroup>();
    for (const QString& path : m_notices.saved()) {
        qDebug().noquote() << "preview" << path;
        auto* viewer = new PreviewWidget(group);
        viewer->setPreviewFilePthAndShow(path);
        QFile::remove(path);
        qDebug() << " remove ";
    }
}

void Widget::endJob()
{
    m_jobRunning = false;
    m_keys->getAndSetFunctionSlot(ButtonWatch::Idle);
    m_maintenance->setScanRunning(false);
    m_preview = false;
    m_startingPanel = nullptr;
    m_batchPage = nullptr;
    for (TemplatePage* page : {m_scanPage.get(), m_filePage.get()}) {
        page->pdf->jobEnded();
        page->ocr->jobEnded();
    }
    ui->progressBar->hide();
    ui->cancelPushButton->setEnabled(true);
    ui->applyPushButton->setEnabled(true);
    setScanControls(true);
}

void Widget::cancelBatch()
{
    cancelflag::set();
    showCancelling();
}

void Widget::showCancelling()
{
    ui->cancelPushButton->setEnabled(false);
    ui->statusLabel->setText(tr("正在取消…"));
}

void Widget::sendProgress(const QString& text)
{
    emit sendProcessMessg(text);
}

void Widget::showProgress(const QString& text)
{
    qInfo().noquote() << "progress:" << text;
    if (!progress::isControlWord(text))
        ui->statusLabel->setText(text);
}

// The panels' progress: control words switch the controls that start a scan.
void Widget::scanProcressSlot(const QString& text)
{
    if (text == progress::kFinished) {
        endJob();
    } else if (text == progress::kEnableAll || text == progress::kDisableAll) {
        setScanControls(text == progress::kEnableAll);
        ui->applyPushButton->setEnabled(text == progress::kEnableAll);
    } else if (text == progress::kPreview) {
        ui->scanButton->setEnabled(false);
    }
}

void Widget::setScanControls(bool enabled)
{
    ui->scanButton->setEnabled(enabled);
    ui->previewPushButton_5->setEnabled(enabled);
    for (TemplatePage* page : {m_scanPage.get(), m_filePage.get()})
        page->pdf->setPreviewEnabled(enabled);
}
