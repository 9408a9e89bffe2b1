// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace reader {

// The PDF library reports faults of a file only as texts to one function of the process. They are gathered
// here for the thread in which they occur, and written to the log.
void gatherErrors(); // once, before the first document is opened

// What was gathered in this thread since the last call, at most 50 texts.
QStringList takeErrors();

// True when one of the texts tells that something of a page is lost; remarks about fonts do not.
bool tellOfDamage(const QStringList& errors);

} // namespace reader
