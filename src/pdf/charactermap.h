// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

// What the glyphs of a PDF page stand for, in the order in which they are drawn.
class ShownText
{
public:
    // `glyphs` glyphs (1 to 255) show these characters together.
    void add(const QString& characters, int glyphs);

    // One entry for each glyph: its characters, empty for the further glyphs of an accented character.
    std::vector<QString> glyphs() const;

private:
    QString m_text;
    QByteArray m_lengths; // UTF-16 units of each glyph; small, since documents have hundreds of pages
};

// Copies the text PDF `source` (as Qt prints it) to `target` and makes each glyph stand for the characters it
// was drawn for, so that readers find and copy exactly these; `pages` has an entry for every page. A glyph
// drawn for different characters (文 and its radical) gets a code for each. A page whose glyphs do not match
// keeps the map it had (logged). The document says of itself what all of ours say. `target` appears whole or
// not at all. Returns what went wrong, for the user; empty when the file is complete.
QString mendCharacterMap(const QString& source, const QString& target, const QString& title,
                         const std::vector<ShownText>& pages);
