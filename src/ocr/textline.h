// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// What was recognised in one box, or in several boxes joined to a paragraph; geometry in pixels of the page.
struct zarnTXTLINERET
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    int confidence = 0; // 0 to 100
    int lines = 1;      // in the box
    int lineHeight = 0; // height of its last line, so the lines' tops span height - lineHeight
    QString text;       // lines parted by kLineJoint, or the marker of a doubtful box
};

constexpr int kDoubtfulBelow = 70; // confidence: what was read with less becomes a picture

QString doubtfulMarker();                           // "ocrResultLowConf" and a line end
inline constexpr char kLineJoint[] = "ZARNFAXZARN"; // parts the lines of a paragraph

// Recognised text without blanks, and with "。" for each "o": the model reads the full stop as that letter.
QString cleanedText(const QString& text);
