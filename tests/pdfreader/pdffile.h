// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QColor>
#include <QList>
#include <QSize>
#include <QString>

// A PDF file written object by object, so that a test knows where each character stands and can break what it
// wants.
class PdfFile
{
public:
    struct Text
    {
        double x, y; // points from the top left corner of the page; y: the base line
        QString text;
        double size = 12; // every character is this wide
    };

    PdfFile();
    int add(const QByteArray& object); // returns its number
    int addStream(const QByteArray& dictionary, const QByteArray& data);
    void addPage(QSize points, const QByteArray& content, const QByteArray& more = {});
    void addTextPage(const QList<Text>& texts, QSize points = {595, 842}, const QByteArray& more = {});
    void addColourPage(const QColor& colour, QSize points = {595, 842});
    // A page that is filled by an image with the given filter, which need not fit the data.
    void addImagePage(const QByteArray& filter, const QByteArray& data, QSize pixels);
    void addBadPage(); // its object is missing
    // One entry that opens a page, with one entry below it that opens the middle of another page.
    void setOutline(const QString& title, int page, const QString& below, int belowPage);

    QByteArray bytes() const;
    bool save(const QString& file) const;

private:
    int m_font;
    int m_pages = 0; // the object of the page tree
    QList<QByteArray> m_objects;
    QList<int> m_kids;
    QByteArray m_catalogMore;
};
