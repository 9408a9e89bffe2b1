// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QMetaType>
#include <QSizeF>
#include <QString>
#include <QVector>
#include <memory>
#include <poppler-qt5.h>
#include <vector>

namespace reader {

struct OutlineEntry
{
    QString title;
    int page = -1;  // from 0; -1: leads nowhere
    double top = 0; // of the target page's height, 0 (its top edge) to 1
    std::vector<OutlineEntry> children;
};

// What the window needs to know of a document, as plain values that any thread may keep.
struct DocumentInfo
{
    QString file;
    QVector<QSizeF> pages; // as shown (turned), in points (1/72 inch); a page that cannot be read has A4
    std::vector<OutlineEntry> outline;
    bool repaired = false; // the file's index was broken and has been found anew
    bool mayCopy = true;
    bool mayPrint = true;
};

enum class OpenResult
{
    Opened,
    PasswordNeeded,
    Failed
};

// One PDF file. The library's documents belong to one thread, so this belongs to the worker.
class Document
{
    Q_DECLARE_TR_FUNCTIONS(reader::Document)
public:
    // PasswordNeeded also after a wrong password. A failure leaves no document open.
    OpenResult open(const QString& file, const QString& password);
    QString problem() const { return m_problem; } // why the last opening failed, for the user

    const DocumentInfo& info() const { return m_info; }
    std::unique_ptr<Poppler::Page> page(int index) const; // null: damaged or outside

private:
    static QString faultOfFile(const QString& file);
    OpenResult load(const QString& file, const QString& password);
    void readInfo(const QString& file);

    std::unique_ptr<Poppler::Document> m_document;
    DocumentInfo m_info;
    QString m_problem;
};

} // namespace reader

Q_DECLARE_METATYPE(reader::DocumentInfo)
