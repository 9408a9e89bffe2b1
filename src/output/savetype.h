// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The colour mode combo's indices.
enum class ColorMode
{
    BlackAndWhite = 0,
    Grey = 1,
    Color = 2,
};

// Type word of a format combo index, which doubles as the file extension: 0 "jpg", 1 "tif", 2 "png", 3 "bmp".
// An index beyond them means the last item, a negative one the first.
const char* saveTypeWord(int formatIndex);
