// SPDX-License-Identifier: GPL-3.0-or-later
#include "thumbnails.h"

#include <QStyledItemDelegate>

namespace reader {
namespace {

constexpr int kCacheKiB = 16 << 10;
const QSize kBox(120, 150);

// The picture above its number, all of one size, so that long documents need no layout.
class ThumbnailDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override
    {
        return {kBox.width() + 20, kBox.height() + option.fontMetrics.height() + 16};
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->decorationPosition = QStyleOptionViewItem::Top;
        option->decorationSize = kBox;
        option->displayAlignment = Qt::AlignHCenter;
        const QPixmap picture = QPixmap::fromImage(index.data(Qt::DecorationRole).value<QImage>());
        if (!picture.isNull())
            option->icon.addPixmap(picture, QIcon::Selected); // as it is, not tinted
    }
};

} // namespace

ThumbnailModel::ThumbnailModel(QObject* parent) : QAbstractListModel(parent), m_images(kCacheKiB) {}

void ThumbnailModel::setCount(int pages)
{
    beginResetModel();
    m_count = pages;
    m_images.clear();
    endResetModel();
}

void ThumbnailModel::setImage(int page, const QImage& image)
{
    m_images.insert(page, new QImage(image), int(image.sizeInBytes() / 1024) + 1);
    emit dataChanged(index(page), index(page), {Qt::DecorationRole});
}

int ThumbnailModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_count;
}

QVariant ThumbnailModel::data(const QModelIndex& index, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return QString::number(index.row() + 1);
    case Qt::AccessibleTextRole:
        return tr("第 %1 页").arg(index.row() + 1);
    case Qt::DecorationRole:
        if (const QImage* image = m_images.object(index.row()); image != nullptr && !image->isNull())
            return *image;
        return {};
    default:
        return {};
    }
}

ThumbnailPane::ThumbnailPane(DocumentWorker& worker, QWidget* parent)
    : QListView(parent), m_worker(worker), m_model(new ThumbnailModel(this))
{
    setAccessibleName(tr("缩略图"));
    setModel(m_model);
    setItemDelegate(new ThumbnailDelegate(this));
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(&m_worker, &DocumentWorker::thumbnailDrawn, this, [this](int page, QImage image) {
        m_asked.removeOne(page);
        image.setDevicePixelRatio(devicePixelRatioF());
        if (page < m_model->rowCount())
            m_model->setImage(page, image);
    });
}

void ThumbnailPane::setDocument(int pages)
{
    m_asked.clear();
    m_model->setCount(pages);
}

void ThumbnailPane::setCurrentPage(int page)
{
    m_following = true;
    setCurrentIndex(m_model->index(page));
    m_following = false;
}

void ThumbnailPane::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QListView::currentChanged(current, previous);
    if (current.isValid() && !m_following)
        emit pageChosen(current.row());
}

void ThumbnailPane::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    askForSeen();
}

void ThumbnailPane::askForSeen()
{
    QVector<int> missing;
    const int first = std::max(0, indexAt({1, 1}).row());
    for (int page = first; page < m_model->rowCount(); ++page) {
        if (visualRect(m_model->index(page)).top() > viewport()->height())
            break;
        if (m_model->isMissing(page))
            missing << page;
    }
    if (missing == m_asked)
        return;
    m_asked = missing;
    m_worker.drawThumbnails(missing, kBox * devicePixelRatioF());
}

} // namespace reader
