// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

// One document to write from finished page pictures, as the writers of searchable documents need it.
struct DocumentJob
{
    QString folder;           // an existing folder, with or without "/" at its end
    QString baseName;         // a valid file name without extension; a file of that name is replaced
    QString typeWord = "pdf"; // extension of a PDF; OFD documents always end in ".ofd"
    int paperIndex = 0; // item of the paper combo: 0 A4, 1 Letter, 2 A5, 3 B5 (JIS), 4 Legal, else custom

    // Both may be empty. They are called in the calling thread only, which also pumps its events meanwhile.
    std::function<void(const QString&)> progress; // "正在识别第1张图像"
    std::function<bool()> cancelled;              // true ends the work; nothing is saved then
};

struct DocumentResult
{
    bool saved = false;     // the complete document stands in `file`
    bool cancelled = false; // by the user; nothing was saved and no page file was touched
    QString file;           // its full path
    QString problem;        // for the user: why there is no document
    QString warning;        // for the user: what a saved document lacks; empty when nothing
    QStringList unread;     // page files that could not be read; each is an empty page of a saved document
};
