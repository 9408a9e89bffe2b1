// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/pageoptions.h"

#include "config/settingtable.h"
#include "output/extracopy.h"

#include <QSettings>
#include <array>

namespace {

void readWholeGroup(PageOptions& options, QSettings& settings)
{
    const GroupScope scope(settings, QLatin1String(groups::wholeSet));
    options.blankLevel = readInt(settings, keys::delBlank);
    options.backgroundStrength = readInt(settings, keys::delValue);
    options.enhanceStrength = readInt(settings, keys::enhanceValue);
    options.splitCount = readInt(settings, keys::splitCount);
    options.greyCopyDpi = extraCopyDpi(readInt(settings, keys::fGrayDpi));
    options.blackWhiteCopyDpi = extraCopyDpi(readInt(settings, keys::fWBDpi));
    options.border.inside = readBool(settings, keys::imgMendIn);
    options.border.red = readInt(settings, keys::imgMendcolorRed);
    options.border.green = readInt(settings, keys::imgMendcolorGreen);
    options.border.blue = readInt(settings, keys::imgMendcolorBlue);
    options.border.topMm = readDouble(settings, keys::imgMendUp);
    // Off is the linked state: one width for all four sides. A missing key is not off.
    const bool linked = settings.contains(QLatin1String(keys::imgMendLeftState)) &&
                        !readBool(settings, keys::imgMendLeftState);
    options.border.leftMm = linked ? options.border.topMm : readDouble(settings, keys::imgMendLeft);
}

} // namespace

void readPipelineSettings(PageOptions& options, QSettings& settings, const PageSettingsGroups& names,
                          bool customThreshold)
{
    readWholeGroup(options, settings);
    {
        const GroupScope scope(settings, names.paperSize);
        options.paper.widthCm = readInt(settings, keys::width) / 100.0;
        options.paper.heightCm = readInt(settings, keys::height) / 100.0;
        options.paper.leftUp = readBool(settings, keys::leftUp);
    }
    const GroupScope scope(settings, names.deNoise);
    options.blackWhiteThreshold =
        customThreshold ? readInt(settings, keys::WBThreshold) : PageOptions::kNeutralThreshold;
    options.noiseSize = noiseSize(names.noiseMode ? *names.noiseMode : readInt(settings, keys::noiseMode),
                                  readInt(settings, keys::noiseThreshold));
}

int noiseSize(int mode, int level)
{
    constexpr int kCustom = 1;
    constexpr int kAutomatic = 2;
    constexpr std::array<int, 4> kSizes{0, 5, 3, 2}; // by level
    if (mode == kAutomatic)
        return 3;
    const bool known = mode == kCustom && level >= 0 && level < static_cast<int>(kSizes.size());
    return known ? kSizes[static_cast<std::size_t>(level)] : 0;
}

std::optional<PaperCut> customCut(const PageOptions::CustomPaper& paper)
{
    constexpr double kA4Width = 21.0;
    constexpr double kA4Height = 29.7;
    // A width of exactly A4's, or a size at or beyond A4 in both directions, is left uncut on purpose.
    if (paper.widthCm > kA4Width && paper.heightCm < kA4Height)
        return PaperCut{kA4Width, paper.heightCm};
    if (paper.widthCm < kA4Width && paper.heightCm > kA4Height)
        return PaperCut{paper.widthCm, kA4Height};
    if (paper.widthCm < kA4Width && paper.heightCm < kA4Height)
        return PaperCut{paper.widthCm, paper.heightCm};
    return std::nullopt;
}

std::optional<BlankLimits> blankLimits(int level)
{
    // The step between levels 11 and 12 is wider than the others on purpose.
    static constexpr std::array<BlankLimits, 15> kLimits{{{10, 0.25},
                                                          {15, 0.33},
                                                          {20, 0.41},
                                                          {20, 0.49},
                                                          {20, 0.57},
                                                          {20, 0.65},
                                                          {20, 0.73},
                                                          {20, 0.81},
                                                          {25, 0.89},
                                                          {25, 0.97},
                                                          {30, 1.05},
                                                          {30, 1.23},
                                                          {35, 1.31},
                                                          {35, 1.39},
                                                          {35, 1.47}}};
    if (level < 1 || level > static_cast<int>(kLimits.size()))
        return std::nullopt;
    return kLimits[static_cast<std::size_t>(level - 1)];
}
