// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>

namespace imageconvert {

// Paper sizes of OFD documents in whole millimetres. Letter, A5, B5 and Legal are cut off, not rounded, and
// A5 and B5 one millimetre short: the sizes that these documents have always had.
struct OfdPaper
{
    int longSideMm;
    int shortSideMm;
};

inline constexpr std::array<OfdPaper, 5> kOfdPapers = {{
    {297, 210}, // A4
    {279, 215}, // Letter
    {209, 148}, // A5
    {257, 181}, // B5 (JIS)
    {355, 215}, // Legal
}};

// `paperCode`: 2 is the first paper. Null for a code without a paper (custom sizes).
inline const OfdPaper* ofdPaper(int paperCode)
{
    const int index = paperCode - 2;
    return index >= 0 && index < static_cast<int>(kOfdPapers.size()) ? &kOfdPapers[static_cast<size_t>(index)]
                                                                     : nullptr;
}

} // namespace imageconvert
