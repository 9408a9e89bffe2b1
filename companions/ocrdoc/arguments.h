// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

namespace companion {

enum class DocumentKind
{
    Text,
    Word,
    Pdf,
    Ofd
};

struct Request
{
    bool help = false;
    DocumentKind kind = DocumentKind::Text;
    int paperIndex = 0; // of a PDF, as the program's list of papers: 0 A4, 1 Letter, 2 A5, 3 B5, 4 Legal
    bool orient = false;
    QString out;        // the document
    QString reportFile; // "-": standard output; empty: none
    QStringList pages;
};

// The command line of ocrdoc.
class Arguments
{
    Q_DECLARE_TR_FUNCTIONS(Arguments)
public:
    explicit Arguments(const QStringList& words);

    const Request& request() const { return m_request; }
    QString error() const { return m_error; } // for the user; empty: well-formed
    static QString help();

private:
    void readKind(const QStringList& given);
    void readPaper(const QString& text);
    void checkWhole();
    void fail(const QString& message);

    Request m_request;
    QString m_error;
};

} // namespace companion
