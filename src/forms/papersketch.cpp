// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/papersketch.h"

#include <QPainter>

PaperSketch::PaperSketch(QWidget* parent) : QWidget(parent)
{
    setMinimumSize(sizeHint());
    setAccessibleName(tr("裁切位置示意图"));
}

void PaperSketch::setCut(const QSizeF& cut, bool topLeft)
{
    m_cut = cut;
    m_topLeft = topLeft;
    update();
}

void PaperSketch::paintEvent(QPaintEvent*)
{
    constexpr double margin = 6;
    const QSizeF a4(210, 297);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QSizeF size = a4.scaled(width() - 2 * margin, height() - 2 * margin, Qt::KeepAspectRatio);
    QRectF sheet(QPointF(), size);
    sheet.moveCenter(rect().center());
    painter.fillRect(sheet, QColor(225, 225, 225));
    QRectF cut = sheet;
    if (!m_cut.isEmpty()) {
        cut.setSize(m_cut * (size.width() / a4.width()));
        if (!m_topLeft)
            cut.moveCenter(sheet.center());
    }
    painter.fillRect(cut, Qt::white);
    painter.setPen(QPen(QColor(120, 120, 120), 1, Qt::DashLine));
    painter.drawRect(sheet);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(cut);
    painter.setPen(QColor(110, 110, 110));
    painter.drawText(sheet.adjusted(0, 0, -4, -2), Qt::AlignRight | Qt::AlignBottom, QStringLiteral("A4"));
}
