// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// Finished pages on their way from the pipeline into a document.

// A finished page and the scanned page files that it was made of.
struct DocumentPage
{
    QString file;
    QStringList sources; // with several finished pages of one source: at the last of them
};

QStringList filesOf(const QVector<DocumentPage>& pages);
QStringList sourcesOf(const QVector<DocumentPage>& pages);
// The scans that these finished pages were made of: all that is left of a page whose file is damaged.
QStringList scansOf(const QVector<DocumentPage>& pages, const QStringList& files);
// Pumps events meanwhile: hundreds of scans of 25 MB take seconds.
void removeFiles(const QStringList& files);

// Moves the pages of a document that could not be written to tempfiles/failed-NAME/ (with a free suffix) and
// returns that folder, without a trailing "/". A page that cannot be moved stays where it is.
QString keepFailedPages(const QStringList& files, const QString& baseName);

// Removes what an interrupted batch has left of pages between pipeline and document; their scanned pages are
// still there.
void removeStalePages();

// Base name "page-0001" of a finished page, by its number in the batch.
QString pageBaseName(int number);
