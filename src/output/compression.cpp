// SPDX-License-Identifier: GPL-3.0-or-later
#include "output/compression.h"

#include "config/settingtable.h"

namespace {

// The keys ending in Tif belong to item 2 of the format lists, PNG.
constexpr int jpegIndex = 0;
constexpr int pngIndex = 2;

const char* keyFor(ColorMode mode, int formatIndex)
{
    const bool png = formatIndex == pngIndex;
    switch (mode) {
    case ColorMode::Color:
        return png ? keys::colorTif : keys::colorJpg;
    case ColorMode::Grey:
        return png ? keys::grayTif : keys::grayJpg;
    case ColorMode::BlackAndWhite:
        break;
    }
    return png ? nullptr : keys::wbJpg;
}

} // namespace

std::optional<QString> compressionValue(QSettings& settings, ColorMode mode, int formatIndex)
{
    if (formatIndex != jpegIndex && formatIndex != pngIndex)
        return std::nullopt;
    const GroupScope scope(settings, groups::fileCompress);
    // "same for all" takes the colour keys for every colour mode
    const bool same = readBool(settings, keys::sameCompress);
    const char* key = keyFor(same ? ColorMode::Color : mode, formatIndex);
    if (!key)
        return std::nullopt;
    return readText(settings, key);
}
