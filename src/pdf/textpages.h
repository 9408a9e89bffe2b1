// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pdf/charactermap.h"

#include <QPainter>
#include <QPrinter>
#include <QString>
#include <vector>

// Draws pages of text into a PDF file at 300 dpi, in the default font and colour, places counted from the
// sheet's corner. The character map of the file is Qt's, which confuses characters of the same look; shown()
// is what mendCharacterMap() needs to put it right.
class TextPages
{
public:
    // Item of the paper combo: 0 A4, 1 Letter, 2 A5, 3 B5 (JIS), 4 Legal; any other keeps the default paper.
    TextPages(const QString& file, int paperIndex);

    bool begin(); // false when the file cannot be written
    bool end();

    QSize paper() const; // pixels

    // Adds text with its baseline starting at (x, y). What would leave the sheet on the right is drawn
    // narrower.
    void draw(int x, int y, const QString& text);
    void newPage();

    const std::vector<ShownText>& shown() const { return m_shown; }

private:
    QPrinter m_printer;
    QPainter m_painter;
    std::vector<ShownText> m_shown;
};
