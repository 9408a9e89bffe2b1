// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <fstream>

// Reads the text lines that the engine itself finds in a picture, and streams their text, as read and in
// reading order, to the open file. A picture that is missing or has no text writes nothing. Throws nothing;
// works in the calling thread and switches OpenMP off for it.
void handleTxtOcrTest(const QString& imageFile, std::ofstream& out);
