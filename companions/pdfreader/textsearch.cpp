// SPDX-License-Identifier: GPL-3.0-or-later
#include "textsearch.h"

namespace reader {
namespace {

struct Folded
{
    QString text;
    QVector<int> begin, end; // the units of the original that each folded unit stands for
};

QString foldedCharacter(uint character)
{
    if (character < 0x80)
        return QString(QChar(character).toLower());
    return QString::fromUcs4(&character, 1).normalized(QString::NormalizationForm_KC).toCaseFolded();
}

Folded fold(const QString& text)
{
    Folded folded;
    folded.text.reserve(text.size());
    int blankAt = -1;
    uint before = 0;
    const auto add = [&folded](const QString& units, int begin, int end) {
        folded.text += units;
        for (int i = 0; i < units.size(); ++i) {
            folded.begin << begin;
            folded.end << end;
        }
    };
    for (int i = 0; i < text.size(); ++i) {
        if (text[i].isSpace()) {
            blankAt = blankAt < 0 ? i : blankAt;
            continue;
        }
        const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        const uint character = pair ? QChar::surrogateToUcs4(text[i], text[i + 1]) : text[i].unicode();
        if (blankAt >= 0 && before != 0 && !isIdeographic(before) && !isIdeographic(character))
            add(QStringLiteral(" "), blankAt, i);
        add(foldedCharacter(character), i, i + (pair ? 2 : 1));
        i += pair ? 1 : 0;
        blankAt = -1;
        before = character;
    }
    return folded;
}

} // namespace

QVector<TextRange> findAll(const QString& text, const QString& wanted)
{
    QVector<TextRange> found;
    const QString needle = fold(wanted).text;
    if (needle.isEmpty())
        return found;
    const Folded hay = fold(text);
    for (int at = hay.text.indexOf(needle); at >= 0; at = hay.text.indexOf(needle, at + needle.size()))
        found << TextRange{hay.begin[at], hay.end[at + needle.size() - 1]};
    return found;
}

} // namespace reader
