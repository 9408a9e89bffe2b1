// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/wordelements.h"

#include <QUuid>

namespace {

QString margined(const QString& left, const QString& top, const QString& width, const QString& height)
{
    return QStringLiteral("position:absolute;margin-left:%1;margin-top:%2;width:%3;height:%4;z-index:1")
        .arg(left, top, width, height);
}

QString placed(const QString& left, const QString& top, const QString& width, const QString& height)
{
    return QStringLiteral("position:absolute;left:%1;top:%2;width:%3;height:%4;z-index:1")
        .arg(left, top, width, height);
}

// XML knows no control characters but these three, not even escaped ones.
QString allowedText(const QString& text)
{
    QString allowed;
    for (const QChar c : text)
        if (c >= QLatin1Char(' ')
                ? c != QChar(0xFFFE) && c != QChar(0xFFFF)
                : c == QLatin1Char('\t') || c == QLatin1Char('\n') || c == QLatin1Char('\r'))
            allowed += c;
    return allowed;
}

QString withoutWhiteSpace(const QString& text)
{
    QString out;
    for (const QChar c : text)
        if (!c.isSpace())
            out += c;
    return out;
}

} // namespace

QDomElement WordElements::element(const QString& name, const Attributes& attributes) const
{
    QDomElement made = m_document.createElement(name);
    for (const auto& [attribute, value] : attributes)
        made.setAttribute(attribute, value);
    return made;
}

QDomElement WordElements::add(QDomElement& parent, const QString& name, const Attributes& attributes) const
{
    QDomElement made = element(name, attributes);
    parent.appendChild(made);
    return made;
}

void WordElements::getDocXMLHeader()
{
    const auto instruction = [this](const QString& target, const QString& data) {
        m_document.appendChild(m_document.createProcessingInstruction(target, data));
    };
    instruction(QStringLiteral("xml"), QStringLiteral("version=\"1.0\" encoding=\"UTF-8\""));
    instruction(QStringLiteral("mso-application"), QStringLiteral("progid=\"Word.Document\""));
}

QDomElement WordElements::getWordroot()
{
    QDomElement root =
        element("w:wordDocument",
                {{"xmlns:w", "http://schemas.microsoft.com/office/word/2003/wordml"},
                 {"xmlns:v", "urn:schemas-microsoft-com:vml"},
                 {"xmlns:w10", "urn:schemas-microsoft-com:office:word"},
                 {"xmlns:sl", "http://schemas.microsoft.com/schemaLibrary/2003/core"},
                 {"xmlns:aml", "http://schemas.microsoft.com/aml/2001/core"},
                 {"xmlns:wx", "http://schemas.microsoft.com/office/word/2003/auxHint"},
                 {"xmlns:o", "urn:schemas-microsoft-com:office:office"},
                 {"xmlns:dt", QStringLiteral("uuid:") + QUuid::createUuid().toString(QUuid::WithoutBraces)},
                 {"xml:space", "preserve"}});
    m_document.appendChild(root);
    add(root, "w:defaultFonts",
        {{"w:ascii", "Times New Roman"},
         {"w:fareast", QStringLiteral("宋体")},
         {"w:h-ansi", "Times New Roman"},
         {"w:cs", "Times New Roman"}});
    QDomElement properties = add(root, "w:docPr");
    add(properties, "w:view", {{"w:val", "print"}});
    add(properties, "w:zoom", {{"w:percent", "100"}});
    add(root, "w:body");
    return root;
}

QDomElement WordElements::addShape(QDomElement& pict, const QString& style) const
{
    return add(pict, "v:shape", {{"style", style}, {"stroked", "f"}});
}

// Fills an empty paragraph with a text box and returns the box's content.
QDomElement WordElements::textBox(QDomElement& paragraph, const QString& style) const
{
    QDomElement run = add(paragraph, "w:r");
    QDomElement pict = add(run, "w:pict");
    QDomElement shape = addShape(pict, style);
    QDomElement box = add(shape, "v:textbox", {{"inset", "0,0,0,0"}});
    return add(box, "w:txbxContent");
}

void WordElements::addRun(QDomElement& paragraph, const QString& text, const QString& fontSize) const
{
    QDomElement run = add(paragraph, "w:r");
    QDomElement properties = add(run, "w:rPr");
    add(properties, "w:sz", {{"w:val", fontSize}});
    add(run, "w:t").appendChild(m_document.createTextNode(allowedText(text)));
}

QDomElement WordElements::getP(const QString& left, const QString& top, const QString& width,
                               const QString& height, const QString& text, const QString& fontSize)
{
    QDomElement paragraph = element("w:p");
    QDomElement content = textBox(paragraph, margined(left, top, width, height));
    QDomElement line = add(content, "w:p");
    addRun(line, text, fontSize);
    return paragraph;
}

QDomElement WordElements::getPs(const QString& left, const QString& top, const QString& width,
                                const QString& height, const QStringList& lines, const QString& fontSize,
                                int lineSpacing)
{
    QDomElement paragraph = element("w:p");
    QDomElement content = textBox(paragraph, placed(left, top, width, height));
    for (const QString& text : lines) {
        QDomElement line = add(content, "w:p");
        QDomElement properties = add(line, "w:pPr");
        add(properties, "w:spacing", {{"w:line", QString::number(lineSpacing)}, {"w:line-rule", "exact"}});
        addRun(line, withoutWhiteSpace(text), fontSize);
    }
    return paragraph;
}

QDomElement WordElements::getPpict(const QString& left, const QString& top, const QString& width,
                                   const QString& height, const QString& name, const QString& base64Data)
{
    QDomElement paragraph = element("w:p");
    QDomElement run = add(paragraph, "w:r");
    QDomElement pict = add(run, "w:pict");
    add(pict, "w:binData", {{"w:name", name}, {"xml:space", "preserve"}})
        .appendChild(m_document.createTextNode(base64Data));
    QDomElement shape = addShape(pict, placed(left, top, width, height));
    add(shape, "v:imagedata", {{"src", name}});
    return paragraph;
}

QDomElement WordElements::getPpages()
{
    QDomElement paragraph = element("w:p");
    QDomElement properties = add(paragraph, "w:pPr");
    add(properties, "w:widowControl");
    add(properties, "w:jc", {{"w:val", "left"}});
    QDomElement mark = add(properties, "w:rpr");
    add(mark, "w:rFonts", {{"w:hint", "fareast"}});
    add(mark, "w:sz", {{"w:val", "6"}});
    add(mark, "w:sz-cs", {{"w:val", "4"}});
    QDomElement run = add(paragraph, "w:r");
    QDomElement small = add(run, "w:rpr");
    add(small, "w:sz", {{"w:val", "6"}});
    add(small, "w:sz-cs", {{"w:val", "4"}});
    add(run, "w:br", {{"w:type", "page"}});
    return paragraph;
}

QDomElement WordElements::section()
{
    QDomElement made = element("w:sectPr");
    add(made, "w:pgSz", {{"w:w", "11900"}, {"w:h", "16840"}});
    add(made, "w:pgMar",
        {{"w:top", "0.0"},
         {"w:right", "0.0"},
         {"w:bottom", "0.0"},
         {"w:left", "0.0"},
         {"w:header", "0"},
         {"w:footer", "0"},
         {"w:gutter", "0"}});
    add(made, "w:cols", {{"w:space", "452"}});
    add(made, "w:docGrid", {{"w:type", "lines"}, {"w:line-pitch", "312"}});
    return made;
}
