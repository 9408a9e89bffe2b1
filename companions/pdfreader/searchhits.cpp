// SPDX-License-Identifier: GPL-3.0-or-later
#include "searchhits.h"

namespace reader {

void SearchHits::clear()
{
    *this = {};
}

void SearchHits::add(const QVector<SearchHit>& hits)
{
    if (hits.isEmpty())
        return;
    m_hits.insert(hits.first().page, hits);
    m_count += hits.size();
}

void SearchHits::startAt(int page)
{
    auto found = m_hits.lowerBound(page);
    if (found == m_hits.end())
        found = m_hits.begin();
    m_page = found == m_hits.end() ? -1 : found.key();
    m_index = found == m_hits.end() ? -1 : 0;
}

bool SearchHits::step(bool forward)
{
    auto found = m_hits.find(m_page);
    if (found == m_hits.end())
        return false;
    m_index += forward ? 1 : -1;
    if (m_index >= 0 && m_index < found->size())
        return true;
    if (forward) {
        if (++found == m_hits.end())
            found = m_hits.begin();
    } else {
        if (found == m_hits.begin())
            found = m_hits.end();
        --found;
    }
    m_page = found.key();
    m_index = forward ? 0 : int(found->size()) - 1;
    return true;
}

int SearchHits::number() const
{
    if (m_page < 0)
        return 0;
    int before = 0;
    for (auto it = m_hits.begin(); it != m_hits.end() && it.key() < m_page; ++it)
        before += it->size();
    return before + m_index + 1;
}

const SearchHit* SearchHits::current() const
{
    const auto found = m_hits.constFind(m_page);
    return found == m_hits.constEnd() ? nullptr : &(*found)[m_index];
}

const QVector<SearchHit>& SearchHits::onPage(int page) const
{
    static const QVector<SearchHit> none;
    const auto found = m_hits.constFind(page);
    return found == m_hits.constEnd() ? none : *found;
}

} // namespace reader
