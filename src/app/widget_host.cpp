// SPDX-License-Identifier: GPL-3.0-or-later
// What the window's own function and the panels share of a batch: thread, receivers, notices, progress.
#include "app/globals.h"
#include "app/widget.h"
#include "config/carryover.h"
#include "config/leftovers.h"
#include "config/progresswords.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "device/cancelflag.h"
#include "device/readbtn.h"
#include "device/scanthread.h"
#include "device/stateinfopanel.h"
#include "forms/prefixdialog.h"
#include "ocr/ocrpanel.h"
#include "output/naming.h"
#include "pdf/pdfpanel.h"
#include "ui_widget.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>

bool Widget::beginJob(const QWidget* panel, bool preview)
{
    if (m_jobRunning)
        return panel == m_startingPanel;
    TemplatePage& page = panel == m_filePage->pdf || panel == m_filePage->ocr ? *m_filePage : *m_scanPage;
    m_preview = preview;
    if (preview)
        ui->applyPushButton->setEnabled(false);
    if (beginJob(page, panel == page.ocr ? Function::Ocr : Function::Pdf))
        return true;
    m_preview = false; // refused
    ui->applyPushButton->setEnabled(true);
    return false;
}

bool Widget::makeThread()
{
    if (scan)
        return false;
    m_thread = new scanThread(this);
    connect(m_thread, &QThread::finished, this, &Widget::scanThreadEnded);
    stateInfoPanel* panel = m_keys->panel();
    connect(m_thread, &scanThread::nextPageAsked, panel, &stateInfoPanel::askNextPage);
    connect(panel, &stateInfoPanel::nextPageAnswered, m_thread, &scanThread::answerNextPage,
            Qt::DirectConnection);
    connect(m_thread, &scanThread::pageStarted, this,
            [this](int page) { sendProgress(tr("正在扫描第%1张图像").arg(page)); });
    scan = 1;
    return true;
}

// One receiver at most is connected to the end of a scan.
void Widget::dropReceivers()
{
    if (pdfConnection)
        qDebug() << "pdfConnection is true disconnect scanImageConvertPDFslots";
    if (imageConnection)
        qDebug() << "imageConnection is true disconnect scanImageConvertSlot";
    if (ocrConnection)
        qDebug() << "ocrConnection is true disconnect scanImageConvertSlot";
    disconnect(m_pageSlot);
    pdfConnection = 0;
    imageConnection = 0;
    ocrConnection = 0;
}

void Widget::connectPageSlot(Receiver receiver, std::function<void()> slot)
{
    dropReceivers();
    m_pageSlot = connect(m_thread, &scanThread::scanOverSignals, this, std::move(slot), Qt::QueuedConnection);
    (receiver == Receiver::Pdf ? pdfConnection : ocrConnection) = 1;
}

void Widget::connectOwnPageSlot()
{
    if (imageConnection)
        return;
    m_pageSlot = connect(m_thread, &scanThread::scanOverSignals, this, &Widget::scanImageConvertSlot,
                         Qt::QueuedConnection);
    qDebug() << "imageConnection is false disconnect scanImageConvertSlot";
    imageConnection = 1;
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

void Widget::startThread(const ScanParameters& p)
{
    m_startingPanel = nullptr;
    rescueLeftovers();
    m_thread->setScanParamaters(p.resolution, p.source, p.paper, p.imageType, p.colorMode, p.option9,
                                p.rotation, p.edgeFill, p.option12, p.option13);
    m_thread->setContinuous(p.continuous);
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

// After the batch: the files get the prefix that the user confirms.
void Widget::renameSaved(const QString& group)
{
    const auto file = openMainSettings();
    GroupScope scope(*file, group);
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

bool Widget::isCancelled() const
{
    return cancelflag::isSet();
}

void Widget::dropCancel()
{
    cancelflag::clear();
}

void Widget::leavePages()
{
    m_leftCancelledPages = true;
}

void Widget::showPages(int done, int count)
{
    ui->progressBar->setRange(0, count);
    ui->progressBar->setValue(done);
    ui->progressBar->setFormat(QStringLiteral("%1 / %2").arg(qMin(done + 1, count)).arg(count));
    ui->progressBar->setVisible(done < count);
}
