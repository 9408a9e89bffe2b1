// SPDX-License-Identifier: GPL-3.0-or-later
// What the window does with its document: opening, faults, passwords, searching, printing.
#include "noticebar.h"
#include "outlinepane.h"
#include "pageview.h"
#include "passworddialog.h"
#include "readeractions.h"
#include "readerwindow.h"
#include "searchbar.h"
#include "thumbnails.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrintDialog>
#include <QProgressDialog>
#include <QStackedWidget>
#include <QTabWidget>

namespace reader {
namespace {

constexpr int kPasswordTries = 3;

} // namespace

void ReaderWindow::chooseFile()
{
    const QString file = QFileDialog::getOpenFileName(this, tr("打开 PDF 文件"), m_folder,
                                                      tr("PDF 文件 (*.pdf *.PDF);;所有文件 (*)"));
    if (!file.isEmpty())
        open(file);
}

void ReaderWindow::open(const QString& file)
{
    m_file = QFileInfo(file).absoluteFilePath();
    m_folder = QFileInfo(m_file).absolutePath();
    m_password.clear();
    m_returnTo = 0;
    startOpening({});
}

void ReaderWindow::reload()
{
    m_returnTo = m_view->currentPage();
    startOpening(m_password);
}

void ReaderWindow::startOpening(const QString& password)
{
    delete m_passwordDialog;
    m_triesLeft = kPasswordTries;
    m_notice->hide();
    m_watch.watch(m_file);
    m_messageTitle->setText(tr("正在打开…"));
    m_messageText->setText(m_file);
    m_stack->setCurrentWidget(m_message);
    m_info = {};
    m_hits.clear();
    m_search = 0;
    m_view->clear();
    m_thumbnails->setDocument(0);
    m_actions->setDocument(false, false, false);
    setWindowTitle(tr("%1 - PDF 阅读器").arg(QFileInfo(m_file).fileName()));
    m_password = password;
    m_opening = m_worker.open(m_file, password);
}

void ReaderWindow::showDocument(int opening, const DocumentInfo& info)
{
    if (opening != m_opening)
        return;
    if (m_passwordDialog)
        m_passwordDialog->accept();
    m_info = info;
    m_actions->setDocument(true, info.mayCopy, info.mayPrint);
    const int tab = m_side->indexOf(m_outline);
    if (info.outline.empty() && tab >= 0)
        m_side->removeTab(tab);
    if (!info.outline.empty() && tab < 0)
        m_side->addTab(m_outline, tr("目录"));
    m_outline->setOutline(info.outline);
    m_thumbnails->setDocument(info.pages.size());
    m_side->setVisible(m_actions->sidePane->isChecked() && !isFullScreen());
    m_stack->setCurrentWidget(m_view);
    m_view->setDocument(info);
    m_view->goTo(m_returnTo);
    m_actions->setPage(m_view->currentPage(), m_view->pageCount());
    m_actions->setZoom(m_view->zoomFactor(), m_view->zoom().mode == ZoomMode::Width,
                       m_view->zoom().mode == ZoomMode::Page);
    m_view->setFocus();
    if (info.repaired)
        m_notice->tell(tr("文件有损坏，已尽量修复；内容可能不完整。"));
    if (m_searchBar->isVisible())
        startSearch(m_searchBar->wanted());
}

void ReaderWindow::askPassword(int opening)
{
    if (opening != m_opening)
        return;
    if (!m_passwordDialog) {
        m_passwordDialog = new PasswordDialog(QFileInfo(m_file).fileName(), this);
        m_passwordDialog->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_passwordDialog, &PasswordDialog::entered, this, [this](const QString& password) {
            --m_triesLeft;
            m_password = password;
            m_opening = m_worker.open(m_file, password);
        });
        connect(m_passwordDialog, &QDialog::rejected, this, [this] {
            showFailure(m_triesLeft > 0 ? tr("文件已加密，没有输入密码。") : tr("三次密码都不正确。"));
        });
        m_passwordDialog->open();
    } else if (m_triesLeft > 0) {
        m_passwordDialog->tellWrong(m_triesLeft);
    } else {
        m_passwordDialog->reject();
    }
}

