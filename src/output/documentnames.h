// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "output/naming.h"

#include <QSet>
#include <QString>

// Names the documents of one batch. GUI thread: the naming settings are read and the counter is written.
class DocumentNames
{
public:
    // What "start" counts: documents, and then it is part of a user-defined name, or batches, and then such a
    // name is the prefix alone.
    enum class Counter
    {
        Documents,
        Batches
    };

    // `group`: "Scan_PDF". The rules and the counter are those of this moment.
    explicit DocumentNames(const QString& group, Counter counter = Counter::Documents);

    // Base name of document `index` (from 0): with user-defined names the prefix, and `start` + index where
    // documents are counted, else the generated name. It is made a valid file name; where FOLDER/NAME.TYPE
    // existed before the batch and is not to be replaced, and where this batch has used the name, the next
    // free suffix is added.
    QString next(int index, const QString& folder, const QString& type);
    // Continues the counter by that many; documents are counted only if names are user-defined.
    void advance(int documents) const;

    const NamingRules& rules() const { return m_rules; }

private:
    QString baseName(int index) const;

    QString m_group;
    Counter m_counter;
    NamingRules m_rules;
    QSet<QString> m_used; // paths given out
};
