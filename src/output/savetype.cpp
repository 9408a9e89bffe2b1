// SPDX-License-Identifier: GPL-3.0-or-later
#include "output/savetype.h"

#include <algorithm>
#include <iterator>

const char* saveTypeWord(int formatIndex)
{
    static constexpr const char* words[] = {"jpg", "tif", "png", "bmp"};
    return words[std::clamp(formatIndex, 0, int(std::size(words)) - 1)];
}
