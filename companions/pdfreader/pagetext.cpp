// SPDX-License-Identifier: GPL-3.0-or-later
#include "pagetext.h"

#include <QLineF>
#include <algorithm>
#include <limits>
#include <poppler-qt5.h>

namespace reader {
namespace {

// A blank is as wide as the gap that this part of the writing's height leaves.
constexpr double kBlankOfHeight = 0.7;

double distance(const QRectF& box, QPointF place)
{
    const double dx = std::max({box.left() - place.x(), 0.0, place.x() - box.right()});
    const double dy = std::max({box.top() - place.y(), 0.0, place.y() - box.bottom()});
    return QLineF(0, 0, dx, dy).length();
}

// A run of words that the library takes for a line. Where characters stand wide apart it takes the parts of
// one line for columns.
struct Piece
{
    std::vector<const Poppler::TextBox*> words;
    QRectF box;

    void add(const Poppler::TextBox* word)
    {
        words.push_back(word);
        box |= word->boundingBox();
    }
    // A part of the same line of Chinese, not farther away than a blank. Real columns have more between them.
    bool goesOnIn(const Piece& next) const
    {
        const double height = std::min(box.height(), next.box.height());
        const double shared = std::min(box.bottom(), next.box.bottom()) - std::max(box.top(), next.box.top());
        const double gap = next.box.left() - box.right();
        return shared > 0.6 * height && gap > -0.3 * height && gap < 1.6 * height &&
               (isIdeographic(words.back()->text().back().unicode()) ||
                isIdeographic(next.words.front()->text().front().unicode()));
    }
};

std::vector<Piece> joined(std::vector<Piece> pieces)
{
    for (size_t i = 0; i < pieces.size(); ++i) {
        for (size_t j = 0; j < pieces.size(); ++j) {
            if (i == j || pieces[i].words.empty() || pieces[j].words.empty() ||
                !pieces[i].goesOnIn(pieces[j]))
                continue;
            for (const Poppler::TextBox* word : pieces[j].words)
                pieces[i].add(word);
            pieces[j].words.clear();
            j = size_t(-1); // the longer line may go on in one that was passed
        }
    }
    return pieces;
}

std::vector<Piece> piecesOf(const std::vector<std::unique_ptr<Poppler::TextBox>>& words)
{
    std::vector<Piece> pieces;
    bool open = false;
    for (const auto& word : words) {
        if (word->text().isEmpty())
            continue;
        if (!open)
            pieces.emplace_back();
        pieces.back().add(word.get());
        open = word->nextWord() != nullptr;
    }
    return pieces;
}

std::vector<PageLink> readLinks(const Poppler::Page& page)
{
    std::vector<PageLink> links;
    const QSizeF size = page.pageSizeF();
    const QList<Poppler::Link*> all = page.links();
    const std::vector<std::unique_ptr<Poppler::Link>> owned(all.begin(), all.end());
    for (const auto& link : owned) {
        PageLink found;
        const QRectF part = link->linkArea().normalized(); // of the page's size
        found.area = QRectF(part.x() * size.width(), part.y() * size.height(), part.width() * size.width(),
                            part.height() * size.height());
        if (const auto* inside = dynamic_cast<const Poppler::LinkGoto*>(link.get())) {
            if (inside->isExternal())
                continue;
            const Poppler::LinkDestination target = inside->destination();
            found.page = target.pageNumber() - 1;
            found.top = target.isChangeTop() ? qBound(0.0, target.top(), 1.0) : 0;
        } else if (const auto* outside = dynamic_cast<const Poppler::LinkBrowse*>(link.get())) {
            found.url = outside->url();
        }
        if (found.page >= 0 || !found.url.isEmpty())
            links.push_back(found);
    }
    return links;
}

} // namespace

bool isIdeographic(uint c)
{
    return (c >= 0x2E80 && c <= 0x9FFF) || (c >= 0xAC00 && c <= 0xD7AF) || (c >= 0xF900 && c <= 0xFAFF) ||
           (c >= 0xFE30 && c <= 0xFE4F) || (c >= 0xFF00 && c <= 0xFFEF) || (c >= 0x20000 && c <= 0x3FFFF);
}

std::shared_ptr<const PageText> PageText::read(const Poppler::Page& page)
{
    auto text = std::make_shared<PageText>();
    const QList<Poppler::TextBox*> all = page.textList();
    const std::vector<std::unique_ptr<Poppler::TextBox>> words(all.begin(), all.end());
    for (const Piece& piece : joined(piecesOf(words))) {
        for (const Poppler::TextBox* word : piece.words) {
            QVector<QRectF> boxes;
            for (int i = 0; i < word->text().toUcs4().size(); ++i)
                boxes << word->charBoundingBox(i);
            text->addWord(word->text(), boxes);
            if (word->nextWord() == nullptr || word->hasSpaceAfter())
                text->addBlank();
        }
        text->endLine();
    }
    text->m_links = readLinks(page);
    return text;
}

int PageText::bytes() const
{
    return int(sizeof(*this)) + m_text.size() * int(sizeof(QChar) + sizeof(QRectF)) +
           m_lines.size() * int(sizeof(Line)) + int(m_links.size() * sizeof(PageLink));
}

bool PageText::blankCounts(const QRectF& next, uint character) const
{
    if (m_text.size() == m_lineBegin)
        return false;
    const uint before = m_text.back().isLowSurrogate() ? 0x20000 : m_text.back().unicode();
    const QRectF& last = m_boxes.back();
    return !isIdeographic(before) || !isIdeographic(character) ||
           next.left() - last.right() >= kBlankOfHeight * std::max(last.height(), next.height());
}

void PageText::addWord(const QString& word, const QVector<QRectF>& boxes)
{
    const QVector<uint> characters = word.toUcs4();
    if (characters.isEmpty())
        return;
    if (m_blankPending && blankCounts(boxes.value(0), characters[0])) {
        m_text += ' ';
        m_boxes << QRectF();
    }
    m_blankPending = false;
    for (int i = 0; i < characters.size(); ++i) {
        const QString units = QString::fromUcs4(&characters[i], 1);
        m_text += units;
        for (int unit = 0; unit < units.size(); ++unit)
            m_boxes << boxes.value(i);
    }
}

void PageText::addBlank()
{
    m_blankPending = true;
}

void PageText::endLine()
{
    m_blankPending = false;
    if (m_text.size() == m_lineBegin)
        return;
    Line line{m_lineBegin, m_text.size(), {}};
    for (int i = line.begin; i < line.end; ++i)
        line.box |= m_boxes[i];
    m_lines << line;
    m_text += '\n';
    m_boxes << QRectF();
    m_lineBegin = m_text.size();
}

const PageText::Line* PageText::lineAt(QPointF place) const
{
    const Line* nearest = nullptr;
    double least = std::numeric_limits<double>::max();
    for (const Line& line : m_lines) {
        const double far = distance(line.box, place);
        if (far < least) {
            least = far;
            nearest = &line;
        }
    }
    return nearest;
}

int PageText::boundaryAt(QPointF place) const
{
    const Line* line = lineAt(place);
    if (line == nullptr)
        return 0;
    if (place.y() < m_lines.front().box.top() && line == m_lines.begin())
        return 0;
    if (place.y() > line->box.bottom() && line == &m_lines.back())
        return line->end;
    int boundary = line->begin;
    for (int i = line->begin; i < line->end; ++i)
        if (!m_boxes[i].isNull() && place.x() > m_boxes[i].center().x())
            boundary = i + 1;
    return boundary;
}

bool PageText::hasTextAt(QPointF place) const
{
    return std::any_of(m_lines.begin(), m_lines.end(),
                       [&](const Line& line) { return line.box.contains(place); });
}

TextRange PageText::wordAt(QPointF place) const
{
    const Line* line = hasTextAt(place) ? lineAt(place) : nullptr;
    if (line == nullptr)
        return {};
    const auto kind = [this](int i) {
        const QChar c = m_text[i];
        return !(c.isLetterOrNumber() || c.isSurrogate())      ? 0
               : isIdeographic(c.unicode()) || c.isSurrogate() ? 1
                                                               : 2;
    };
    for (int i = line->begin; i < line->end; ++i) {
        if (!m_boxes[i].contains(place))
            continue;
        TextRange word{i, i + 1};
        while (kind(i) != 0 && word.begin > line->begin && kind(word.begin - 1) == kind(i))
            --word.begin;
        while (kind(i) != 0 && word.end < line->end && kind(word.end) == kind(i))
            ++word.end;
        return word;
    }
    return {};
}

QVector<QRectF> PageText::areas(TextRange range) const
{
    QVector<QRectF> areas;
    for (const Line& line : m_lines) {
        QRectF area;
        for (int i = std::max(line.begin, range.begin); i < std::min(line.end, range.end); ++i)
            area |= m_boxes[i];
        if (!area.isEmpty())
            areas << area;
    }
    return areas;
}

QString PageText::text(TextRange range) const
{
    return m_text.mid(range.begin, range.end - range.begin);
}

} // namespace reader
