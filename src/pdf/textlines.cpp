// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/textlines.h"

#include "pdf/ofdunits.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

// One line of text: what would break a line or a record becomes a blank, one for one, so that the spans of
// the characters stay in step.
QString oneLine(const std::string& utf8)
{
    QString text = QString::fromUtf8(utf8.data(), static_cast<int>(utf8.size()));
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
            character == QChar::ParagraphSeparator)
            character = ' ';
    }
    return text;
}

// Height of the baseline above the lower edge of a box that fits the ink of `text`, as a share of the box's
// height, about as the usual Song and Hei fonts have it. Commas, brackets and some letters reach a fifth
// below it, Chinese characters a tenth; other letters and digits stand on it.
double depthBelowBaseline(const QString& text)
{
    const QString deep = QStringLiteral("gjpqy,;()[]{}@$|Q，；（）【】《》");
    if (std::any_of(text.begin(), text.end(), [&](QChar c) { return deep.contains(c); }))
        return 0.2;
    const bool ascii = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
    return ascii ? 0 : 0.1;
}

// The smallest x whose drawnLeft() is `left`.
int recordX(int left)
{
    return (left * 5 + 3) / 4;
}

// Share of a line's width that a character takes.
double shareOf(uint character)
{
    return character < 0x80 ? 0.5 : 1;
}

double sharesOf(const QVector<uint>& characters)
{
    return std::accumulate(characters.begin(), characters.end(), 0.0,
                           [](double sum, uint character) { return sum + shareOf(character); });
}

// Each value replaced by the median of its neighbourhood.
std::vector<double> smoothed(const std::vector<double>& values)
{
    constexpr std::ptrdiff_t kReach = 3;
    std::vector<double> result;
    for (auto at = values.begin(); at != values.end(); ++at) {
        std::vector<double> around(at - std::min(kReach, at - values.begin()),
                                   at + std::min(kReach + 1, values.end() - at));
        const auto middle = around.begin() + static_cast<std::ptrdiff_t>(around.size() / 2);
        std::nth_element(around.begin(), middle, around.end());
        result.push_back(*middle);
    }
    return result;
}

// Advances in pixels between the characters of a line, from where each of them stands. The engine is often
// wrong by half a character about a single one, even more at its edges. So what counts is how far the middles
// are, over some characters, from an even line.
std::vector<double> advancesOf(const QVector<uint>& characters, const std::vector<SymbolSpan>& symbols)
{
    const double unit = std::max(0, symbols.back().right - symbols.front().left) / sharesOf(characters);
    std::vector<double> even{0};
    std::vector<double> offsets;
    for (int i = 0; i < characters.size(); ++i) {
        const double width = unit * shareOf(characters[i]);
        const SymbolSpan& symbol = symbols[static_cast<size_t>(i)];
        offsets.push_back((symbol.left + symbol.right - width) / 2 - even.back());
        even.push_back(even.back() + width);
    }
    offsets = smoothed(offsets);
    std::vector<double> advances;
    for (size_t i = 1; i < offsets.size(); ++i)
        advances.push_back(std::max(0.0, even[i] + offsets[i] - even[i - 1] - offsets[i - 1]));
    return advances;
}

// The same without that knowledge: the line's width shared out, half a share to an ASCII character.
std::vector<double> sharedAdvances(const QVector<uint>& characters, int width)
{
    const double unit = width / sharesOf(characters);
    std::vector<double> advances;
    for (const uint character : characters)
        advances.push_back(unit * shareOf(character));
    if (!advances.empty())
        advances.pop_back();
    return advances;
}

// `mmPerPixel` along the line.
QString deltaX(const BoxText& line, const QString& text, double mmPerPixel)
{
    const QVector<uint> characters = text.toUcs4();
    const bool known = line.symbols.size() == static_cast<size_t>(characters.size());
    QStringList values;
    for (const double advance :
         known ? advancesOf(characters, line.symbols) : sharedAdvances(characters, line.box.width))
        values.append(QString::number(advance * mmPerPixel, 'f', 2));
    return values.join(' ');
}

bool isText(const BoxText& line)
{
    return line.confidence > kTextConfidence && !line.text.empty();
}

int scaled(int value, double factor)
{
    return static_cast<int>(std::lround(value * factor));
}

} // namespace

int drawnLeft(int x)
{
    return x * 4 / 5; // x * 0.8 without its rounding error
}

QMap<int, zarnPDFLINERET> pdfTextLines(const PageText& page, const QSize& paper)
{
    // A scan is often some pixels larger than its paper; that is no reason to shrink it.
    constexpr double kTolerance = 1.02;
    double scale = 1;
    if (page.size.width() > paper.width() * kTolerance || page.size.height() > paper.height() * kTolerance)
        scale =
            std::min(double(paper.width()) / page.size.width(), double(paper.height()) / page.size.height());
    QMap<int, zarnPDFLINERET> lines;
    for (const BoxText& line : page.lines) {
        const QString text = oneLine(line.text).section(',', 0, 0);
        if (!isText(line) || text.isEmpty())
            continue;
        const cv::Rect& box = line.box;
        const double baseline = box.y + box.height * (1 - depthBelowBaseline(text));
        zarnPDFLINERET& record = lines[line.number];
        record.number = line.number;
        record.x = recordX(std::max(0, scaled(box.x, scale)));
        record.baseline = static_cast<int>(std::lround(baseline * scale));
        record.width = scaled(box.width, scale);
        record.height = scaled(box.height, scale);
        record.confidence = line.confidence;
        record.text = text;
    }
    return lines;
}

QMap<int, zarnOFDLINERET> ofdTextLines(const PageText& page, int pageWidthMm)
{
    QMap<int, zarnOFDLINERET> lines;
    if (page.size.isEmpty())
        return lines;
    const double across = double(kOfdFrameWidth) / page.size.width();
    const double down = double(kOfdFrameHeight) / page.size.height();
    for (const BoxText& line : page.lines) {
        if (!isText(line))
            continue;
        zarnOFDLINERET record;
        record.number = line.number;
        record.left = scaled(line.box.x, across);
        record.top = scaled(line.box.y, down);
        record.width = scaled(line.box.width, across);
        record.height = scaled(line.box.height, down);
        record.confidence = line.confidence;
        record.text = oneLine(line.text);
        record.deltaX = deltaX(line, record.text, double(pageWidthMm) / page.size.width());
        lines.insert(lines.size(), record);
    }
    return lines;
}
