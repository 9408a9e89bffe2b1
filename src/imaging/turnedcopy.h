// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class ImageConvertFunction;

// A scanned page as it is processed: the page file itself or, for a back side that came out upside down, a
// turned copy among the page files for the life of the object. The page file stays as it was scanned, so that
// a batch which is cancelled and goes on later turns it only once. Any thread.
class TurnedCopy
{
public:
    TurnedCopy(ImageConvertFunction& library, const QString& pageFile, bool turn);
    ~TurnedCopy();
    TurnedCopy(const TurnedCopy&) = delete;
    TurnedCopy& operator=(const TurnedCopy&) = delete;

    bool good() const { return !m_path.isEmpty(); } // false: the page cannot be read or the copy not written
    QString path() const { return m_path; }         // ends in the page's number, as the page file

private:
    QString m_path;
    bool m_isCopy;
};
