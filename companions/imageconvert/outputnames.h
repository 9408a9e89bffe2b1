// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "arguments.h"

#include <vector>

namespace companion {

// A page to make.
struct PlannedPage
{
    QString file;
    QString second; // to be appended; else empty
    QString name;   // of the output, without folder and extension; pieces add "-1", "-2", ...
};

// The pages of a request, one an input file or pair, in the order of the arguments. Each output has the base
// name of its (first) input; where that name is taken - by an earlier page, by an input file or by the report
// in the output folder - "_2", "_3", ... is added. Files of an earlier run do not count: they will be
// replaced.
std::vector<PlannedPage> planPages(const Request& request);

// The files that a page will write, with the output folder.
QStringList outputFiles(const Request& request, const QString& name);

// True when the report would be written over an input file.
bool reportHitsInput(const Request& request);

} // namespace companion
