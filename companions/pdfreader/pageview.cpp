// SPDX-License-Identifier: GPL-3.0-or-later
#include "pageview.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>

namespace reader {

PageView::PageView(DocumentWorker& worker, const SearchHits& hits, QWidget* parent)
    : QAbstractScrollArea(parent), m_worker(worker), m_hits(hits)
{
    setAccessibleName(tr("页面"));
    setFrameShape(QFrame::NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // a width that comes and goes would change "fit width"
    viewport()->setMouseTracking(true);
    viewport()->setBackgroundRole(QPalette::Mid);
    constexpr int line = 40;
    verticalScrollBar()->setSingleStep(line);
    horizontalScrollBar()->setSingleStep(line);
    connect(&m_worker, &DocumentWorker::rendered, this, &PageView::takeTile);
    connect(&m_worker, &DocumentWorker::textRead, this, &PageView::takeText);
}

void PageView::setDocument(const DocumentInfo& info)
{
    clear();
    m_mayCopy = info.mayCopy;
    m_layout.setPages(info.pages);
    relayout({});
    emit pageChanged(m_page);
}

void PageView::clear()
{
    m_layout.setPages({});
    m_cache.clear();
    m_texts.clear();
    m_askedSeen.clear();
    m_askedAhead.clear();
    m_askedTexts.clear();
    m_selectAllWaits = false;
    m_selection.clear();
    m_drag = Drag::None;
    m_page = 0;
    scrollTo({});
    emit selectionChanged();
}

QPoint PageView::origin() const
{
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

void PageView::scrollTo(QPoint origin)
{
    horizontalScrollBar()->setValue(origin.x());
    verticalScrollBar()->setValue(origin.y());
    viewport()->update();
}

void PageView::relayout(QPoint fixed)
{
    const QPoint before = m_layout.size().isEmpty() ? QPoint() : origin() + fixed;
    const PagePlace place = m_layout.size().isEmpty() ? PagePlace() : m_layout.placeAt(before);
    const bool atTop = m_layout.size().isEmpty() || origin().y() == 0;
    const QSize room = maximumViewportSize();
    m_layout.arrange(m_zoom, room, logicalDpiX(), m_page);
    const QSize seen = viewport()->size();
    horizontalScrollBar()->setRange(0, std::max(0, m_layout.size().width() - room.width()));
    horizontalScrollBar()->setPageStep(seen.width());
    const int bar = horizontalScrollBar()->maximum() > 0 ? horizontalScrollBar()->sizeHint().height() : 0;
    verticalScrollBar()->setRange(0, std::max(0, m_layout.size().height() - room.height() + bar));
    verticalScrollBar()->setPageStep(seen.height());
    const QPoint target = m_layout.pointAt(place) - fixed;
    scrollTo({target.x(), atTop && fixed.isNull() ? 0 : target.y()});
    updateCurrentPage();
}

void PageView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    relayout({});
}

void PageView::scrollContentsBy(int, int)
{
    viewport()->update();
    updateCurrentPage();
}

void PageView::updateCurrentPage()
{
    if (pageCount() == 0)
        return;
    const int top = verticalScrollBar()->value();
    const int page = m_layout.mainPage(top, top + std::max(1, viewport()->height()));
    if (page == m_page)
        return;
    m_page = page;
    setAccessibleDescription(tr("第 %1 页，共 %2 页").arg(page + 1).arg(pageCount()));
    emit pageChanged(page);
}

void PageView::setZoom(const Zoom& zoom)
{
    // A page that fits is shown from its top edge; else the middle stays.
    m_zoom = {zoom.mode, qBound(kLeastZoom, zoom.factor, kMostZoom)};
    const int page = m_page;
    relayout(zoom.mode == ZoomMode::Factor ? viewport()->rect().center() : QPoint());
    if (zoom.mode == ZoomMode::Page && pageCount() > 0)
        goTo(page);
    emit zoomChanged();
}

void PageView::stepZoom(bool up)
{
    setZoom({ZoomMode::Factor, zoomStep(zoomFactor(), up)});
}

void PageView::goTo(int page, double top)
{
    if (pageCount() == 0)
        return;
    page = qBound(0, page, pageCount() - 1);
    const QRect rect = m_layout.page(page);
    scrollTo({origin().x(), rect.top() + int(std::lround(top * rect.height())) - PageLayout::kGap});
    // The last pages may not reach the top of the window; the wanted one counts all the same.
    const auto [first, last] = m_layout.pagesIn(origin().y(), origin().y() + viewport()->height());
    if (page != m_page && page >= first && page <= last) {
        m_page = page;
        emit pageChanged(page);
    }
}

QSize PageView::pixelSize(int page) const
{
    const QSizeF exact = QSizeF(m_layout.page(page).size()) * devicePixelRatioF();
    return exact.toSize();
}

QVector<TileKey> PageView::seenTiles(int page) const
{
    const double ratio = devicePixelRatioF();
    const QRect seen = QRect(origin(), viewport()->size()).translated(-m_layout.page(page).topLeft());
    const QRectF pixels(seen.x() * ratio, seen.y() * ratio, seen.width() * ratio, seen.height() * ratio);
    return tilesOf(page, pixelSize(page), pixels.toAlignedRect());
}

void PageView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Mid));
    if (pageCount() == 0)
        return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform); // for stand-ins; a tile is drawn pixel by pixel
    painter.translate(-origin());
    const auto [first, last] = m_layout.pagesIn(origin().y(), origin().y() + viewport()->height());
    for (int page = first; page <= last; ++page)
        paintPage(painter, page);
    askForTiles(first, last);
    askForTexts(first, last);
}

