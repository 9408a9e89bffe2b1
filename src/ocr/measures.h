// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Pixel measures of a page (300 dpi) as the whole numbers that stand in a Word document. Each value is
// reckoned in single precision and cut, not rounded.

QString getTop(int px);    // px * 0.25
QString getLeft(int px);   // px * 0.25
QString getWidth(int px);  // px / 2.5
QString getHeight(int px); // px * 0.5

// Half-points for a line `px` high: steps for the usual sizes, px * 0.4 between and beyond them.
QString getFontSize(int px);

// a / b; "0" when b is 0.
QString getPSFontSize(int a, int b);

// The pitch of a paragraph of n lines (at least 2, else "0") spread over a height a: a / (n - 1), widened by
// a fifth.
QString getPSLineSpacing(int a, int n);

// a in percent of b, at most two characters: 100 percent is "10". "0" when b is 0.
QString getPresent(int a, int b);

// True when the text consists of the digits 0 to 9 only; false when it is empty.
bool isDigitStr(const QString& text);
