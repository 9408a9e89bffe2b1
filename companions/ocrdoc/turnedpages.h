// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <QTemporaryDir>

namespace companion {

// Upright copies of pages that lie turned, kept in a temporary folder as long as the object lives.
class TurnedPages
{
public:
    // The page itself when it lies upright, cannot be told or cannot be read; else its turned copy.
    QString upright(const QString& page);

private:
    QTemporaryDir m_folder;
    int m_count = 0;
};

} // namespace companion
