// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "operations.h"

#include <QCoreApplication>
#include <QStringList>
#include <optional>
#include <vector>

namespace companion {

// What the command line asks for.
struct Request
{
    struct Split
    {
        int count;
        int direction; // as ImageConvertFunction::imageCrop
    };

    QStringList files;
    std::vector<Operation> operations; // in the order given, without append and split
    std::optional<int> append;         // direction, as ImageConvertFunction::imageAppend
    std::optional<Split> split;
    double dpi = 0; // 0: what the file says
    QString type = QStringLiteral("jpg");
    int quality = 0; // 0: the library's default
    QString outFolder;
    QString reportFile; // empty: none; "-": standard output
    int jobs = 1;
    bool help = false; // nothing else counts
};

// Reads the command line. Throws nothing; what is wrong stands in error().
class Arguments
{
    Q_DECLARE_TR_FUNCTIONS(Arguments)

public:
    explicit Arguments(const QStringList& words); // words[0]: the program

    const Request& request() const { return m_request; }
    QString error() const { return m_error; } // empty: all is well
    static QString help();

private:
    void readOperation(const OperationKind& kind, const QString& text);
    void readOther(const QString& name, const QString& text);
    void checkWhole();
    double number(const QString& option, const QString& text, const ValueRange& range);
    void fail(const QString& message); // keeps the first one

    Request m_request;
    QString m_error;
};

} // namespace companion
