// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

// The text of a written document for reading on the screen: of a Word document a string for each page, with
// a mark in the place of each picture; of a text file one string. Empty when the file cannot be read.
QStringList documentText(const QString& file);
