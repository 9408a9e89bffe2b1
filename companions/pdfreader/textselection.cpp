// SPDX-License-Identifier: GPL-3.0-or-later
#include "textselection.h"

#include <algorithm>

namespace reader {

void TextSelection::clear()
{
    *this = {};
}

void TextSelection::start(int page, const PageTextPtr& text, QPointF place)
{
    m_page = page;
    m_text = text;
    m_anchor = m_end = text->boundaryAt(place);
}

void TextSelection::extend(QPointF place)
{
    if (m_text)
        m_end = m_text->boundaryAt(place);
}

void TextSelection::select(int page, const PageTextPtr& text, TextRange range)
{
    m_page = page;
    m_text = text;
    m_anchor = range.begin;
    m_end = range.end;
}

void TextSelection::selectAll(int page, const PageTextPtr& text)
{
    select(page, text, {0, text->text().size()});
}

TextRange TextSelection::range() const
{
    return {std::min(m_anchor, m_end), std::max(m_anchor, m_end)};
}

QVector<QRectF> TextSelection::areas() const
{
    return m_text ? m_text->areas(range()) : QVector<QRectF>();
}

QString TextSelection::text() const
{
    QString text = m_text ? m_text->text(range()) : QString();
    while (text.endsWith('\n'))
        text.chop(1);
    return text;
}

} // namespace reader
