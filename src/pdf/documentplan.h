// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "output/naming.h"

#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

// What becomes of the pages of a batch: which formats there are, which pages form a document, how documents
// are named, where the pages of a failed one go.

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

// A finished page and the scanned page files that it was made of.
struct DocumentPage
{
    QString file;
    QStringList sources; // with several finished pages of one source: at the last of them
};

// The documents of a batch, in page order: one of all pages, or, when `split` is on and more pages than
// `splitCount` are there, documents of `splitCount` pages (of two pages when that is 0). None without pages.
QVector<QVector<DocumentPage>> groupPages(const QVector<DocumentPage>& pages, bool split, int splitCount);

QStringList filesOf(const QVector<DocumentPage>& pages);
QStringList sourcesOf(const QVector<DocumentPage>& pages);

// Names the documents of one batch. GUI thread: the naming settings are read and the counter is written.
class DocumentNames
{
public:
    // `group`: "Scan_PDF". The rules and the counter are those of this moment.
    explicit DocumentNames(const QString& group);

    // Base name of document `index` (from 0): with user-defined names the prefix and `start` + index, else
    // the generated name. It is made a valid file name; where FOLDER/NAME.TYPE existed before the batch and
    // is not to be replaced, and where this batch has used the name, the next free suffix is added.
    QString next(int index, const QString& folder, const QString& type);
    // Continues the counter behind `documents` documents, if names are user-defined.
    void advance(int documents) const;

    const NamingRules& rules() const { return m_rules; }

private:
    QString baseName(int index) const;

    QString m_group;
    NamingRules m_rules;
    QSet<QString> m_used; // paths given out
};

// Moves the pages of a document that could not be written to tempfiles/failed-NAME/ (with a free suffix) and
// returns that folder, without a trailing "/". A page that cannot be moved stays where it is.
QString keepFailedPages(const QStringList& files, const QString& baseName);

// Removes what an interrupted batch has left of pages between pipeline and document; their scanned pages are
// still there.
void removeStalePages();

// Base name "page-0001" of a finished page, by its number in the batch.
QString pageBaseName(int number);
