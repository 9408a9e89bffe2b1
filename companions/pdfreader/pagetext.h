// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMetaType>
#include <QRectF>
#include <QString>
#include <QVector>
#include <memory>
#include <vector>

namespace Poppler {
class Page;
}

namespace reader {

// Places are points (1/72 inch) from the top left corner of the page as shown.
struct PageLink
{
    QRectF area;
    int page = -1;  // from 0; -1: the link is an address
    double top = 0; // of the target page's height
    QString url;
};

struct TextRange
{
    int begin = 0, end = 0; // UTF-16 units of the page's text
    bool isEmpty() const { return end <= begin; }
};

// Characters of Chinese, Japanese and Korean writing and their punctuation: between them no blanks are
// written.
bool isIdeographic(uint character);

// A page's text in reading order, each character with its place. Constant once it is read.
class PageText
{
public:
    // Lines end with '\n'. A gap between two Chinese characters counts as a blank only when another one would
    // have room in it: recognised text stands in boxes of one character each.
    static std::shared_ptr<const PageText> read(const Poppler::Page& page);

    const QString& text() const { return m_text; }
    const std::vector<PageLink>& links() const { return m_links; }
    int bytes() const;

    // The boundary between characters that is nearest to a place, 0 to the text's length.
    int boundaryAt(QPointF place) const;
    // The word (of Latin letters, or one run of Chinese characters without punctuation) at a place; empty
    // when there is none.
    TextRange wordAt(QPointF place) const;
    bool hasTextAt(QPointF place) const;
    // One box for each line of the range.
    QVector<QRectF> areas(TextRange range) const;
    QString text(TextRange range) const;

    void addWord(const QString& word,
                 const QVector<QRectF>& boxes); // one box for each character (code point)
    void addBlank();
    void endLine();

private:
    struct Line
    {
        int begin = 0, end = 0;
        QRectF box;
    };
    const Line* lineAt(QPointF place) const;
    bool blankCounts(const QRectF& next, uint character) const;

    QString m_text;
    QVector<QRectF> m_boxes; // one for each unit of the text
    QVector<Line> m_lines;
    std::vector<PageLink> m_links;
    int m_lineBegin = 0;
    bool m_blankPending = false;
};

using PageTextPtr = std::shared_ptr<const PageText>;

} // namespace reader

Q_DECLARE_METATYPE(reader::PageTextPtr)
