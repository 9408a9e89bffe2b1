// SPDX-License-Identifier: GPL-3.0-or-later
#include "pagelayout.h"

#include <algorithm>
#include <cmath>

namespace reader {

double zoomStep(double factor, bool up)
{
    constexpr double steps[] = {0.1,  0.25, 0.33, 0.5, 0.67, 0.75, 0.9, 1, 1.1,
                                1.25, 1.5,  1.75, 2,   2.5,  3,    4,   6, 8};
    constexpr double slack = 1.001;
    if (up) {
        const auto* next = std::upper_bound(std::begin(steps), std::end(steps), factor * slack);
        return next == std::end(steps) ? factor : *next;
    }
    const auto* next = std::lower_bound(std::begin(steps), std::end(steps), factor / slack);
    return next == std::begin(steps) ? factor : *(next - 1);
}

void PageLayout::setPages(const QVector<QSizeF>& pages)
{
    m_pages = pages;
    m_rects.clear();
    m_size = {};
}

double PageLayout::fittingFactor(ZoomMode mode, QSize viewport, double dpi, int currentPage) const
{
    double widest = 1;
    for (const QSizeF& page : m_pages)
        widest = std::max(widest, page.width());
    const QSizeF current = m_pages.value(currentPage, QSizeF(595, 842));
    const double inPixels = dpi / 72;
    const double room = viewport.width() - 2 * kGap;
    if (mode == ZoomMode::Width)
        return room / (widest * inPixels);
    return std::min(room / current.width(), double(viewport.height() - 2 * kGap) / current.height()) /
           inPixels;
}

void PageLayout::arrange(const Zoom& zoom, QSize viewport, double dpi, int currentPage)
{
    m_factor =
        zoom.mode == ZoomMode::Factor ? zoom.factor : fittingFactor(zoom.mode, viewport, dpi, currentPage);
    m_factor = qBound(kLeastZoom, m_factor, kMostZoom);
    m_pixelsPerPoint = m_factor * dpi / 72;
    int width = viewport.width(), top = kGap;
    m_rects.clear();
    for (const QSizeF& page : m_pages) {
        const QSize size = (page * m_pixelsPerPoint).toSize().expandedTo({1, 1});
        m_rects << QRect({0, top}, size);
        width = std::max(width, size.width() + 2 * kGap);
        top += size.height() + kGap;
    }
    for (QRect& rect : m_rects)
        rect.moveLeft((width - rect.width()) / 2);
    m_size = m_pages.isEmpty() ? QSize() : QSize(width, top);
}

QPair<int, int> PageLayout::pagesIn(int top, int bottom) const
{
    if (m_rects.isEmpty())
        return {0, -1};
    const auto endsBelow = [](int y, const QRect& rect) { return y <= rect.bottom(); };
    const int last = int(m_rects.size()) - 1;
    const auto at = [&](int y) {
        return std::min(
            last, int(std::upper_bound(m_rects.begin(), m_rects.end(), y, endsBelow) - m_rects.begin()));
    };
    const int first = at(top);
    return {first,
            std::max(first, m_rects[at(bottom - 1)].top() < bottom ? at(bottom - 1) : at(bottom - 1) - 1)};
}

int PageLayout::mainPage(int top, int bottom) const
{
    const auto [first, last] = pagesIn(top, bottom);
    int best = std::max(0, first), most = -1;
    for (int i = first; i <= last; ++i) {
        const int covered = std::min(bottom, m_rects[i].bottom() + 1) - std::max(top, m_rects[i].top());
        // A small page that is wholly seen counts more than the part of a large one.
        const int share = 1000 * covered / std::max(1, std::min(m_rects[i].height(), bottom - top));
        if (share > most) {
            most = share;
            best = i;
        }
    }
    return best;
}

PagePlace PageLayout::placeAt(QPoint point) const
{
    if (m_rects.isEmpty())
        return {};
    const int index = pagesIn(point.y(), point.y() + 1).first;
    const QRect& rect = m_rects[index];
    return {index,
            {double(point.x() - rect.left()) / rect.width(), double(point.y() - rect.top()) / rect.height()}};
}

QPoint PageLayout::pointAt(const PagePlace& place) const
{
    const QRect rect = page(place.page);
    return {rect.left() + int(std::lround(place.part.x() * rect.width())),
            rect.top() + int(std::lround(place.part.y() * rect.height()))};
}

} // namespace reader
