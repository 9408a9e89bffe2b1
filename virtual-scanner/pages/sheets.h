// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <functional>
#include <vector>

struct Sheet
{
    QImage front;
    QImage back;
};

// The sample stack in feeder order; each function draws one sheet as the scanner would see it. May be called
// from any thread.
std::vector<std::function<Sheet()>> sampleSheets();
