// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/imageconvertfunction.h"
#include "imaging/lastpage.h"

#include <QString>
#include <functional>

// What a setting does to a sample picture, for the previews of the settings dialogs: the pipeline's own steps
// on a file, written to another file. Any thread; each call works with a library of its own.

// The step: takes the handle over and returns the one to use from then on.
using Effect = std::function<MagickWand*(ImageConvertFunction& library, MagickWand* image)>;

// `result`: the extension says the type ("bmp", "jpg", "png"). False (logged) when a file cannot be read or
// written.
bool renderEffect(const QString& picture, double dpi, const Effect& effect, const QString& result);

// Bytes that the whole page would take in a file of this type when the detail in full resolution takes
// `detailBytes`, reckoned from how the detail's share of the reduced page compares with all of it. `effect`
// makes those two; it may be a quicker one than the detail's, if its files compare in the same way. 0: not
// known. Uses `folder` (with "/") for its files.
qint64 estimatedBytes(const SamplePage& sample, qint64 detailBytes, const Effect& effect, const QString& type,
                      const QString& folder);

// True when the page counts as blank at this level (1 to 15) of the setting.
bool countsAsBlank(const SamplePage& sample, int level);
