// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>
#include <string>

class QPDF;

namespace imageconvert {

// What a document says about itself.
struct DocumentInfo
{
    QString title;
    QString author = QStringLiteral("ZARN-QWD200");
    QString creator = QStringLiteral("ZARN-QWD200Vintrel");
    QDateTime created = QDateTime::currentDateTime();

    std::string pdfDate() const; // D:YYYYMMDDHHmmSS+08'00'
    std::string xmp() const;     // the same values as an XMP packet, UTF-8
};

// Writes it into a PDF: as the information dictionary for old readers, as XMP for new ones.
void describePdf(QPDF& pdf, const DocumentInfo& about);

// Without the characters that XML 1.0 cannot hold (file names may have them).
QString xmlText(const QString& text);

} // namespace imageconvert
