// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "arguments.h"
#include "report.h"

#include <QCoreApplication>
#include <QList>
#include <functional>

namespace companion {

// Writes the document that the request asks for.
class Documents
{
    Q_DECLARE_TR_FUNCTIONS(Documents)
public:
    struct Outcome
    {
        bool saved = false;
        QString problem;       // for the user
        QStringList notices;   // for the user
        QList<PageLine> pages; // as far as work got; `file` is the picture given to the writer
    };

    Documents(const Request& request, std::function<bool()> cancelled,
              std::function<void(const QString&)> progress);

    // `pages`: the pictures to read, in order.
    Outcome write(const QStringList& pages);

private:
    Outcome writeText(const QStringList& pages);       // text and Word
    Outcome writeSearchable(const QStringList& pages); // PDF and OFD

    Request m_request;
    std::function<bool()> m_cancelled;
    std::function<void(const QString&)> m_progress;
};

} // namespace companion
