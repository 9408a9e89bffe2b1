// SPDX-License-Identifier: GPL-3.0-or-later
// Settings and the dialogs that edit them.
#include "app/widget.h"

#include "app/globals.h"
#include "app/manual.h"
#include "app/templatemark.h"
#include "config/applicationlist.h"
#include "config/factory.h"
#include "config/installroot.h"
#include "config/keys.h"
#include "config/paths.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "config/templates.h"
#include "device/statefile.h"
#include "device/stateinfopanel.h"
#include "device/statetexts.h"
#include "forms/append.h"
#include "forms/panels.h"
#include "forms/questionbox.h"
#include "forms/scanpagelogic.h"
#include "forms/wholesetpanel.h"
#include "ocr/ocrpanel.h"
#include "pdf/pdfpanel.h"
#include "ui_widget.h"

#include <QApplication>
#include <QDebug>
#include <QEventLoop>

void Widget::initializeIni()
{
    ensureFactorySettings();
}

void Widget::setDefaultValue()
{
    TemplatePage& page = selectedPage();
    const FunctionGroups& groups = page.controlsOf(page.function()).groups;
    if (page.function() == Function::Pdf)
        page.pdf->setDefaultValue();
    else if (page.function() == Function::Ocr)
        page.ocr->ocrSetDefaultValue();
    else if (FolderPanel* panel = page.folderPanel(page.function()))
        panel->setDefaultValue();
    else
        page.logic->setDefaults();
    const auto pathFile = openPathSettings();
    pathFile->setValue(groups.path + QLatin1Char('/') + QLatin1String(keys::savepath), defaultSaveFolder());
    const auto file = openMainSettings();
    file->setValue(groups.scan + QLatin1Char('/') + QLatin1String(keys::saveFile), 0);
    if (!saveSettings(*pathFile) || !saveSettings(*file))
        notice(tr("设置无法保存，请检查 %1 的写入权限").arg(installRoot()));
}

void Widget::scanWriteIni()
{
    if (!m_scanPage->writeIni())
        notice(tr("设置无法保存，请检查 %1 的写入权限").arg(installRoot()));
}

void Widget::scanReadIni()
{
    m_scanPage->readIni();
    m_filePage->readIni();
    m_scanPage->pdf->scanReadIni();
    m_filePage->pdf->fileReadIni();
    m_scanPage->ocr->scanReadIni();
    m_filePage->ocr->fileReadIni();
    m_scanPage->readFolderPanels();
    m_filePage->readFolderPanels();
}

void Widget::applySettings()
{
    qDebug() << "now is apply setting";
    TemplatePage& page = selectedPage();
    bool saved = true;
    {
        const auto file = openMainSettings();
        file->setValue(QLatin1String(keys::ScanModel), ui->templetBtncomboBox_3->currentIndex());
        file->setValue(QLatin1String(keys::FileModel), ui->templetBtncomboBox->currentIndex());
        file->setValue(QLatin1String(keys::modeBtn), page.isScanPage ? 0 : 1);
        saved = saveSettings(*file);
    }
    saved = page.writeFunction(page.function()) && saved;
    saved = storeTemplate(m_template) && saved;
    if (!saved)
        notice(tr("设置无法保存，请检查 %1 的写入权限").arg(installRoot()));
    m_mark->lookSoon();
}

void Widget::on_wholesetPushButton_clicked()
{
    m_wholeSet->readIni();
    m_wholeSet->exec();
}

void Widget::on_applyPushButton_clicked()
{
    applySettings();
    ui->applyPushButton->setEnabled(false);
    ui->applyPushButton->setEnabled(true);
}

void Widget::on_confirmPushButton_clicked()
{
    applySettings();
    hideOrMinimise();
}

void Widget::on_cancelPushButton_clicked()
{
    if (m_jobRunning) {
        cancelBatch();
        return;
    }
    restoreShellState();
    scanReadIni();
    hideOrMinimise();
}

void Widget::on_defaultvaluePushButton_5_clicked()
{
    setDefaultValue();
}

// The viewer runs in a child while events go on; meanwhile a second click does nothing.
void Widget::on_helpPushButton_clicked()
{
    if (m_manual->isOpen() || !m_manual->open())
        return;
    QEventLoop loop;
    connect(m_manual, &Manual::closed, &loop, &QEventLoop::quit);
    loop.exec();
}

void Widget::tellHelpProblem(const QString& problem)
{
    if (QWidget* dialog = QApplication::activeModalWidget()) // it hides the status line
        questionbox::inform(dialog, problem);
    else
        notice(problem);
}

void Widget::ScannerStateSlots()
{
    ScannerStateCheck();
}

// A status window with the last state that the scanning side recorded.
void Widget::ScannerStateCheck()
{
    const QString text = state::text(state::read());
    auto* panel = new stateInfoPanel(this);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setWindowModality(Qt::ApplicationModal);
    panel->setShowString(text.isEmpty() ? tr("扫描仪空闲") : text);
    panel->show();
}

void Widget::setRotateState()
{
    selectedPage().logic->setRotateState();
}

void Widget::setAutoRotateState()
{
    selectedPage().logic->setAutoRotateState();
}

void Widget::doubleRotateState()
{
    selectedPage().logic->doubleRotateState();
}

void Widget::cancelAutoRotateState()
{
    selectedPage().logic->cancelAutoRotateState();
}

void Widget::addApplication(TemplatePage& page, const QString& text, const QString& command)
{
    page.applications.push_back({text, command});
    page.showApplications(static_cast<int>(page.applications.size()) - 1);
    (page.isScanPage ? scanAppendApp : fileAppendApp) = text;
}

void Widget::scanAddApp(const QString& text, const QString& command)
{
    addApplication(*m_scanPage, text, command);
}

void Widget::fileAddApp(const QString& text, const QString& command)
{
    addApplication(*m_filePage, text, command);
}

void Widget::editApplication(TemplatePage& page, bool isNew)
{
    const int index = page.controls.application->currentIndex();
    if (!isNew && index < 0)
        return;
    AppEntry entry;
    QStringList others;
    for (int i = 0; i < static_cast<int>(page.applications.size()); ++i) {
        const AppEntry& other = page.applications[static_cast<std::size_t>(i)];
        if (!isNew && i == index)
            entry = other;
        else
            others << other.text;
    }
    append dialog(entry, others, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    entry = dialog.entry();
    if (isNew) {
        page.isScanPage ? scanAddApp(entry.text, entry.command) : fileAddApp(entry.text, entry.command);
        return;
    }
    page.applications[static_cast<std::size_t>(index)] = entry;
    page.showApplications(index);
}

void Widget::deleteApplication(TemplatePage& page)
{
    const int index = page.controls.application->currentIndex();
    if (index < 0)
        return;
    page.applications.erase(page.applications.begin() + index);
    countDeletedApplication();
    page.showApplications(qMin(index, static_cast<int>(page.applications.size()) - 1));
}
