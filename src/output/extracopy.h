// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

constexpr int kExtraCopyDpis = 4;

// Resolution of the extra grey or black-and-white copy for an index of "fGrayDpi" or "fWBDpi": 100, 200, 300
// or 600 dpi. Other indices give 300.
constexpr int extraCopyDpi(int index)
{
    constexpr std::array<int, kExtraCopyDpis> dpi{100, 200, 300, 600};
    return index >= 0 && index < int(dpi.size()) ? dpi[std::size_t(index)] : 300;
}
