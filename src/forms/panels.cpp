// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/panels.h"

#include "config/settingtable.h"
#include "forms/copyfaxproperty.h"
#include "forms/dialogparts.h"
#include "forms/folderview.h"
#include "forms/functionform.h"
#include "forms/functionsettings.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

FolderPanel::FolderPanel(const Function& function, const QString& page, QWidget* parent)
    : QWidget(parent), m_tabs(new QTabWidget(this)), m_files(new FolderView(this)),
      m_form(new FunctionForm(this))
{
    setAccessibleName(function.name);
    setAccessibleDescription(function.description);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* hint = new QLabel(function.hint, this);
    dialogparts::styleHelp(hint);
    auto* filesPage = new QWidget(this);
    auto* filesLayout = new QVBoxLayout(filesPage);
    filesLayout->addWidget(hint);
    filesLayout->addWidget(m_files, 1);
    m_tabs->addTab(filesPage, tr("文件(&1)"));
    auto* formPage = new QWidget(this);
    auto* formLayout = new QVBoxLayout(formPage);
    formLayout->setContentsMargins(6, 4, 6, 4);
    formLayout->addWidget(m_form);
    m_tabs->addTab(formPage, tr("扫描设定(&Z)"));
    m_tabs->setAccessibleName(tr("文件与扫描设定"));
    layout->addWidget(m_tabs);
    setUpForm(page, function.group);
    connect(m_form, &FunctionForm::folderChanged, this, &FolderPanel::showFolder);
    connect(m_files, &FolderView::folderChosen, m_form, &FunctionForm::setFolder);
    readIni();
}

FolderPanel::~FolderPanel() = default;

void FolderPanel::setUpForm(const QString& page, const QString& group)
{
    auto* split = new QCheckBox(tr("拆分页面"), m_form);
    split->setObjectName(QStringLiteral("splitCheckBox"));
    split->setToolTip(tr("每一页切成两半，分别保存"));
    m_form->addToPages(split);
    m_form->showExtraCopies();
    ScanPageControls c = m_form->controls();
    c.split = split;
    c.fileType->addItems(
        {QStringLiteral("JPEG"), QStringLiteral("TIFF"), QStringLiteral("PNG"), QStringLiteral("BMP")});
    m_form->setUp(c, panelGroups(page, group));
    m_form->settings().binding().bind(keys::fileType, c.fileType);
}

FunctionControls& FolderPanel::functionControls()
{
    return m_form->function();
}

void FolderPanel::readIni()
{
    m_form->readStored();
    showFolder();
}

bool FolderPanel::writeIni()
{
    return m_form->writeStored();
}

void FolderPanel::setDefaultValue()
{
    m_form->setDefaults();
}

bool FolderPanel::matches(QSettings& main, const QSettings& path) const
{
    return m_form->matches(main, path);
}

void FolderPanel::showFolder()
{
    m_files->setFolder(m_form->folder());
}

copyPanel::copyPanel(const QString& page, QWidget* parent)
    : FolderPanel({QStringLiteral("Copy  Utility"), tr("扫描文件或图片，接着从您的打印机复印出来。"),
                   tr("扫描的图像保存到下面的文件夹。要复印时，选中文件后打开，再从打开的程序中打印。"),
                   QStringLiteral("Copy")},
                  page, parent)
{
    auto* properties = new QPushButton(tr("复印属性..."), this);
    properties->setObjectName(QStringLiteral("propertyPushButton"));
    properties->setToolTip(tr("份数、纸张、缩放等打印时的要求"));
    properties->setAutoDefault(false);
    form().addToPages(properties);
    connect(properties, &QPushButton::clicked, this, [this, page] {
        copyfaxproperty dialog(page + QStringLiteral("_Copy_Print"), this);
        dialog.exec();
    });
}

EmailPanel::EmailPanel(const QString& page, QWidget* parent)
    : FolderPanel({QStringLiteral("E-Mail  Utility"),
                   tr("扫描文件或图片，接着用您预设的电子邮件软件传送出去。"),
                   tr("扫描的图像保存到下面的文件夹。要发送时，把文件从列表拖到您的电子邮件软件中。"),
                   QStringLiteral("Email")},
                  page, parent)
{
}

filepanel::filepanel(const QString& page, QWidget* parent)
    : FolderPanel({QStringLiteral("File  Utility"), tr("扫描并保存图像到您的存贮装置。"),
                   tr("扫描的图像保存到下面的文件夹，可以是U盘等存储装置上的文件夹。"),
                   QStringLiteral("File")},
                  page, parent)
{
}

ftppanel::ftppanel(const QString& page, QWidget* parent)
    : FolderPanel({QStringLiteral("FTP  Utility"), tr("扫描文件并上传至FTP服务器。"),
                   tr("扫描的图像保存到下面的文件夹。要上传时，把文件从列表拖到您的FTP软件中。"),
                   QStringLiteral("FTP")},
                  page, parent)
{
}
