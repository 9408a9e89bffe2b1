// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

struct SaveFolder
{
    QString path;    // absolute, without a trailing "/" (except the root itself)
    QString problem; // empty: the folder can be written; else what is wrong, for the user, naming the folder
    bool good() const { return problem.isEmpty(); }
};

// Makes sure that documents can be written there: creates the folder when it is missing, checks that it is a
// folder, writable, and on a disk with room. An empty path means the default folder.
SaveFolder prepareSaveFolder(const QString& folder);

// What a system error (errno) of a failed write means, for the user.
QString writeProblem(int error);

// The folder in "savepath" of a group of the path file, for example "Scan_Scan_FilePath", as stored.
QString storedSaveFolder(const QString& pathGroup);
