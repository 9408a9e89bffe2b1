// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/documentplan.h"

const char* documentType(int formatIndex)
{
    switch (static_cast<DocumentFormat>(formatIndex)) {
    case DocumentFormat::Pdf:
    case DocumentFormat::SearchablePdf:
        return "pdf";
    case DocumentFormat::Ofd:
    case DocumentFormat::SearchableOfd:
        return "ofd";
    }
    return nullptr;
}

bool isSearchable(int formatIndex)
{
    return formatIndex >= static_cast<int>(DocumentFormat::SearchablePdf);
}

QVector<QVector<DocumentPage>> groupPages(const QVector<DocumentPage>& pages, bool split, int splitCount)
{
    constexpr int kDefaultChunk = 2;
    if (pages.isEmpty())
        return {};
    if (!split || splitCount >= pages.size())
        return {pages};
    const int chunk = splitCount > 0 ? splitCount : kDefaultChunk;
    QVector<QVector<DocumentPage>> documents;
    for (int first = 0; first < pages.size(); first += chunk)
        documents << pages.mid(first, chunk);
    return documents;
}
