// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/documentinfo.h"

#include <QXmlStreamWriter>
#include <cstdlib>
#include <qpdf/QPDF.hh>

namespace imageconvert {

namespace {

const auto kRdf = QStringLiteral("http://www.w3.org/1999/02/22-rdf-syntax-ns#");
const auto kDc = QStringLiteral("http://purl.org/dc/elements/1.1/");
const auto kXmp = QStringLiteral("http://ns.adobe.com/xap/1.0/");
const auto kPdf = QStringLiteral("http://ns.adobe.com/pdf/1.3/");

void writeList(QXmlStreamWriter& xml, const QString& name, const QString& kind, const QString& value)
{
    xml.writeStartElement(kDc, name);
    xml.writeStartElement(kRdf, kind);
    xml.writeStartElement(kRdf, QStringLiteral("li"));
    if (kind == QLatin1String("Alt"))
        xml.writeAttribute(QStringLiteral("xml:lang"), QStringLiteral("x-default"));
    xml.writeCharacters(value);
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndElement();
}

} // namespace

std::string DocumentInfo::pdfDate() const
{
    const int minutes = created.offsetFromUtc() / 60;
    return "D:" + created.toString(QStringLiteral("yyyyMMddHHmmss")).toStdString() +
           QString::asprintf("%c%02d'%02d'", minutes < 0 ? '-' : '+', std::abs(minutes) / 60,
                             std::abs(minutes) % 60)
               .toStdString();
}

std::string DocumentInfo::xmp() const
{
    const QString date = created.toOffsetFromUtc(created.offsetFromUtc()).toString(Qt::ISODate);
    QByteArray body;
    QXmlStreamWriter xml(&body);
    xml.writeNamespace(QStringLiteral("adobe:ns:meta/"), QStringLiteral("x"));
    xml.writeStartElement(QStringLiteral("adobe:ns:meta/"), QStringLiteral("xmpmeta"));
    xml.writeNamespace(kRdf, QStringLiteral("rdf"));
    xml.writeStartElement(kRdf, QStringLiteral("RDF"));
    xml.writeNamespace(kDc, QStringLiteral("dc"));
    xml.writeNamespace(kXmp, QStringLiteral("xmp"));
    xml.writeNamespace(kPdf, QStringLiteral("pdf"));
    xml.writeStartElement(kRdf, QStringLiteral("Description"));
    xml.writeAttribute(kRdf, QStringLiteral("about"), QString());
    xml.writeTextElement(kDc, QStringLiteral("format"), QStringLiteral("application/pdf"));
    writeList(xml, QStringLiteral("title"), QStringLiteral("Alt"), xmlText(title));
    writeList(xml, QStringLiteral("creator"), QStringLiteral("Seq"), author);
    xml.writeTextElement(kXmp, QStringLiteral("CreatorTool"), creator);
    xml.writeTextElement(kXmp, QStringLiteral("CreateDate"), date);
    xml.writeTextElement(kXmp, QStringLiteral("ModifyDate"), date);
    xml.writeTextElement(kPdf, QStringLiteral("Producer"), creator);
    xml.writeEndDocument();
    return "<?xpacket begin=\"\xef\xbb\xbf\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n" + body.toStdString() +
           "\n<?xpacket end=\"w\"?>";
}

void describePdf(QPDF& pdf, const DocumentInfo& about)
{
    using Object = QPDFObjectHandle;
    Object info = Object::newDictionary();
    info.replaceKey("/Title", Object::newUnicodeString(about.title.toStdString()));
    info.replaceKey("/Author", Object::newUnicodeString(about.author.toStdString()));
    info.replaceKey("/Creator", Object::newUnicodeString(about.creator.toStdString()));
    info.replaceKey("/Producer", Object::newUnicodeString(about.creator.toStdString()));
    info.replaceKey("/CreationDate", Object::newString(about.pdfDate()));
    info.replaceKey("/ModDate", Object::newString(about.pdfDate()));
    pdf.getTrailer().replaceKey("/Info", pdf.makeIndirectObject(info));
    Object metadata = Object::newStream(&pdf, about.xmp());
    metadata.getDict().replaceKey("/Type", Object::newName("/Metadata"));
    metadata.getDict().replaceKey("/Subtype", Object::newName("/XML"));
    pdf.getRoot().replaceKey("/Metadata", metadata);
}

QString xmlText(const QString& text)
{
    QString kept;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            kept += c;
            kept += text[++i];
        } else if (!c.isSurrogate() && (c >= QLatin1Char(' ') || c == QLatin1Char('\t')) &&
                   c.unicode() < 0xfffe) {
            kept += c;
        }
    }
    return kept;
}

} // namespace imageconvert
