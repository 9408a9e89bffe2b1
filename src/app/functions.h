// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVector>

// The functions that the program offers, as item data of the two function combos.
enum class Function
{
    Scan,
    Ocr,
    Pdf,
    Copy,
    Email,
    File,
    Ftp
};

// The items of the scan page's combo and of the file page's combo, in their order.
const QVector<Function>& scanPageFunctions();
const QVector<Function>& filePageFunctions();

// "Scan  Utility", ...: a name, the same in every language.
QString functionName(Function function);

// The one-line description; the scan page's own function has another one than the file page's.
QString functionDescription(Function function, bool scanPage);
