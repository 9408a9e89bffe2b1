// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/paragraphs.h"

#include <QList>
#include <algorithm>
#include <cstdlib>

namespace {

constexpr double kMinOverlap = 0.8; // share of the narrower line
constexpr double kMaxIndent = 2.5;  // characters, a little more than two
constexpr double kHeightTolerance = 0.25;
constexpr double kMaxPitch = 1.4; // line heights
constexpr int kGrain = 4;         // boxes are measured on a copy that is 3.1 times smaller

struct Paragraph
{
    int number = 0; // of the first line
    zarnTXTLINERET record;
    zarnTXTLINERET last; // its last line
};

bool canJoin(const zarnTXTLINERET& line)
{
    return line.lines == 1 && line.height > 0 && line.text != doubtfulMarker();
}

bool follows(const Paragraph& paragraph, const zarnTXTLINERET& line)
{
    const zarnTXTLINERET& above = paragraph.last;
    if (!canJoin(above) || !canJoin(line) || line.y < above.y + above.height)
        return false;
    const int overlap = std::min(above.x + above.width, line.x + line.width) - std::max(above.x, line.x);
    if (overlap < kMinOverlap * std::min(above.width, line.width))
        return false;
    const int high = std::max(above.height, line.height), low = std::min(above.height, line.height);
    if (high - low > kHeightTolerance * high)
        return false;
    if (line.y - above.y > kMaxPitch * high + kGrain)
        return false;
    const int indent = above.x - line.x;
    return std::abs(indent) < high ||
           (paragraph.record.lines == 1 && indent > 0 && indent <= kMaxIndent * high);
}

void append(Paragraph& paragraph, const zarnTXTLINERET& line)
{
    zarnTXTLINERET& record = paragraph.record;
    const int right = std::max(record.x + record.width, line.x + line.width);
    record.x = std::min(record.x, line.x);
    record.width = right - record.x;
    record.height = line.y + line.height - record.y;
    record.confidence = std::min(record.confidence, line.confidence);
    record.lineHeight = line.height;
    record.text += QLatin1String(kLineJoint) + line.text;
    ++record.lines;
    paragraph.last = line;
}

} // namespace

QMap<int, zarnTXTLINERET> joinParagraphs(const QMap<int, zarnTXTLINERET>& lines)
{
    QList<Paragraph> paragraphs;
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        const auto above =
            std::find_if(paragraphs.begin(), paragraphs.end(),
                         [&](const Paragraph& paragraph) { return follows(paragraph, line.value()); });
        if (above != paragraphs.end())
            append(*above, line.value());
        else
            paragraphs << Paragraph{line.key(), line.value(), line.value()};
    }
    QMap<int, zarnTXTLINERET> joined;
    for (const Paragraph& paragraph : paragraphs)
        joined.insert(paragraph.number, paragraph.record);
    return joined;
}
