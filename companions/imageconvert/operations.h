// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/imageconvertfunction.h"
#include "pagereport.h"

#include <QTemporaryDir>
#include <vector>

namespace companion {

// One page on its way through the operations. Belongs to one thread, as its library does.
struct PageWork
{
    ImageConvertFunction& library;
    ImageHandle& image;
    PageReport& report;
    QTemporaryDir& scratch; // for operations that work on files
};

// What a value of an operation may be.
struct ValueRange
{
    double least;
    double most;
    bool whole = true; // no fractions
};

// An operation of the command line; its values are separated by commas.
struct OperationKind
{
    const char* name;   // of the option, without the dashes; also the key of its time in the report
    const char* values; // how the help writes the values
    std::vector<ValueRange> ranges;
    void (*run)(PageWork&,
                const std::vector<double>& values); // nullptr: not on a loaded page (append, split)
};

const std::vector<OperationKind>& operationKinds();

// An operation as given: the values are in range.
struct Operation
{
    const OperationKind* kind;
    std::vector<double> values;
};

} // namespace companion
