// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pagelayout.h"

#include <QByteArray>
#include <QString>

namespace reader {

// What the viewer remembers from one start to the next, in the user's own configuration folder.
struct ReaderSettings
{
    QByteArray geometry, splitter;
    bool sidePane = true;
    Zoom zoom;
    QString folder; // of the document opened last

    static ReaderSettings load(); // what is missing or makes no sense has the values above
    void save() const;
};

} // namespace reader
