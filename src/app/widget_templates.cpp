// SPDX-License-Identifier: GPL-3.0-or-later
// Templates: saved, loaded and deleted by name, handed on as files.
#include "app/widget.h"

#include "app/settingscompare.h"
#include "app/templatemark.h"
#include "config/factory.h"
#include "config/installroot.h"
#include "config/keys.h"
#include "config/paths.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "config/templatearchive.h"
#include "config/templates.h"
#include "forms/questionbox.h"
#include "forms/templatename.h"
#include "forms/wholesetpanel.h"
#include "ui_widget.h"

#include <QDebug>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>

void Widget::createTemplateControls()
{
    auto* menu = new QMenu(ui->templateMenuBtn);
    m_importAction = menu->addAction(tr("导入模板(&I)..."), this, &Widget::importTemplate);
    m_exportAction = menu->addAction(tr("导出模板(&E)..."), this, &Widget::exportTemplate);
    menu->addSeparator();
    m_factoryAction = menu->addAction(tr("恢复默认模板(&R)..."), this, &Widget::restoreFactoryTemplate);
    ui->templateMenuBtn->setMenu(menu);
    m_mark = new TemplateMark(this, ui->templateComboBox,
                              [this](const QString& name) { return differsFromTemplate(name); });
}

// The template that the settings name is loaded before anything is read; without one the list only shows the
// default. Nothing is asked at start.
void Widget::selectStartTemplate()
{
    const auto file = openMainSettings();
    if (file->contains(QLatin1String(keys::paraTemplete))) {
        const int index = qMin(readInt(*file, keys::paraTemplete), ui->templateComboBox->count() - 1);
        ui->templateComboBox->setCurrentIndex(index);
        const QString name = ui->templateComboBox->currentText();
        if (templateState(name) == TemplateState::Good && loadTemplate(name))
            m_template = name;
        else
            qWarning() << "the template to start with cannot be loaded:" << name;
    }
    qDebug().noquote() << ui->templateComboBox->currentText();
}

void Widget::updateTemplete(const QString& current)
{
    ui->templateComboBox->clear();
    const QStringList names = templateNames();
    qDebug() << "scanModeFile files--lg" << names.size();
    for (const QString& name : names) {
        qDebug().noquote() << "scanModeFile conf _" << name << "_ --lg";
        ui->templateComboBox->addItem(name);
    }
    currentTemplete(current);
    qDebug().noquote() << "currentText is " << ui->templateComboBox->currentText();
    qDebug() << "now is update Templete";
}

void Widget::currentTemplete(const QString& name)
{
    for (int i = 0; i < ui->templateComboBox->count(); ++i) {
        qDebug() << "i is " << i;
        if (ui->templateComboBox->itemText(i) != name)
            continue;
        ui->templateComboBox->setCurrentIndex(i);
        return;
    }
}

// Controls of functions that are not selected belong to the snapshot as well; what applies to a scan follows
// from the selected one.
void Widget::newTemplate(const QString& name)
{
    if (!isSafeTemplateName(name)) {
        notice(tr("模板名称不能包含空格或特殊字符"));
        return;
    }
    ui->templateComboBox->addItem(name);
    qDebug().noquote() << "add " + name + "--lg";
    qDebug() << "combo count is " << ui->templateComboBox->count();
    currentTemplete(name);
    qDebug().noquote() << "combo text1 is " << ui->templateComboBox->currentText();
    const QString former = m_template;
    m_template = name;
    const bool saved = m_scanPage->writeAll() && m_filePage->writeAll();
    applySettings();
    qDebug().noquote() << "combo text2 is " << ui->templateComboBox->currentText();
    if (saved && templateComplete(name)) {
        showStatus(tr("已保存模板“%1”").arg(name));
    } else { // the user has been told; the list shows what there is
        m_template = former;
        updateTemplete(former);
    }
    m_mark->look();
}

void Widget::on_saveBtn_clicked()
{
    qDebug() << "now is save Templete";
    if (refuseDuringJob())
        return;
    askTemplateName(QString(), &Widget::newTemplate);
}

void Widget::askTemplateName(const QString& proposal, void (Widget::*then)(const QString&))
{
    const auto exists = [this](const QString& name) {
        return ui->templateComboBox->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive) >= 0 ||
               templateComplete(name);
    };
    auto* dialog = new TemplateName(proposal, exists, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &TemplateName::sendAddTempleteMessage, this, then);
    dialog->show();
}

void Widget::on_loadBtn_clicked()
{
    const QString name = ui->templateComboBox->currentText();
    if (name.isEmpty() || refuseDuringJob())
        return;
    const TemplateState state = templateState(name);
    if (state != TemplateState::Good) {
        const QString fault = state == TemplateState::Missing
                                  ? tr("模板“%1”的文件不存在（名称含“_”的模板在列表中只显示“_”之前的部分）。")
                                  : tr("模板“%1”的文件已损坏。");
        if (!questionbox::ask(this, fault.arg(name) + tr("仍要载入吗？载入后所有设置将恢复为空或默认的值。")))
            return;
    }
    loadSelected();
}

// Replaces the live files by the selected template's and shows them in every control.
void Widget::loadSelected()
{
    const QString name = ui->templateComboBox->currentText();
    const bool complete = templateComplete(name);
    const bool loaded = loadTemplate(name);
    qDebug() << "now is loadBtn exec ";
    qDebug().noquote() << "载入模板1";
    if (loaded || !complete)
        m_template = name;
    restoreShellState();
    scanReadIni();
    m_wholeSet->readIni();
    qDebug() << "now is load Templete";
    if (loaded)
        showStatus(tr("已载入模板“%1”").arg(name));
    else if (complete)
        notice(tr("模板“%1”无法载入，请检查磁盘空间和 %2 的写入权限").arg(name, installRoot()));
    m_mark->look();
}

