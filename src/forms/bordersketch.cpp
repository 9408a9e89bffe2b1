// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/bordersketch.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace {

// Logical pixels for a width: visible from 1 mm on, and never more than a quarter of the page.
double drawnWidth(double millimetres, double pageWidth)
{
    return millimetres <= 0 ? 0 : qMin(3 + 4 * std::sqrt(millimetres), pageWidth / 4);
}

void drawLines(QPainter& painter, const QRectF& page)
{
    const double step = page.height() / 16;
    for (int line = 2; line < 15; ++line) {
        const double width = page.width() * (line % 4 == 1 ? 0.4 : 0.72);
        painter.fillRect(QRectF(page.left() + page.width() * 0.14, page.top() + line * step, width, step / 3),
                         QColor(120, 120, 120));
    }
}

} // namespace

BorderSketch::BorderSketch(QWidget* parent) : QWidget(parent)
{
    setMinimumSize(sizeHint());
    setAccessibleName(tr("补边效果示意图"));
}

void BorderSketch::setBorder(const Border& border)
{
    m_border = border;
    update();
}

void BorderSketch::paintEvent(QPaintEvent*)
{
    constexpr double margin = 6, ratio = 210.0 / 297;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QSizeF size = QSizeF(ratio, 1).scaled(width() - 2 * margin, height() - 2 * margin, Qt::KeepAspectRatio);
    const double top = drawnWidth(m_border.topMm, size.width());
    const double left = drawnWidth(m_border.leftMm, size.width());
    QRectF outer(QPointF(), size);
    outer.moveCenter(rect().center());
    const QRectF inner = outer.adjusted(left, top, -left, -top);
    const QRectF page = m_border.inside ? outer : inner;
    painter.fillRect(page, QColor(236, 231, 216)); // paper with the shadow of its edge
    painter.setPen(QPen(QColor(150, 140, 120), 3));
    painter.drawRect(page.adjusted(1, 1, -1, -1));
    drawLines(painter, page);
    QPainterPath rim;
    rim.addRect(outer);
    rim.addRect(inner);
    painter.fillPath(rim, m_border.color);
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
    painter.drawRect(outer);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1, Qt::DashLine));
    painter.drawRect(inner);
}
