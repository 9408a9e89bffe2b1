// SPDX-License-Identifier: GPL-3.0-or-later
#include "outlinepane.h"

#include <QHeaderView>

namespace reader {
namespace {

constexpr int kPage = Qt::UserRole, kTop = Qt::UserRole + 1;

QList<QTreeWidgetItem*> itemsOf(const std::vector<OutlineEntry>& entries)
{
    QList<QTreeWidgetItem*> items;
    for (const OutlineEntry& entry : entries) {
        auto* item =
            new QTreeWidgetItem({entry.title, entry.page >= 0 ? QString::number(entry.page + 1) : QString()});
        item->setData(0, kPage, entry.page);
        item->setData(0, kTop, entry.top);
        item->setToolTip(0, entry.title);
        item->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        item->addChildren(itemsOf(entry.children));
        items << item;
    }
    return items;
}

} // namespace

OutlinePane::OutlinePane(QWidget* parent) : QTreeWidget(parent)
{
    setAccessibleName(tr("目录"));
    setColumnCount(2);
    setHeaderHidden(true);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    connect(this, &QTreeWidget::itemClicked, this, &OutlinePane::choose);
    connect(this, &QTreeWidget::itemActivated, this, &OutlinePane::choose);
}

void OutlinePane::setOutline(const std::vector<OutlineEntry>& outline)
{
    clear();
    addTopLevelItems(itemsOf(outline));
    if (topLevelItemCount() == 1) // the document's title alone tells nothing
        expandItem(topLevelItem(0));
}

void OutlinePane::choose(const QTreeWidgetItem* item)
{
    if (item->data(0, kPage).toInt() >= 0)
        emit placeChosen(item->data(0, kPage).toInt(), item->data(0, kTop).toDouble());
}

} // namespace reader
