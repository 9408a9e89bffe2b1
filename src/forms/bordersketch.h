// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QWidget>

// A small A4 page with its painted rim. The rim is drawn wider than it is: a millimetre would be a hairline.
class BorderSketch : public QWidget
{
    Q_OBJECT
public:
    struct Border
    {
        bool inside = true; // else around the page
        double topMm = 0;   // top and bottom
        double leftMm = 0;  // left and right
        QColor color = Qt::white;
    };

    explicit BorderSketch(QWidget* parent = nullptr);

    void setBorder(const Border& border);
    QSize sizeHint() const override { return {200, 240}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Border m_border;
};
