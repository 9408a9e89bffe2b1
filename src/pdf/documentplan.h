// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/documentpages.h"

#include <QVector>

// What becomes of the pages of a batch: which formats there are, which pages form a document.

// The items of the format lists.
enum class DocumentFormat
{
    Ofd = 0,
    Pdf = 1,
    SearchablePdf = 2,
    SearchableOfd = 3,
};

// "pdf" or "ofd", for an index of a format list; null for an index that no list has.
const char* documentType(int formatIndex);
// The pages' text instead of their pictures.
bool isSearchable(int formatIndex);

// The documents of a batch, in page order: one of all pages, or, when `split` is on and more pages than
// `splitCount` are there, documents of `splitCount` pages (of two pages when that is 0). None without pages.
QVector<QVector<DocumentPage>> groupPages(const QVector<DocumentPage>& pages, bool split, int splitCount);
