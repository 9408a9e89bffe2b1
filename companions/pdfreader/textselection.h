// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pagetext.h"

namespace reader {

// The text that is marked with the mouse: on one page, from where the button went down to where the pointer
// is.
class TextSelection
{
public:
    void clear();
    void start(int page, const PageTextPtr& text, QPointF place); // points
    void extend(QPointF place);                                   // may lie outside the page
    void select(int page, const PageTextPtr& text, TextRange range);
    void selectAll(int page, const PageTextPtr& text);

    int page() const { return m_page; } // -1: nothing was started
    bool isEmpty() const { return range().isEmpty(); }
    QVector<QRectF> areas() const;
    QString text() const; // without a line end at its end

private:
    TextRange range() const;

    PageTextPtr m_text;
    int m_page = -1;
    int m_anchor = 0, m_end = 0;
};

} // namespace reader
