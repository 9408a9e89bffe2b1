// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pagetext.h"

namespace reader {

// All places of the wanted text, from the beginning, not overlapping. Case and width of characters and forms
// that only look different (full-width letters, ligatures, radicals) are one; any white space is one blank,
// and beside a Chinese character it is none, so that words are found over the end of a line.
QVector<TextRange> findAll(const QString& text, const QString& wanted);

} // namespace reader
