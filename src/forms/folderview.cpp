// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/folderview.h"

#include "forms/dialogparts.h"
#include "forms/foldermodel.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDebug>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QUrl>
#include <QVBoxLayout>

namespace {

constexpr int kWatchMs = 2000;

// The editor of a file name begins with the name selected, without its extension.
class NameDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        auto* edit = qobject_cast<QLineEdit*>(editor);
        if (!edit || !edit->text().isEmpty()) // a refresh of the list must not undo what was typed
            return;
        const QString name = index.data(Qt::EditRole).toString();
        edit->setAccessibleName(QCoreApplication::translate("FolderView", "新文件名"));
        edit->setText(name);
        // the view selects all after this
        QTimer::singleShot(0, edit, [edit, name] {
            const int end = name.lastIndexOf(QLatin1Char('.'));
            edit->setSelection(0, end > 0 ? end : name.size());
        });
    }
};

} // namespace

FolderView::FolderView(QWidget* parent)
    : QWidget(parent), m_list(new QTreeView(this)), m_folderLabel(new QLabel(this)),
      m_emptyLabel(new QLabel(this)), m_messageLabel(new QLabel(this)), m_sort(new QComboBox(this)),
      m_chooseButton(new QPushButton(tr("选择文件夹(&H)..."), this))
{
    setObjectName(QStringLiteral("folderView"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* top = new QHBoxLayout;
    auto* caption = new QLabel(tr("已保存的文件(&N):"), this);
    caption->setBuddy(m_list);
    m_folderLabel->setTextFormat(Qt::PlainText);
    m_folderLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_folderLabel->setAccessibleName(tr("文件夹"));
    auto* sortLabel = new QLabel(tr("排序(&Q):"), this);
    sortLabel->setBuddy(m_sort);
    m_sort->setObjectName(QStringLiteral("sortComboBox"));
    m_sort->setAccessibleName(tr("文件的排序"));
    m_sort->addItems({tr("日期，新的在前"), tr("日期，旧的在前"), tr("名称"), tr("大小，大的在前")});
    m_chooseButton->setObjectName(QStringLiteral("chooseFolderButton"));
    m_chooseButton->setAccessibleName(tr("选择文件夹"));
    m_chooseButton->setToolTip(tr("选择保存图像并在这里显示的文件夹"));
    m_chooseButton->setAutoDefault(false);
    top->addWidget(caption);
    top->addWidget(m_folderLabel, 1);
    top->addWidget(sortLabel);
    top->addWidget(m_sort);
    top->addWidget(m_chooseButton);
    layout->addLayout(top);
    buildList();
    layout->addWidget(m_list, 1);
    m_emptyLabel->setObjectName(QStringLiteral("emptyLabel"));
    m_emptyLabel->setAlignment(Qt::AlignCenter);
    m_emptyLabel->setTextFormat(Qt::PlainText);
    m_emptyLabel->setWordWrap(true);
    layout->addWidget(m_emptyLabel, 1);
    buildButtons();
    connect(m_sort, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &FolderView::sort);
    connect(m_chooseButton, &QPushButton::clicked, this, &FolderView::choose);
    m_watch.setInterval(kWatchMs);
    connect(&m_watch, &QTimer::timeout, this, &FolderView::follow);
    updateActions();
}

void FolderView::buildList()
{
    m_list->setObjectName(QStringLiteral("fileList"));
    m_list->setAccessibleName(tr("已保存的文件"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setIconSize({FolderModel::kPictureSide, FolderModel::kPictureSide});
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setEditTriggers(QAbstractItemView::EditKeyPressed);
    m_list->setDragDropMode(QAbstractItemView::DragOnly);
    m_list->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_list->setItemDelegateForColumn(FolderModel::Name, new NameDelegate(m_list));
    m_list->hide();
    connect(m_list, &QTreeView::activated, this, &FolderView::openFiles);
}

QAction* FolderView::addAction(const QString& text, const QKeySequence& key, void (FolderView::*slot)())
{
    auto* action = new QAction(text, m_list);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(text, key.toString(QKeySequence::NativeText)));
    connect(action, &QAction::triggered, this, slot);
    m_list->addAction(action);
    return action;
}

void FolderView::buildButtons()
{
    m_open = addAction(tr("打开"), QKeySequence(Qt::Key_Return), &FolderView::openFiles);
    m_rename = addAction(tr("重命名"), QKeySequence(Qt::Key_F2), &FolderView::rename);
    m_trash = addAction(tr("移到回收站"), QKeySequence(Qt::Key_Delete), &FolderView::moveToTrash);
    auto* row = new QHBoxLayout;
    for (const auto& [action, name] : {std::pair{m_open, "openButton"}, std::pair{m_rename, "renameButton"},
                                       std::pair{m_trash, "trashButton"}}) {
        auto* button = new QPushButton(action->text(), this);
        button->setObjectName(QLatin1String(name));
        button->setToolTip(action->toolTip());
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, action, &QAction::trigger);
        connect(action, &QAction::changed, button,
                [action = action, button] { button->setEnabled(action->isEnabled()); });
        row->addWidget(button);
    }
    m_messageLabel->setObjectName(QStringLiteral("messageLabel"));
    m_messageLabel->setTextFormat(Qt::PlainText);
    m_messageLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(m_messageLabel, 1);
    qobject_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void FolderView::setFolder(const QString& folder)
{
    m_folder = folder;
    if (isVisible())
        follow();
}

void FolderView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    follow();
    m_watch.start();
}

void FolderView::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_watch.stop();
}

void FolderView::follow()
{
    const bool present = QDir::isAbsolutePath(m_folder) && QDir(m_folder).exists();
    const QString wanted = present ? m_folder : QString();
    m_folderLabel->setText(m_folder);
    m_folderLabel->setToolTip(m_folder);
    if (wanted == m_shown && m_model && (!present || m_list->rootIndex().isValid()))
        return;
    if (!m_model) {
        m_model = new FolderModel(this);
        m_list->setModel(m_model);
        m_list->setColumnHidden(FolderModel::Type, true);
        m_list->setSortingEnabled(true);
        m_list->header()->setStretchLastSection(false);
        m_list->header()->setSectionResizeMode(FolderModel::Name, QHeaderView::Stretch);
        m_list->header()->setSectionResizeMode(FolderModel::Size, QHeaderView::ResizeToContents);
        m_list->header()->setSectionResizeMode(FolderModel::Date, QHeaderView::ResizeToContents);
        sort(m_sort->currentIndex());
        connect(m_model, &FolderModel::problem, this, &FolderView::tell);
        connect(m_model, &FolderModel::renamed, this, [this](const QString& file) { m_selectNext = file; });
        connect(m_model, &FolderModel::directoryLoaded, this, &FolderView::showCount);
        connect(m_model, &FolderModel::rowsInserted, this, &FolderView::showCount);
        connect(m_model, &FolderModel::rowsRemoved, this, &FolderView::showCount);
        connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                &FolderView::updateActions);
    }
    m_shown = wanted;
    if (present)
        m_list->setRootIndex(m_model->open(m_folder));
    tell(QString());
    showCount();
}

