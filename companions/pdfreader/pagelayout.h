// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>
#include <QSizeF>
#include <QVector>

namespace reader {

enum class ZoomMode
{
    Width,
    Page,
    Factor
};

struct Zoom
{
    ZoomMode mode = ZoomMode::Width;
    double factor = 1; // counts for ZoomMode::Factor; 1: as large as on paper
};

constexpr double kLeastZoom = 0.1, kMostZoom = 8;

// The next larger (up) or smaller of the usual steps; a factor at the end stays.
double zoomStep(double factor, bool up);

// A place that stays the same when the zoom changes.
struct PagePlace
{
    int page = 0;
    QPointF part; // of the page's size, 0 to 1 inside it
};

// Where the pages stand: one below the other, each in the middle. Logical pixels from the top left corner of
// the whole.
class PageLayout
{
public:
    void setPages(const QVector<QSizeF>& pages); // points
    // A viewport as seen without scroll bars; dpi: logical pixels to the inch of the screen.
    void arrange(const Zoom& zoom, QSize viewport, double dpi, int currentPage);

    int count() const { return m_pages.size(); }
    double factor() const { return m_factor; }
    QSize size() const { return m_size; }
    QRect page(int index) const { return m_rects.value(index); }
    double pixelsPerPoint() const { return m_pixelsPerPoint; }

    // First and last page that a band from top to bottom (exclusive) touches; the next one for a gap.
    QPair<int, int> pagesIn(int top, int bottom) const;
    // The page that covers most of the band.
    int mainPage(int top, int bottom) const;
    PagePlace placeAt(QPoint point) const; // on the nearest page
    QPoint pointAt(const PagePlace& place) const;

    static constexpr int kGap = 10; // pixels around and between pages

private:
    double fittingFactor(ZoomMode mode, QSize viewport, double dpi, int currentPage) const;

    QVector<QSizeF> m_pages;
    QVector<QRect> m_rects;
    QSize m_size;
    double m_factor = 1, m_pixelsPerPoint = 1;
};

} // namespace reader
