// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSettings>
#include <QString>
#include <optional>

#include "output/savetype.h"

// The compression value to hand to imageCompress() for a page of this colour mode in the format with this
// combo index (savetype.h); nothing when the image is to be left as it is. `settings` is the main file, no
// group begun. The value is as stored: what is no valid value keeps the library's default.
std::optional<QString> compressionValue(QSettings& settings, ColorMode mode, int formatIndex);