void FolderView::showCount()
{
    const QModelIndex renamed = m_selectNext.isEmpty() ? QModelIndex() : m_model->index(m_selectNext);
    if (renamed.isValid()) { // its row is a new one
        m_selectNext.clear();
        if (selectedFiles().isEmpty()) // the user has not gone on to another
            m_list->setCurrentIndex(renamed);
    }
    // without its root the list would show the whole file system
    const bool usable = !m_shown.isEmpty() && m_list->rootIndex().isValid();
    const int files = usable ? m_model->rowCount(m_list->rootIndex()) : 0;
    m_list->setVisible(files > 0);
    m_emptyLabel->setVisible(files == 0);
    m_emptyLabel->setText(usable ? tr("文件夹中没有文件。扫描的图像会出现在这里。")
                                 : tr("文件夹“%1”还不存在，第一次扫描时建立。").arg(m_folder));
    updateActions();
}

QStringList FolderView::selectedFiles() const
{
    QStringList files;
    if (m_model && m_list->isVisibleTo(this)) {
        for (const QModelIndex& row : m_list->selectionModel()->selectedRows())
            files << m_model->filePath(row);
    }
    return files;
}

void FolderView::updateActions()
{
    const int count = selectedFiles().size();
    m_open->setEnabled(count > 0);
    m_rename->setEnabled(count == 1);
    m_trash->setEnabled(count > 0);
}

void FolderView::sort(int choice)
{
    struct Order
    {
        int column;
        Qt::SortOrder order;
    };
    constexpr Order orders[] = {{FolderModel::Date, Qt::DescendingOrder},
                                {FolderModel::Date, Qt::AscendingOrder},
                                {FolderModel::Name, Qt::AscendingOrder},
                                {FolderModel::Size, Qt::DescendingOrder}};
    if (m_model && choice >= 0)
        m_list->sortByColumn(orders[choice].column, orders[choice].order);
}

void FolderView::choose()
{
    const QString folder = dialogparts::chooseFolder(this, m_folder);
    if (folder.isEmpty())
        return;
    setFolder(folder);
    emit folderChosen(folder);
}

void FolderView::openFiles()
{
    constexpr int kMostAtOnce = 10;
    const QStringList files = selectedFiles();
    if (files.size() > kMostAtOnce) {
        tell(tr("一次最多打开 %1 个文件").arg(kMostAtOnce));
        return;
    }
    for (const QString& file : files) {
        if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file)))
            tell(tr("无法打开“%1”").arg(QFileInfo(file).fileName()));
    }
}

void FolderView::rename()
{
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    if (rows.size() != 1)
        return;
    tell(QString());
    m_list->setFocus();
    m_list->setCurrentIndex(rows.first());
    m_list->edit(rows.first());
}

// Never deletes: a file that the trash does not take stays.
void FolderView::moveToTrash()
{
    // Without the user's own trash the toolkit would move files into the working directory.
    const QString trash =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Trash");
    const bool usable = QDir().mkpath(trash);
    const QStringList files = selectedFiles();
    QStringList left;
    for (const QString& file : files) {
        if (!usable || !QFile::moveToTrash(file)) {
            qWarning().noquote() << "cannot be moved to the trash:" << file;
            left << QFileInfo(file).fileName();
        }
    }
    tell(left.isEmpty() ? tr("已将 %1 个文件移到回收站").arg(files.size())
                        : tr("无法移到回收站：%1").arg(left.join(tr("、", "between file names"))));
}

void FolderView::tell(const QString& text)
{
    m_messageLabel->setText(text);
    m_messageLabel->setToolTip(text);
}
