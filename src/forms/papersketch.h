// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSizeF>
#include <QWidget>

// An A4 scan with the piece that is cut out of it.
class PaperSketch : public QWidget
{
    Q_OBJECT
public:
    explicit PaperSketch(QWidget* parent = nullptr);

    // Millimetres; an empty size: the scan is left whole.
    void setCut(const QSizeF& cut, bool topLeft);
    QSize sizeHint() const override { return {200, 240}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSizeF m_cut;
    bool m_topLeft = true;
};
