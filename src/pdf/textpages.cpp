// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/textpages.h"

#include <QGlyphRun>
#include <QPageSize>
#include <QTextLayout>
#include <algorithm>

namespace {

constexpr int kDpi = 300;
constexpr QPageSize::PageSizeId kPapers[] = {QPageSize::A4, QPageSize::Letter, QPageSize::A5,
                                             QPageSize::JisB5, QPageSize::Legal};

// The characters that one or more glyphs show together: a letter with its accents, or a ligature.
struct Cluster
{
    QString characters;
    quint32 firstGlyph = 0;
    QPointF place;
    int glyphs = 0;
};

// The clusters of a line in drawing order. Asked character by character, the layout gives the first glyph of
// a ligature again for each of its letters; that tells where it ends.
std::vector<Cluster> clustersOf(const QTextLine& line, const QString& text)
{
    std::vector<Cluster> clusters;
    for (int i = 0; i < text.size();) {
        const int length = text.at(i).isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        Cluster next{text.mid(i, length), 0, {}, 0};
        for (const QGlyphRun& run : line.glyphRuns(i, length)) {
            if (run.glyphIndexes().isEmpty())
                continue;
            if (next.glyphs == 0) {
                next.firstGlyph = run.glyphIndexes().first();
                next.place = run.positions().first();
            }
            next.glyphs += run.glyphIndexes().size();
        }
        i += length;
        if (next.glyphs == 0) // not drawn: a joiner, a mark of direction
            continue;
        if (!clusters.empty() && clusters.back().firstGlyph == next.firstGlyph &&
            clusters.back().place == next.place) {
            clusters.back().characters += next.characters;
            clusters.back().glyphs = std::max(clusters.back().glyphs, next.glyphs);
        } else {
            clusters.push_back(next);
        }
    }
    return clusters;
}

} // namespace

TextPages::TextPages(const QString& file, int paperIndex)
{
    m_printer.setOutputFormat(QPrinter::PdfFormat);
    m_printer.setResolution(kDpi);
    constexpr int papers = sizeof kPapers / sizeof kPapers[0];
    if (paperIndex >= 0 && paperIndex < papers)
        m_printer.setPageSize(QPageSize(kPapers[paperIndex]));
    m_printer.setFullPage(true); // else places count from the printer's margins
    m_printer.setOutputFileName(file);
}

bool TextPages::begin()
{
    m_shown.emplace_back();
    return m_painter.begin(&m_printer);
}

bool TextPages::end()
{
    return m_painter.end();
}

QSize TextPages::paper() const
{
    return m_printer.pageLayout().fullRectPixels(kDpi).size();
}

void TextPages::draw(int x, int y, const QString& text)
{
    QTextLayout layout(text, m_painter.font(), &m_printer);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    for (const Cluster& cluster : clustersOf(line, text))
        m_shown.back().add(cluster.characters, cluster.glyphs);

    m_painter.save();
    const double room = paper().width() - x;
    if (room > 0 && line.naturalTextWidth() > room) { // readers drop what stands beside the sheet
        m_painter.translate(x, 0);
        m_painter.scale(room / line.naturalTextWidth(), 1);
        m_painter.translate(-x, 0);
    }
    m_painter.drawText(QPointF(x, y), text);
    m_painter.restore();
}

void TextPages::newPage()
{
    m_printer.newPage();
    m_shown.emplace_back();
}
