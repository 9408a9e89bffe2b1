// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pagelayout.h"
#include "rendercache.h"
#include "searchhits.h"
#include "textselection.h"

#include <QAbstractScrollArea>

namespace reader {

// The pages below each other, with the mouse's and the keyboard's work on them. What is not rendered yet
// shows as a stand-in, painting never waits.
class PageView : public QAbstractScrollArea
{
    Q_OBJECT
public:
    PageView(DocumentWorker& worker, const SearchHits& hits, QWidget* parent = nullptr);

    void setDocument(const DocumentInfo& info);
    void clear();

    const Zoom& zoom() const { return m_zoom; }
    double zoomFactor() const { return m_layout.factor(); } // the one in effect
    void setZoom(const Zoom& zoom);
    void stepZoom(bool up);

    int pageCount() const { return m_layout.count(); }
    int currentPage() const { return m_page; }   // from 0
    void goTo(int page, double top = 0);         // top: of the page's height
    void turnPage(int by) { goTo(m_page + by); } // stays inside the document

    void repaintHits() { viewport()->update(); }
    void showCurrentHit();

    bool hasSelection() const { return !m_selection.isEmpty(); }
    void copy() const;
    void selectAllOnPage();

    const RenderCache& cache() const { return m_cache; }
    QPoint viewportPoint(int page, QPointF points) const; // where a place of a page is seen

signals:
    void pageChanged(int page);
    void zoomChanged();
    void selectionChanged();
    void addressClicked(const QString& url);
    void linkHovered(const QString& url);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    enum class Drag
    {
        None,
        Select,
        Move
    };

    QPoint origin() const;       // of the viewport in the layout
    void relayout(QPoint fixed); // the place under this point of the viewport stays there
    void scrollTo(QPoint origin);
    void updateCurrentPage();

    QSize pixelSize(int page) const;
    QVector<TileKey> seenTiles(int page) const;
    void paintPage(QPainter& painter, int page);
    void paintTiles(QPainter& painter, int page, const QRect& place);
    void paintMarks(QPainter& painter, int page, const QRect& place);
    void askForTiles(int first, int last);
    void askForTexts(int first, int last);
    void takeTile(const TileKey& key, const QImage& image, const QString& fault);
    void takeText(int page, const PageTextPtr& text);

    QPointF pointsAt(QPoint viewportPoint, int page) const;
    QRect inLayout(int page, const QRectF& points) const;
    PageTextPtr textUnder(QPoint viewportPoint, int* page) const;
    const PageLink* linkUnder(QPoint viewportPoint) const;
    void follow(const PageLink& link);
    void updatePointer(QPoint viewportPoint);

    DocumentWorker& m_worker;
    const SearchHits& m_hits;
    PageLayout m_layout;
    Zoom m_zoom;
    int m_page = 0;
    RenderCache m_cache;
    QVector<TileKey> m_askedSeen, m_askedAhead;
    QHash<int, PageTextPtr> m_texts; // of the pages that are seen
    QVector<int> m_askedTexts;
    bool m_mayCopy = true;
    bool m_selectAllWaits = false; // for the page's text
    TextSelection m_selection;
    Drag m_drag = Drag::None;
    QPoint m_pressed, m_pressedOrigin;
};

} // namespace reader