void ReaderWindow::showFailure(const QString& reason)
{
    m_opening = 0; // an answer that is still on its way counts no more
    if (m_passwordDialog) {
        m_passwordDialog->disconnect(this);
        m_passwordDialog->hide();
        m_passwordDialog->deleteLater();
    }
    m_side->hide();
    m_searchBar->close();
    m_messageTitle->setText(tr("无法打开文件“%1”").arg(QFileInfo(m_file).fileName()));
    m_messageText->setText(reason + '\n' + m_file);
    m_stack->setCurrentWidget(m_message);
    m_actions->reload->setEnabled(true);
}

void ReaderWindow::fileChanged()
{
    m_notice->tell(tr("文件已被更改。"), tr("重新载入"));
}

void ReaderWindow::startSearch(const QString& wanted)
{
    m_hits.clear();
    m_searchedPages = 0;
    m_searchFrom = m_view->currentPage();
    if (!m_info.pages.isEmpty())
        m_search = m_worker.search(wanted, m_searchFrom);
    m_view->repaintHits();
    updateSearchState();
}

// The worker begins at the page that is shown: the first place it finds is the next one for the reader.
void ReaderWindow::takeHits(int search, const QVector<SearchHit>& hits, int pagesDone)
{
    if (search != m_search)
        return;
    m_searchedPages = pagesDone;
    m_hits.add(hits);
    if (m_hits.current() == nullptr && m_hits.count() > 0) {
        m_hits.startAt(m_searchFrom);
        m_view->showCurrentHit();
    }
    m_view->repaintHits();
    updateSearchState();
}

void ReaderWindow::endSearch(int search, bool complete)
{
    if (search != m_search)
        return;
    m_searchedPages = m_info.pages.size();
    updateSearchState(complete);
}

void ReaderWindow::stepSearch(bool forward)
{
    if (!m_searchBar->isVisible())
        m_searchBar->open();
    else if (m_hits.step(forward))
        m_view->showCurrentHit();
    updateSearchState();
}

void ReaderWindow::updateSearchState(bool complete)
{
    m_searchBar->setState(m_hits.number(), m_hits.count(), m_searchedPages, m_info.pages.size(), complete);
}

void ReaderWindow::choosePrinting()
{
    PrintOrder order;
    order.printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    order.printer->setDocName(QFileInfo(m_file).fileName());
    QPrintDialog dialog(order.printer.get(), this);
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage);
    dialog.setMinMax(1, m_view->pageCount());
    auto* fit = new QCheckBox(tr("缩放到纸张大小(&Z)"));
    fit->setWindowTitle(tr("页面"));
    fit->setChecked(true);
    dialog.setOptionTabs({fit});
    if (dialog.exec() != QDialog::Accepted || m_info.pages.isEmpty())
        return;
    order.fitToPaper = fit->isChecked();
    order.pages = pagesToPrint(*order.printer, m_view->pageCount(), m_view->currentPage());
    printTo(order);
}

void ReaderWindow::printTo(const PrintOrder& order)
{
    auto* progress = new QProgressDialog(tr("正在打印…"), tr("取消"), 0, order.pages.size(), this);
    m_printProgress = progress;
    progress->setAttribute(Qt::WA_DeleteOnClose);
    progress->setWindowTitle(tr("打印"));
    progress->setWindowModality(Qt::WindowModal);
    progress->setAutoClose(false);
    progress->setAutoReset(false);
    progress->setMinimumDuration(0);
    progress->setValue(0);
    connect(progress, &QProgressDialog::canceled, &m_worker, &DocumentWorker::cancelPrint);
    connect(&m_worker, &DocumentWorker::printProgress, progress, [progress](int done, int total) {
        progress->setValue(done);
        progress->setLabelText(tr("正在打印第 %1 页，共 %2 页").arg(std::min(done + 1, total)).arg(total));
    });
    connect(&m_worker, &DocumentWorker::printEnded, progress, [this, progress](const QString& problem) {
        progress->close();
        if (problem.isEmpty())
            return;
        auto* box = new QMessageBox(QMessageBox::Warning, tr("打印"), problem, QMessageBox::Ok, this);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    });
    m_worker.print(order);
}

} // namespace reader
