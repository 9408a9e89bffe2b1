// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/statusicon.h"

#include <QPainter>
#include <QPainterPath>

namespace {

// All drawn on a field of this size, in the middle of the widget.
constexpr qreal field = 56;
const QColor amber(0xE8, 0x94, 0x0C);

void drawMark(QPainter& painter, const QRectF& where, const QString& mark, int pixels)
{
    QFont font = painter.font();
    font.setPixelSize(pixels);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(where, Qt::AlignCenter, mark);
}

void drawScanning(QPainter& painter, const QColor& accent)
{
    QPainterPath sheet; // with a folded corner
    sheet.moveTo(13, 4);
    sheet.lineTo(33, 4);
    sheet.lineTo(43, 14);
    sheet.lineTo(43, 52);
    sheet.lineTo(13, 52);
    sheet.closeSubpath();
    painter.setPen(QPen(QColor(0x8A, 0x96, 0xA3), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::white);
    painter.drawPath(sheet);
    painter.drawPolyline(QPolygonF({{33, 4}, {33, 14}, {43, 14}}));
    painter.setPen(QPen(QColor(0xC3, 0xCB, 0xD3), 2, Qt::SolidLine, Qt::RoundCap));
    for (const qreal y : {15.0, 22.0, 38.0, 45.0})
        painter.drawLine(QPointF(19, y), QPointF(y < 20 ? 28 : 37, y));
    painter.setPen(QPen(accent, 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(5, 30), QPointF(51, 30));
}

void drawWarning(QPainter& painter)
{
    painter.setPen(QPen(amber, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(amber);
    painter.drawPolygon(QPolygonF({{28, 7}, {52, 48}, {4, 48}}));
    drawMark(painter, QRectF(0, 14, field, 36), QStringLiteral("!"), 32);
}

void drawQuestion(QPainter& painter, const QColor& accent)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(accent);
    painter.drawEllipse(QRectF(3, 3, 50, 50));
    drawMark(painter, QRectF(0, 0, field, field), QStringLiteral("?"), 34);
}

} // namespace

StatusIcon::StatusIcon(QWidget* parent) : QWidget(parent)
{
    setFixedSize(int(field), int(field));
}

void StatusIcon::setKind(Kind kind)
{
    m_kind = kind;
    update();
}

void StatusIcon::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor accent = palette().color(QPalette::Active, QPalette::Highlight);
    switch (m_kind) {
    case Kind::Scanning:
        drawScanning(painter, accent);
        break;
    case Kind::Warning:
        drawWarning(painter);
        break;
    case Kind::Question:
        drawQuestion(painter, accent);
        break;
    }
}
