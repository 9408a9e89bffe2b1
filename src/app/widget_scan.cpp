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
    if (m_jobRunning)
        return;
    if (m_maintenance->isExchanging()) {
        notice(tr("正在维护扫描仪，请稍候再扫描"));
        return;
    }
    m_jobRunning = true;
    m_batchPage = &page;
    m_notices.clear();
    setScanControls(false);
    m_maintenance->setScanRunning(true);              // before the job: an exchange's end must not end it
    m_keys->getAndSetFunctionSlot(ButtonWatch::Lent); // a dialog may come first: no status window before it
    sendProgress(tr("正在准备扫描"));
    if (!confirmPrefix(page)) {
        sendProgress(progress::kFinished);
        endJob();
        ui->statusLabel->setText(tr("取消扫描"));
        return;
    }
    state::write(state::Preparing); // the watcher must not see how the batch before ended
    m_keys->getAndSetFunctionSlot(ButtonWatch::Job);
    applySettings();
    prepareThread();
    dropReceivers();
    switch (function) {
    case Function::Ocr:
        page.ocr->scanButtonClicked();
        return;
    case Function::Pdf:
        page.pdf->scanButtonClicked();
        return;
    default:
        startThread(page);
        return;
    }
}

void Widget::prepareThread()
{
    if (scan)
        return;
    m_thread = new scanThread(this);
    connect(m_thread, &QThread::finished, this, &Widget::scanThreadEnded);
    stateInfoPanel* panel = m_keys->panel();
    connect(m_thread, &scanThread::nextPageAsked, panel, &stateInfoPanel::askNextPage);
    connect(panel, &stateInfoPanel::nextPageAnswered, m_thread, &scanThread::answerNextPage,
            Qt::DirectConnection);
    connect(m_thread, &scanThread::pageStarted, this,
            [this](int page) { sendProgress(tr("正在扫描第%1张图像").arg(page)); });
    scan = 1;
}

// One receiver at most is connected to the end of a scan.
void Widget::dropReceivers()
{
    if (pdfConnection)
        qDebug() << "pdfConnection is true disconnect scanImageConvertPDFslots";
    if (imageConnection) {
        qDebug() << "imageConnection is true disconnect scanImageConvertSlot";
        disconnect(m_thread, &scanThread::scanOverSignals, this, &Widget::scanImageConvertSlot);
    }
    if (ocrConnection)
        qDebug() << "ocrConnection is true disconnect scanImageConvertSlot";
    pdfConnection = 0;
    imageConnection = 0;
    ocrConnection = 0;
}

// Pages of a cancelled batch go with the next one; what a crash or a fault left is put aside.
void Widget::rescueLeftovers()
{
    if (m_leftCancelledPages) {
        carryOverPages();
        m_leftCancelledPages = false;
        return;
    }
    const QString folder = keepLeftovers();
    if (folder.isEmpty())
        return;
    qInfo().noquote() << "kept:" << folder;
    notice(tr("上次未完成的页面已移至 %1").arg(folder));
}

bool Widget::confirmPrefix(TemplatePage& page)
{
    const auto file = openMainSettings();
    GroupScope scope(*file, page.scanGroup);
    const NamingRules rules = readNamingRules(*file);
    if (!rules.askBefore || !rules.userDefined || m_preview)
        return true;
    PrefixDialog dialog(PrefixDialog::Moment::BeforeBatch, rules, this);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    file->setValue(QLatin1String(keys::name), dialog.prefix());
    return saveSettings(*file);
}

void Widget::startThread(TemplatePage& page)
{
    rescueLeftovers();
    if (!imageConnection) {
        connect(m_thread, &scanThread::scanOverSignals, this, &Widget::scanImageConvertSlot,
                Qt::QueuedConnection);
        qDebug() << "imageConnection is false disconnect scanImageConvertSlot";
        imageConnection = 1;
    }
    // Always colour, without rotation or borders: that is done in software afterwards.
    m_thread->setScanParamaters(page.logic->scanResolution(), page.logic->sourceNumber(),
                                page.logic->paperCode(), 2, 1, 2, 1, 1, 1, 1);
    m_thread->setContinuous(page.logic->isOn(page.controls.contiScan));
    m_thread->start(QThread::InheritPriority);
}

// Without a scanner the thread ends without announcing the end of a batch.
void Widget::scanThreadEnded()
{
    if (m_thread->outcome() != scanThread::Outcome::NoScanner || !m_jobRunning)
        return;
    m_notices.addFault(tr("未找到扫描仪"));
    sendProgress(progress::kFinished);
    endJob();
    notice(tr("未找到扫描仪"));
}

void Widget::reportOutcome()
{
    const int pages = m_thread->pagesScanned();
    const QString scanned = pages > 0 ? tr("，已扫描的 %1 页已处理").arg(pages) : QString();
    switch (m_thread->outcome()) {
    case scanThread::Outcome::OpenFailed:
    case scanThread::Outcome::IoError:
        m_notices.addFault(tr("扫描仪通信错误，请重启应用和扫描仪！") + scanned);
        break;
    case scanThread::Outcome::StillBusy:
        m_notices.addFault(tr("扫描仪忙，请关闭其他扫描软件，然后重试！"));
        break;
    case scanThread::Outcome::FeederEmpty:
        m_notices.addFault(tr("ADF进纸器无纸,请将稿件放入ADF进纸器！"));
        break;
    case scanThread::Outcome::Jam:
    case scanThread::Outcome::CoverOpen:
        m_notices.addFault(tr("进纸失败或纸张超长！请检查纸张状态后重试") + scanned);
        break;
    case scanThread::Outcome::WriteFailed:
        m_notices.addFault(tr("页面文件无法写入，请检查磁盘空间") + scanned);
        break;
    default:
        break;
    }
}

