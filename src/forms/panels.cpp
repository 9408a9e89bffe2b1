// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/panels.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLabel>
#include <QTreeView>
#include <QUrl>
#include <QVBoxLayout>

namespace {

enum Column
{
    Name,
    Size,
    Type,
    Date
};

} // namespace

FolderPanel::FolderPanel(const QString& title, const QString& description, QWidget* parent)
    : FunctionPanel(title, description, parent), m_model(new QFileSystemModel(this)),
      m_files(new QTreeView(this))
{
    m_model->setFilter(QDir::Files | QDir::NoDotAndDotDot);
    m_files->setModel(m_model);
    m_files->setRootIsDecorated(false);
    m_files->setUniformRowHeights(true);
    m_files->setSortingEnabled(true);
    m_files->sortByColumn(Date, Qt::DescendingOrder);
    m_files->setColumnHidden(Type, true);
    m_files->header()->setStretchLastSection(false);
    m_files->header()->setSectionResizeMode(Name, QHeaderView::Stretch);
    m_files->setAccessibleName(tr("已保存的文件"));
    m_files->hide();
    connect(m_files, &QTreeView::activated, this, &FolderPanel::openFile);

    auto* caption = new QLabel(tr("已保存的文件(&N):"), this);
    caption->setBuddy(m_files);
    auto* later = new QLabel(tr("此功能目前与扫描相同，图像保存到文件夹；其余设置将在后续版本提供。"), this);
    later->setWordWrap(true);
    addContent(later);
    addContent(caption);
    addContent(m_files, 1);
}

void FolderPanel::setFolder(const QString& folder)
{
    const bool present = !folder.isEmpty() && QDir(folder).exists();
    m_files->setVisible(present);
    if (present)
        m_files->setRootIndex(m_model->setRootPath(folder));
}

void FolderPanel::openFile(const QModelIndex& index)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(m_model->filePath(index)));
}

copyPanel::copyPanel(QWidget* parent)
    : FolderPanel(QStringLiteral("Copy  Utility"), tr("扫描文件或图片，接着从您的打印机复印出来。"), parent)
{
}

EmailPanel::EmailPanel(QWidget* parent)
    : FolderPanel(QStringLiteral("E-Mail  Utility"),
                  tr("扫描文件或图片，接着用您预设的电子邮件软件传送出去。"), parent)
{
}

filepanel::filepanel(QWidget* parent)
    : FolderPanel(QStringLiteral("File  Utility"), tr("扫描并保存图像到您的存贮装置。"), parent)
{
}

ftppanel::ftppanel(QWidget* parent)
    : FolderPanel(QStringLiteral("FTP  Utility"), tr("扫描文件并上传至FTP服务器。"), parent)
{
}
