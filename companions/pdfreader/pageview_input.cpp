// SPDX-License-Identifier: GPL-3.0-or-later
// The mouse and the keyboard on the pages.
#include "pageview.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <cmath>

namespace reader {

void PageView::wheelEvent(QWheelEvent* event)
{
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    constexpr double notch = 120, growth = 1.2;
    const double factor = zoomFactor() * std::pow(growth, event->angleDelta().y() / notch);
    m_zoom = {ZoomMode::Factor, qBound(kLeastZoom, factor, kMostZoom)};
    relayout(event->position().toPoint());
    emit zoomChanged();
    event->accept();
}

void PageView::keyPressEvent(QKeyEvent* event)
{
    QScrollBar* bar = verticalScrollBar();
    const bool wide = horizontalScrollBar()->maximum() > 0;
    const bool plain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
    const int key = plain ? event->key() : 0;
    const bool back =
        key == Qt::Key_PageUp || (key == Qt::Key_Space && (event->modifiers() & Qt::ShiftModifier));
    if (back || key == Qt::Key_PageDown || key == Qt::Key_Space) {
        if (m_zoom.mode == ZoomMode::Page) // a screenful is a page
            turnPage(back ? -1 : 1);
        else
            bar->triggerAction(back ? QScrollBar::SliderPageStepSub : QScrollBar::SliderPageStepAdd);
    } else if (key == Qt::Key_Home)
        goTo(0);
    else if (key == Qt::Key_End)
        bar->setValue(bar->maximum());
    else if (key == Qt::Key_Left && !wide)
        turnPage(-1);
    else if (key == Qt::Key_Right && !wide)
        turnPage(1);
    else
        QAbstractScrollArea::keyPressEvent(event);
}

QPointF PageView::pointsAt(QPoint viewportPoint, int page) const
{
    return QPointF(viewportPoint + origin() - m_layout.page(page).topLeft()) / m_layout.pixelsPerPoint();
}

PageTextPtr PageView::textUnder(QPoint viewportPoint, int* page) const
{
    if (pageCount() == 0)
        return nullptr;
    *page = m_layout.placeAt(viewportPoint + origin()).page;
    return m_texts.value(*page);
}

const PageLink* PageView::linkUnder(QPoint viewportPoint) const
{
    int page = 0;
    const PageTextPtr text = textUnder(viewportPoint, &page);
    if (!text)
        return nullptr;
    const QPointF place = pointsAt(viewportPoint, page);
    for (const PageLink& link : text->links()) // they live as long as the text, which m_texts holds
        if (link.area.contains(place))
            return &link;
    return nullptr;
}

void PageView::follow(const PageLink& link)
{
    const PageLink target = link;
    if (target.page >= 0)
        goTo(target.page, target.top);
    else
        emit addressClicked(target.url);
}

void PageView::updatePointer(QPoint point)
{
    int page = 0;
    const PageTextPtr text = textUnder(point, &page);
    const PageLink* link = linkUnder(point);
    emit linkHovered(link == nullptr ? QString() : link->url);
    if (link != nullptr)
        viewport()->setCursor(Qt::PointingHandCursor);
    else if (text && text->hasTextAt(pointsAt(point, page)))
        viewport()->setCursor(Qt::IBeamCursor);
    else
        viewport()->unsetCursor();
}

// A page without text has nothing to be marked: there, as with the middle button, the page is moved.
void PageView::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->pos();
    m_pressedOrigin = origin();
    m_drag = Drag::None;
    int page = 0;
    const PageTextPtr text = textUnder(event->pos(), &page);
    if (event->button() == Qt::MiddleButton ||
        (event->button() == Qt::LeftButton && (!text || text->text().isEmpty()))) {
        m_drag = Drag::Move;
        viewport()->setCursor(Qt::ClosedHandCursor);
    } else if (event->button() == Qt::LeftButton) {
        m_drag = Drag::Select;
        m_selection.start(page, text, pointsAt(event->pos(), page));
        viewport()->update();
        emit selectionChanged();
    }
}

void PageView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_drag == Drag::Move) {
        scrollTo(m_pressedOrigin - (event->pos() - m_pressed));
        return;
    }
    if (m_drag == Drag::None) {
        updatePointer(event->pos());
        return;
    }
    const int beyond =
        event->pos().y() < 0 ? event->pos().y() : std::max(0, event->pos().y() - viewport()->height());
    if (beyond != 0)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + beyond);
    m_selection.extend(pointsAt(event->pos(), m_selection.page()));
    viewport()->update();
}

void PageView::mouseReleaseEvent(QMouseEvent* event)
{
    const Drag drag = m_drag;
    m_drag = Drag::None;
    if (event->button() == Qt::LeftButton && (event->pos() - m_pressed).manhattanLength() < 4) {
        if (const PageLink* link = linkUnder(event->pos()))
            follow(*link);
    } else if (drag == Drag::Select && m_mayCopy && hasSelection() &&
               QGuiApplication::clipboard()->supportsSelection()) {
        QGuiApplication::clipboard()->setText(m_selection.text(), QClipboard::Selection);
    }
    if (drag != Drag::None)
        emit selectionChanged();
    updatePointer(event->pos());
}

void PageView::mouseDoubleClickEvent(QMouseEvent* event)
{
    int page = 0;
    const PageTextPtr text = textUnder(event->pos(), &page);
    if (event->button() != Qt::LeftButton || !text)
        return;
    m_selection.select(page, text, text->wordAt(pointsAt(event->pos(), page)));
    viewport()->update();
    emit selectionChanged();
}

void PageView::copy() const
{
    if (m_mayCopy && hasSelection())
        QGuiApplication::clipboard()->setText(m_selection.text());
}

void PageView::selectAllOnPage()
{
    const PageTextPtr text = m_texts.value(m_page);
    m_selectAllWaits = !text;
    if (!text)
        return;
    m_selection.selectAll(m_page, text);
    viewport()->update();
    emit selectionChanged();
}

} // namespace reader
