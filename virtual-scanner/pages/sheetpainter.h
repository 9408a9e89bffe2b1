// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPainter>
#include <QStringList>

// Draws one side of a sheet on white paper at 300 dpi. All lengths are millimetres from the top-left corner,
// font sizes are points.
class SheetPainter
{
public:
    enum class Face
    {
        Serif,
        Sans
    };
    struct Style
    {
        Face face = Face::Serif;
        double points = 12;
        bool bold = false;
        QColor color = QColor(28, 28, 30);
    };

    SheetPainter(double widthMm, double heightMm);

    // One line with its middle at `centerX`, or its start at `x`; `y` is its top. Returns the y below it.
    double centered(double centerX, double y, const QString& text, const Style& style);
    double line(double x, double y, const QString& text, const Style& style);
    // Paragraphs that wrap at `width`; returns the y below the last line.
    double paragraphs(double x, double y, double width, const QStringList& texts, const Style& style,
                      double leading = 1.7);
    // A ruled table; `columns` are widths. Returns the y below it.
    double table(double x, double y, const QList<double>& columns, const QList<QStringList>& rows,
                 double rowHeight);
    void rule(double x1, double x2, double y, double thickness, const QColor& color);
    // A round seal with a star and text along its rim.
    void seal(double centerX, double centerY, double radius, const QString& text);

    QImage finish(); // ends painting

private:
    double px(double mm) const;
    QFont font(const Style& style) const;

    QImage m_image;
    QPainter m_painter;
};
