// SPDX-License-Identifier: GPL-3.0-or-later
#include "sheetpainter.h"

#include <QFontMetricsF>
#include <QPainterPath>
#include <QTextLayout>
#include <QtMath>

namespace {

constexpr double kDotsPerMm = 300 / 25.4;
const QColor kSealRed(205, 30, 35, 215);

} // namespace

SheetPainter::SheetPainter(double widthMm, double heightMm)
    : m_image(qRound(px(widthMm)), qRound(px(heightMm)), QImage::Format_RGB32)
{
    m_image.fill(Qt::white);
    m_painter.begin(&m_image);
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
}

double SheetPainter::px(double mm) const
{
    return mm * kDotsPerMm;
}

QFont SheetPainter::font(const Style& style) const
{
    QFont font(style.face == Face::Serif ? QStringLiteral("Noto Serif CJK SC")
                                         : QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(qRound(style.points * 300 / 72));
    font.setBold(style.bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

double SheetPainter::centered(double centerX, double y, const QString& text, const Style& style)
{
    const double width = QFontMetricsF(font(style)).horizontalAdvance(text) / kDotsPerMm;
    return line(centerX - width / 2, y, text, style);
}

double SheetPainter::line(double x, double y, const QString& text, const Style& style)
{
    const QFont lineFont = font(style);
    const QFontMetricsF metrics(lineFont);
    m_painter.setFont(lineFont);
    m_painter.setPen(style.color);
    m_painter.drawText(QPointF(px(x), px(y) + metrics.ascent()), text);
    return y + metrics.height() / kDotsPerMm;
}

double SheetPainter::paragraphs(double x, double y, double width, const QStringList& texts,
                                const Style& style, double leading)
{
    const QFont textFont = font(style);
    const double step = textFont.pixelSize() * leading;
    double top = px(y);
    m_painter.setPen(style.color);
    for (const QString& text : texts) {
        QTextLayout layout(text, textFont);
        layout.beginLayout();
        double below = 0;
        for (QTextLine textLine = layout.createLine(); textLine.isValid(); textLine = layout.createLine()) {
            textLine.setLineWidth(px(width));
            textLine.setPosition(QPointF(0, below));
            below += step;
        }
        layout.endLayout();
        layout.draw(&m_painter, QPointF(px(x), top));
        top += below;
    }
    return top / kDotsPerMm;
}

double SheetPainter::table(double x, double y, const QList<double>& columns, const QList<QStringList>& rows,
                           double rowHeight)
{
    m_painter.setPen(QPen(QColor(28, 28, 30), px(0.25)));
    for (const QStringList& row : rows) {
        const bool head = &row == &rows.first();
        m_painter.setFont(font({Face::Sans, 11, head}));
        double left = x;
        for (int column = 0; column < columns.size(); ++column) {
            const QRectF cell(px(left), px(y), px(columns.at(column)), px(rowHeight));
            m_painter.drawRect(cell);
            m_painter.drawText(cell, Qt::AlignCenter, row.value(column));
            left += columns.at(column);
        }
        y += rowHeight;
    }
    return y;
}

void SheetPainter::rule(double x1, double x2, double y, double thickness, const QColor& color)
{
    m_painter.fillRect(QRectF(px(x1), px(y), px(x2 - x1), px(thickness)), color);
}

void SheetPainter::seal(double centerX, double centerY, double radius, const QString& text)
{
    m_painter.save();
    m_painter.setCompositionMode(QPainter::CompositionMode_Multiply); // ink over the print below it
    m_painter.translate(px(centerX), px(centerY));
    m_painter.setPen(QPen(kSealRed, px(1.1)));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawEllipse(QPointF(0, 0), px(radius), px(radius));

    QPainterPath star;
    for (int corner = 0; corner < 10; ++corner) {
        const double reach = px(radius) * (corner % 2 ? 0.13 : 0.34);
        const double angle = qDegreesToRadians(-90.0 + corner * 36.0);
        const QPointF point(reach * qCos(angle), reach * qSin(angle));
        corner ? star.lineTo(point) : star.moveTo(point);
    }
    m_painter.fillPath(star, kSealRed);

    m_painter.setFont(font({Face::Serif, radius * 0.85, true}));
    const double spread = 250.0;
    for (int place = 0; place < text.size(); ++place) {
        m_painter.save();
        m_painter.rotate(-spread / 2 + spread * place / (text.size() - 1));
        m_painter.drawText(QRectF(-px(radius), -px(radius * 0.96), px(2 * radius), px(radius * 0.4)),
                           Qt::AlignHCenter | Qt::AlignTop, text.mid(place, 1));
        m_painter.restore();
    }
    m_painter.restore();
}

QImage SheetPainter::finish()
{
    m_painter.end();
    return m_image;
}
