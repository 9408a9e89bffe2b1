// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/spliticon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

namespace {

class SplitIconEngine : public QIconEngine
{
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor ink = QGuiApplication::palette().color(group, QPalette::ButtonText);
        const double unit = rect.height() / 20.0;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.center().x() + 0.5, rect.center().y() + 0.5);
        painter->scale(unit, unit);
        painter->setPen(QPen(ink, 1.2));
        painter->drawRect(QRectF(-9, -7, 6, 14));
        painter->drawRect(QRectF(3, -7, 6, 14));
        for (double y = -4; y <= 1; y += 2.5) {
            painter->drawLine(QPointF(-7.5, y), QPointF(-4.5, y));
            painter->drawLine(QPointF(4.5, y), QPointF(7.5, y));
        }
        painter->setPen(QPen(ink, 1.4, Qt::DotLine));
        painter->drawLine(QPointF(0, -9), QPointF(0, 9));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new SplitIconEngine; }
};

} // namespace

QIcon splitPageIcon()
{
    return QIcon(new SplitIconEngine); // the icon owns its engine
}
