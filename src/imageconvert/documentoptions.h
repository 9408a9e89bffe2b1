// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

// What the user or the caller may choose for a PDF or OFD document of page pictures.
struct DocumentOptions
{
    // Resolution of pages whose file does not say; 0: guessed from the size, as of an A4 or Legal page.
    double sourceDpi = 0;
    // Quality, 1 to 100, at which pages that are neither JPEG nor two-level are stored as JPEG; 0: they are
    // stored without loss.
    int jpegQuality = 0;
    QString title; // in the document information; empty: the document's name
    // Called after each page with the number of pages done, in the thread of the call. False cancels: the
    // operation fails and nothing is written.
    std::function<bool(int done, int total)> progress;
};