void Widget::scanImageConvertSlot()
{
    qDebug().noquote() << QString(84, QLatin1Char('*'));
    qDebug() << "scanIMage scan slot in";
    pumpEvents(kSettleMs);
    if (cancelflag::isSet()) {
        sendProgress(tr("取消扫描"));
        pumpEvents(kCancelledMs);
        m_leftCancelledPages = !pageFiles().isEmpty();
        sendProgress(progress::kFinished);
        endJob();
        notice(m_leftCancelledPages ? tr("取消扫描，已扫描的页面将与下一次任务一起处理") : tr("取消扫描"));
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
        const SaveFolder folder = prepareSaveFolder(workPage().saveFolder());
        if (!folder.good()) {
            m_notices.addFault(tr("%1，已扫描的页面已保留").arg(folder.problem));
            return;
        }
    }
    keepLastPage(files.last());
    ui->progressBar->setRange(0, files.size());
    ui->progressBar->show();
    for (int i = 0; i < files.size();) {
        if (cancelflag::isSet()) {
            m_leftCancelledPages = true;
            m_notices.addProblem(tr("取消扫描，%1 页未处理，将与下一次任务一起处理").arg(files.size() - i));
            break;
        }
        ui->progressBar->setValue(i);
        sendProgress(tr("正在处理第%1张图像").arg(i + 1));
        i += processNext(files, i);
    }
    ui->progressBar->hide();
}

// Processes the page at `index`, or the sheet beginning there; returns the number of files used.
int Widget::processNext(const QStringList& files, int index)
{
    const QString& front = files.at(index);
    // A page whose other side is missing (a bad page, a cancelled batch) goes alone: pairs must not shift.
    const int number = pageNumber(front);
    const bool paired =
        number % 2 == 1 && index + 1 < files.size() && pageNumber(files.at(index + 1)) == number + 1;
    if (!paired || !workPage().pageOptions(m_preview).merge) {
        takeResult(imageProcess(QFile::encodeName(front).constData()), {front});
        return 1;
    }
    const QString& back = files.at(index + 1);
    takeResult(imageAppendProcess(QFile::encodeName(front).constData(), QFile::encodeName(back).constData()),
               {front, back});
    return 2;
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
        renameSaved();
    TemplatePage& page = workPage();
    const NamingRules rules = [&] {
        const auto file = openMainSettings();
        GroupScope scope(*file, page.scanGroup);
        return readNamingRules(*file);
    }();
    if (!preview && rules.finishStartApp && !m_notices.saved().isEmpty()) {
        const QFileInfo last(m_notices.saved().last());
        if (!m_library.imageStartExe(
                last.path() + QLatin1Char('/'), QFile::encodeName(last.completeBaseName()).constData(),
                last.suffix().toLatin1().constData(), rules.appName.toUtf8().constData()))
            m_notices.addProblem(tr("无法启动程序 %1").arg(rules.appName));
    }
    const QString summary = preview ? tr("预览完成") : m_notices.summary(page.saveFolder());
    if (m_notices.hasProblems())
        notice(summary);
    else
        ui->statusLabel->setText(summary);
    ui->statusLabel->setToolTip(m_notices.hasProblems() ? m_notices.problems() : summary);
    qInfo().noquote() << "status:" << summary;
    sendProgress(progress::kFinished);
    endJob();
}

// After the batch: the files get the prefix that the user confirms.
void Widget::renameSaved()
{
    const auto file = openMainSettings();
    GroupScope scope(*file, workPage().scanGroup);
    const NamingRules rules = readNamingRules(*file);
    if (!rules.askAfter || !rules.userDefined || m_notices.saved().isEmpty())
        return;
    PrefixDialog dialog(PrefixDialog::Moment::AfterBatch, rules, this);
    if (dialog.exec() != QDialog::Accepted || dialog.prefix() == rules.prefix)
        return;
    QStringList renamed;
    for (const QString& path : m_notices.saved()) {
        const QFileInfo info(path);
        QString base = info.completeBaseName();
        base = base.contains(rules.prefix) && !rules.prefix.isEmpty()
                   ? base.replace(rules.prefix, dialog.prefix())
                   : dialog.prefix() + base;
        const QString target = info.path() + QLatin1Char('/') +
                               freeBaseName(info.path() + QLatin1Char('/'), base, info.suffix(), false) +
                               QLatin1Char('.') + info.suffix();
        const bool moved = QFile::rename(path, target);
        if (!moved)
            m_notices.addProblem(tr("无法重命名 %1").arg(path));
        renamed << (moved ? target : path);
    }
    m_notices.replaceSaved(renamed);
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
    m_batchPage = nullptr;
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
}