void PageView::paintPage(QPainter& painter, int page)
{
    const QRect place = m_layout.page(page);
    painter.fillRect(place, Qt::white);
    paintTiles(painter, page, place);
    paintMarks(painter, page, place);
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawRect(place.adjusted(-1, -1, 0, 0));
    const QString fault = m_cache.faultOf(page);
    if (fault.isEmpty())
        return;
    const QRect seen = place & QRect(origin(), viewport()->size());
    QRect strip = painter.fontMetrics().boundingRect(seen.adjusted(12, 8, -12, 0),
                                                     Qt::AlignHCenter | Qt::TextWordWrap, fault);
    painter.fillRect(QRect(seen.left(), seen.top(), seen.width(), strip.height() + 16),
                     QColor(255, 236, 179));
    painter.setPen(QColor(90, 50, 0));
    painter.drawText(seen.adjusted(12, 8, -12, 0), Qt::AlignHCenter | Qt::TextWordWrap, fault);
}

void PageView::paintTiles(QPainter& painter, int page, const QRect& place)
{
    const double ratio = devicePixelRatioF();
    for (const TileKey& key : seenTiles(page)) {
        const QRectF target(place.x() + key.area.x() / ratio, place.y() + key.area.y() / ratio,
                            key.area.width() / ratio, key.area.height() / ratio);
        if (const Tile* tile = m_cache.find(key)) {
            if (!tile->image.isNull())
                painter.drawImage(target, tile->image);
        } else if (const Tile* other = m_cache.standIn(page); other != nullptr && !other->image.isNull()) {
            const double x = double(other->image.width()) / key.size.width();
            const double y = double(other->image.height()) / key.size.height();
            painter.drawImage(
                target, other->image,
                QRectF(key.area.x() * x, key.area.y() * y, key.area.width() * x, key.area.height() * y));
        }
    }
}

// Multiplied like a marker's ink, so that the text stays black.
void PageView::paintMarks(QPainter& painter, int page, const QRect& place)
{
    painter.save();
    painter.setClipRect(place);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    const QVector<SearchHit>& hits = m_hits.onPage(page);
    for (int i = 0; i < hits.size(); ++i)
        for (const QRectF& area : hits[i].areas)
            painter.fillRect(inLayout(page, area),
                             m_hits.isCurrent(page, i) ? QColor(255, 160, 60) : QColor(255, 238, 120));
    if (m_selection.page() == page)
        for (const QRectF& area : m_selection.areas())
            painter.fillRect(inLayout(page, area), QColor(160, 200, 255));
    painter.restore();
}

// What is seen first, then the pages below and above as far as the cache holds them.
void PageView::askForTiles(int first, int last)
{
    QVector<TileKey> seen, ahead;
    qint64 bytes = 0;
    for (int page = first; page <= last; ++page)
        for (const TileKey& key : seenTiles(page)) {
            bytes += key.bytes();
            if (m_cache.find(key) == nullptr)
                seen << key;
        }
    m_cache.setSeen(bytes);
    for (const int page : {last + 1, first - 1, last + 2}) {
        if (page < 0 || page >= pageCount())
            continue;
        const QSize size = pixelSize(page);
        const int height = std::min(size.height(), int(viewport()->height() * devicePixelRatioF()));
        for (const TileKey& key :
             tilesOf(page, size, {0, page < first ? size.height() - height : 0, size.width(), height})) {
            bytes += key.bytes();
            if (bytes < m_cache.bound() && m_cache.find(key) == nullptr)
                ahead << key;
        }
    }
    if (seen == m_askedSeen && ahead == m_askedAhead)
        return;
    m_askedSeen = seen;
    m_askedAhead = ahead;
    m_worker.render(seen, ahead);
}

void PageView::askForTexts(int first, int last)
{
    for (auto text = m_texts.begin(); text != m_texts.end();)
        text = text.key() < first || text.key() > last ? m_texts.erase(text) : std::next(text);
    QVector<int> missing;
    for (int page = first; page <= last; ++page)
        if (!m_texts.contains(page))
            missing << page;
    if (missing == m_askedTexts)
        return;
    m_askedTexts = missing;
    m_worker.readTexts(missing);
}

void PageView::takeTile(const TileKey& key, const QImage& image, const QString& fault)
{
    if (key.page >= pageCount())
        return;
    m_askedSeen.removeOne(key);
    m_askedAhead.removeOne(key);
    m_cache.insert(key, {image, fault});
    viewport()->update();
}

void PageView::takeText(int page, const PageTextPtr& text)
{
    if (page >= pageCount())
        return;
    m_askedTexts.removeOne(page);
    m_texts.insert(page, text);
    if (m_selectAllWaits && page == m_page)
        selectAllOnPage();
}

QRect PageView::inLayout(int page, const QRectF& points) const
{
    const double scale = m_layout.pixelsPerPoint();
    const QRectF scaled(points.x() * scale, points.y() * scale, points.width() * scale,
                        points.height() * scale);
    return scaled.toAlignedRect().translated(m_layout.page(page).topLeft());
}

QPoint PageView::viewportPoint(int page, QPointF points) const
{
    return m_layout.page(page).topLeft() + (points * m_layout.pixelsPerPoint()).toPoint() - origin();
}

void PageView::showCurrentHit()
{
    const SearchHit* hit = m_hits.current();
    viewport()->update();
    if (hit == nullptr || hit->areas.isEmpty() || pageCount() == 0)
        return;
    const QRect place = inLayout(hit->page, hit->areas.first());
    const QRect seen(origin(), viewport()->size());
    if (!seen.contains(place))
        scrollTo({seen.left() <= place.left() && place.right() <= seen.right()
                      ? origin().x()
                      : place.center().x() - seen.width() / 2,
                  place.center().y() - seen.height() / 3});
}

} // namespace reader
