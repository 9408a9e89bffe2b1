// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/desktopentrydialog.h"

#include "forms/applicationicon.h"
#include "forms/dialogparts.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kFilesPerSlice = 15;
constexpr int kEntryRole = Qt::UserRole; // index into the entries

} // namespace

DesktopEntryDialog::DesktopEntryDialog(const QString& folder, QWidget* parent)
    : QDialog(parent), m_folder(folder), m_filter(new QLineEdit(this)), m_list(new QListWidget(this)),
      m_message(new QLabel(this))
{
    setWindowTitle(tr("从应用程序菜单导入"));
    auto* help = new QLabel(tr("选择一个应用程序，它的名称、图标和启动命令将填入应用程序的设置。"), this);
    dialogparts::styleHelp(help);
    auto* filterLabel = new QLabel(tr("查找(&F):"), this);
    filterLabel->setBuddy(m_filter);
    m_filter->setObjectName(QStringLiteral("filterEdit"));
    m_filter->setAccessibleName(tr("查找应用程序"));
    m_filter->setClearButtonEnabled(true);
    m_list->setObjectName(QStringLiteral("entryList"));
    m_list->setAccessibleName(tr("应用程序"));
    m_list->setSortingEnabled(true);
    m_message->setObjectName(QStringLiteral("messageLabel"));
    dialogparts::showMessage(m_message, QString());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    dialogparts::useChineseButtons(buttons);
    auto* browseButton = buttons->addButton(tr("其他文件(&B)..."), QDialogButtonBox::ActionRole);
    browseButton->setObjectName(QStringLiteral("browseButton"));
    browseButton->setToolTip(tr("选择其他位置的桌面条目（.desktop）文件"));
    auto* top = new QHBoxLayout;
    top->addWidget(filterLabel);
    top->addWidget(m_filter, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(help);
    layout->addLayout(top);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_message);
    layout->addWidget(buttons);
    resize(fontMetrics().averageCharWidth() * 75, fontMetrics().height() * 26);
    connect(m_filter, &QLineEdit::textChanged, this, &DesktopEntryDialog::filter);
    connect(m_list, &QListWidget::itemActivated, this, &DesktopEntryDialog::accept);
    connect(m_list, &QListWidget::currentRowChanged, this,
            [this] { dialogparts::showMessage(m_message, QString()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &DesktopEntryDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(browseButton, &QPushButton::clicked, this, &DesktopEntryDialog::browse);
    m_files = QDir(folder).entryList({QStringLiteral("*.desktop")}, QDir::Files);
    connect(&m_reading, &QTimer::timeout, this, &DesktopEntryDialog::readSome);
    m_reading.start(0);
}

void DesktopEntryDialog::readSome()
{
    for (int i = 0; i < kFilesPerSlice && !m_files.isEmpty(); ++i)
        addEntry(QDir(m_folder).filePath(m_files.takeFirst()));
    if (!m_files.isEmpty())
        return;
    m_reading.stop();
    if (m_entries.isEmpty())
        dialogparts::showMessage(m_message, tr("“%1”中没有应用程序。").arg(m_folder));
}

void DesktopEntryDialog::addEntry(const QString& file)
{
    const DesktopEntry entry = readDesktopEntry(file);
    if (!entry.inMenu)
        return;
    auto* item = new QListWidgetItem(applicationIcon(entry.application.icon), entry.application.text);
    item->setData(kEntryRole, m_entries.size());
    item->setToolTip(entry.problem.isEmpty() ? entry.comment : entry.problem);
    if (!entry.problem.isEmpty())
        item->setForeground(palette().brush(QPalette::Disabled, QPalette::Text));
    m_entries << entry;
    m_list->addItem(item);
    item->setHidden(!item->text().contains(m_filter->text(), Qt::CaseInsensitive));
}

void DesktopEntryDialog::filter(const QString& text)
{
    for (int i = 0; i < m_list->count(); ++i)
        m_list->item(i)->setHidden(!m_list->item(i)->text().contains(text, Qt::CaseInsensitive));
}

void DesktopEntryDialog::browse()
{
    const QString file =
        QFileDialog::getOpenFileName(this, tr("选择桌面条目"), m_folder, tr("桌面条目 (*.desktop)"));
    if (!file.isEmpty() && take(readDesktopEntry(file)))
        QDialog::accept();
}

bool DesktopEntryDialog::take(const DesktopEntry& entry)
{
    const QString name = entry.application.text;
    if (!entry.problem.isEmpty()) {
        dialogparts::showMessage(m_message,
                                 name.isEmpty() ? entry.problem : tr("“%1”：%2").arg(name, entry.problem));
        return false;
    }
    m_chosen = entry.application;
    return true;
}

void DesktopEntryDialog::accept()
{
    const QListWidgetItem* item = m_list->currentItem();
    if (!item || item->isHidden()) {
        dialogparts::showMessage(m_message, tr("请选择一个应用程序。"));
        return;
    }
    if (take(m_entries.at(item->data(kEntryRole).toInt())))
        QDialog::accept();
}