void Widget::on_delBtn_clicked()
{
    const QString name = ui->templateComboBox->currentText();
    if (name.isEmpty() || refuseDuringJob())
        return;
    if (name == QLatin1String(defaultTemplate)) {
        questionbox::inform(this, tr("请勿删除默认模板"));
        return;
    }
    if (!removeTemplate(name) || templateComplete(name)) {
        notice(tr("模板“%1”无法删除，请检查 %2 的写入权限").arg(name, paths::templateFolder()));
        return;
    }
    const QStringList left = templateNames();
    updateTemplete(m_template != name && left.contains(m_template) ? m_template
                                                                   : QLatin1String(defaultTemplate));
    if (templateState(ui->templateComboBox->currentText()) != TemplateState::Good) { // nothing is asked here
        notice(tr("已删除模板“%1”，当前设置保持不变").arg(name));
        return;
    }
    loadSelected();
    showStatus(left.contains(name) ? tr("“%1”来自名称含“_”的模板，无法在列表中删除").arg(name)
                                   : tr("已删除模板“%1”，载入“%2”").arg(name, m_template));
}

void Widget::exportTemplate()
{
    const QString name = ui->templateComboBox->currentText();
    const TemplateArchive archive = TemplateArchive::ofTemplate(name);
    if (!archive.problem().isEmpty()) {
        notice(tr("模板“%1”无法导出：%2").arg(name, archive.problem()));
        return;
    }
    const QString file = QFileDialog::getSaveFileName(
        this, tr("导出模板"), QDir::home().filePath(name + QLatin1String(".zip")), tr("模板文件 (*.zip)"));
    if (file.isEmpty())
        return;
    const QString target = QFileInfo(file).suffix().isEmpty() ? file + QLatin1String(".zip") : file;
    if (archive.write(target))
        showStatus(tr("模板“%1”已导出到 %2").arg(name, target));
    else
        notice(tr("无法写入 %1，请检查磁盘空间和写入权限").arg(target));
}

void Widget::importTemplate()
{
    const QString file =
        QFileDialog::getOpenFileName(this, tr("导入模板"), QDir::homePath(), tr("模板文件 (*.zip)"));
    if (!file.isEmpty())
        importTemplateFile(file);
}

// Programs that the template would start are shown before it is let in: the file may come from anywhere.
void Widget::importTemplateFile(const QString& file)
{
    const TemplateArchive archive = TemplateArchive::read(file);
    if (!archive.problem().isEmpty()) {
        notice(tr("无法导入 %1：%2").arg(QFileInfo(file).fileName(), archive.problem()));
        return;
    }
    const QStringList programs = archive.programs();
    if (!programs.isEmpty() &&
        !questionbox::ask(this, tr("此模板在扫描后可能启动下列程序：\n%1\n\n确定要导入吗？")
                                    .arg(programs.mid(0, 20).join(QLatin1Char('\n')))))
        return;
    m_imported = std::make_unique<TemplateArchive>(archive);
    askTemplateName(archive.name(), &Widget::storeImported);
}

void Widget::storeImported(const QString& name)
{
    if (!m_imported || !isSafeTemplateName(name))
        return;
    if (putTemplate(name, m_imported->mainFile(), m_imported->pathFile())) {
        updateTemplete(name);
        showStatus(tr("已导入模板“%1”，点“载入”使用它的设置").arg(name));
    } else {
        notice(tr("无法写入 %1，请检查磁盘空间和写入权限").arg(paths::templateFolder()));
    }
    m_imported.reset();
    m_mark->look();
}

void Widget::restoreFactoryTemplate()
{
    if (refuseDuringJob() ||
        !questionbox::ask(this,
                          tr("默认模板“%1”将恢复为出厂设置并载入，当前未保存到其他模板的设置会丢失。继续吗？")
                              .arg(QLatin1String(defaultTemplate))))
        return;
    if (!restoreDefaultTemplate()) {
        notice(tr("无法写入 %1，请检查磁盘空间和写入权限").arg(paths::templateFolder()));
        return;
    }
    updateTemplete(QLatin1String(defaultTemplate));
    loadSelected();
}

// The pages that are being processed read the settings afresh: they must not change under them.
bool Widget::refuseDuringJob()
{
    if (m_jobRunning)
        notice(tr("扫描任务正在进行，请等任务结束后再使用模板"));
    return m_jobRunning;
}

bool Widget::differsFromTemplate(const QString& name) const
{
    if (templateState(name) != TemplateState::Good)
        return true;
    QSettings main(templateMainFile(name), QSettings::IniFormat);
    QSettings path(templatePathFile(name), QSettings::IniFormat);
    main.setIniCodec("UTF-8");
    path.setIniCodec("UTF-8");
    const auto differs = [&main](const char* key, const QComboBox* functions) {
        return qMin(readInt(main, key), functions->count() - 1) != functions->currentIndex();
    };
    return (readInt(main, keys::modeBtn) == 0) != selectedPage().isScanPage ||
           differs(keys::ScanModel, ui->templetBtncomboBox_3) ||
           differs(keys::FileModel, ui->templetBtncomboBox) || !m_scanPage->matches(main, path) ||
           !m_filePage->matches(main, path) ||
           !sameBehindTheDialogs(*openMainSettings(), *openPathSettings(), main, path);
}
