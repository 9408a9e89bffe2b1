// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/documenttext.h"

#include <QCoreApplication>
#include <QFile>
#include <QXmlStreamReader>

namespace {

QStringList wordText(QFile& file)
{
    const QString picture = QCoreApplication::translate("documentText", "［图片］") + QLatin1Char('\n');
    QStringList pages{QString()};
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.qualifiedName() == QLatin1String("w:t"))
            pages.last() += xml.readElementText() + QLatin1Char('\n');
        else if (xml.qualifiedName() == QLatin1String("v:imagedata"))
            pages.last() += picture;
        else if (xml.qualifiedName() == QLatin1String("w:br"))
            pages << QString();
    }
    return pages;
}

} // namespace

QStringList documentText(const QString& file)
{
    QFile document(file);
    if (!document.open(QIODevice::ReadOnly))
        return {};
    if (file.endsWith(QLatin1String(".txt")))
        return {QString::fromUtf8(document.readAll())};
    return wordText(document);
}
