// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documentworker.h"

#include <QMap>

namespace reader {

// The places that a search has found so far, in the order of the document, and the one among them that is
// shown.
class SearchHits
{
public:
    void clear();
    void add(const QVector<SearchHit>& hits); // of one page
    bool step(bool forward); // to the next one, from the last to the first; false when there is none
    // The first one on the page or behind it becomes the current one; the very first when there is none.
    void startAt(int page);

    int count() const { return m_count; }
    int number() const; // of the current one, from 1; 0: none
    const SearchHit* current() const;
    const QVector<SearchHit>& onPage(int page) const;
    bool isCurrent(int page, int index) const { return page == m_page && index == m_index; }

private:
    QMap<int, QVector<SearchHit>> m_hits;
    int m_count = 0;
    int m_page = -1, m_index = -1;
};

} // namespace reader
