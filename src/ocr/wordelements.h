// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDomDocument>
#include <QString>
#include <QStringList>

// The elements of a Word 2003 XML document. Positions and sizes are numbers without a unit.
class WordElements
{
public:
    explicit WordElements(QDomDocument& document) : m_document(document) {}

    // The two processing instructions.
    void getDocXMLHeader();

    // The root with its namespaces, the default fonts, the view and the empty body.
    QDomElement getWordroot();

    // A text box of one line. `fontSize` in half-points.
    QDomElement getP(const QString& left, const QString& top, const QString& width, const QString& height,
                     const QString& text, const QString& fontSize);

    // A text box of several lines; white space in them is removed. `lineSpacing` in twips.
    QDomElement getPs(const QString& left, const QString& top, const QString& width, const QString& height,
                      const QStringList& lines, const QString& fontSize, int lineSpacing);

    // A picture; `name` is its address within the document ("wordml://...jpg").
    QDomElement getPpict(const QString& left, const QString& top, const QString& width, const QString& height,
                         const QString& name, const QString& base64Data);

    // A page break.
    QDomElement getPpages();

    // Page size and margins; the last element of the body.
    QDomElement section();

private:
    using Attributes = QList<QPair<QString, QString>>;

    QDomElement element(const QString& name, const Attributes& attributes = {}) const;
    QDomElement add(QDomElement& parent, const QString& name, const Attributes& attributes = {}) const;
    QDomElement addShape(QDomElement& pict, const QString& style) const;
    QDomElement textBox(QDomElement& paragraph, const QString& style) const;
    void addRun(QDomElement& paragraph, const QString& text, const QString& fontSize) const;

    QDomDocument& m_document;
};
