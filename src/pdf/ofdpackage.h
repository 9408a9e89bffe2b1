// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pdf/textlines.h"

#include <QDate>
#include <QFile>
#include <QMap>
#include <QSize>
#include <QString>

// The XML parts of a text-only OFD document (GB/T 33190), written into a folder page by page. Each function
// returns false when a part could not be written; problem() then tells the user what and why.
class OfdPackage
{
public:
    // `folder` ends in "/"; `pageBox` in millimetres.
    OfdPackage(QString folder, const QSize& pageBox);

    bool begin(int pageCount, const QDate& today);
    // The next page. Lines keep their order; the text is written as it stands, only "<" becomes a blank.
    bool addPage(const QMap<int, zarnOFDLINERET>& lines);
    bool end();

    QString problem() const { return m_problem; }

private:
    bool makeFolder(const QString& path);
    bool open(QFile& file, const QString& path, const QString& head);
    bool write(QFile& file, const QString& text);
    bool close(QFile& file, const QString& tail);
    bool fail(const QString& path, const QString& reason);

    QString m_folder;
    QSize m_pageBox;
    QFile m_resources;
    QFile m_document;
    int m_pages = 0;
    QString m_problem;
};

// What an earlier run that was interrupted left in `folder` (ends in "/") is removed; afterwards the folder
// is marked as holding parts of ours. Returns what the user must know when the folder holds parts that are
// not ours or cannot be cleared; nothing is touched then. Empty: go on.
QString claimOfdFolder(const QString& folder);
