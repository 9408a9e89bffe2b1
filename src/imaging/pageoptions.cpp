// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/pageoptions.h"

#include "config/keys.h"
#include "output/extracopy.h"

#include <QSettings>
#include <array>

namespace {

bool isTrue(const QSettings& settings, const char* key)
{
    return settings.value(QLatin1String(key)).toString() == QLatin1String("true");
}

int noiseSizeFor(int mode, int level)
{
    constexpr int kAutomatic = 3;
    switch (mode) {
    case 1: // custom
        switch (level) {
        case 1:
            return 5;
        case 2:
            return 3;
        case 3:
            return 2;
        default:
            return 0;
        }
    case 2:
        return kAutomatic;
    default:
        return 0;
    }
}

void readWholeGroup(PageOptions& options, QSettings& settings)
{
    settings.beginGroup(QLatin1String(groups::wholeSet));
    options.blankLevel = settings.value(QLatin1String(keys::delBlank)).toInt();
    options.backgroundStrength = settings.value(QLatin1String(keys::delValue)).toInt();
    options.enhanceStrength = settings.value(QLatin1String(keys::enhanceValue)).toInt();
    options.splitCount = settings.value(QLatin1String(keys::splitCount)).toInt();
    options.greyCopyDpi = extraCopyDpi(settings.value(QLatin1String(keys::fGrayDpi)).toInt());
    options.blackWhiteCopyDpi = extraCopyDpi(settings.value(QLatin1String(keys::fWBDpi)).toInt());
    options.border.inside = isTrue(settings, keys::imgMendIn);
    const auto level = [&settings](const char* key) {
        return qBound(0, settings.value(QLatin1String(key)).toInt(), 255);
    };
    options.border.red = level(keys::imgMendcolorRed);
    options.border.green = level(keys::imgMendcolorGreen);
    options.border.blue = level(keys::imgMendcolorBlue);
    options.border.topMm = settings.value(QLatin1String(keys::imgMendUp)).toDouble();
    // "false" is the linked state: one width for all four sides.
    const bool linked =
        settings.value(QLatin1String(keys::imgMendLeftState)).toString() == QLatin1String("false");
    options.border.leftMm =
        linked ? options.border.topMm : settings.value(QLatin1String(keys::imgMendLeft)).toDouble();
    settings.endGroup();
}

} // namespace

void readPipelineSettings(PageOptions& options, QSettings& settings, const PageSettingsGroups& names,
                          bool customThreshold)
{
    readWholeGroup(options, settings);

    settings.beginGroup(names.paperSize);
    options.paper.widthCm = settings.value(QLatin1String(keys::width)).toInt() / 100.0;
    options.paper.heightCm = settings.value(QLatin1String(keys::height)).toInt() / 100.0;
    options.paper.leftUp = isTrue(settings, keys::leftUp);
    settings.endGroup();

    settings.beginGroup(names.deNoise);
    constexpr int kNeutralThreshold = 130;
    options.blackWhiteThreshold =
        customThreshold ? settings.value(QLatin1String(keys::WBThreshold)).toInt() : kNeutralThreshold;
    options.noiseSize = noiseSizeFor(names.noiseMode ? *names.noiseMode
                                                     : settings.value(QLatin1String(keys::noiseMode)).toInt(),
                                     settings.value(QLatin1String(keys::noiseThreshold)).toInt());
    settings.endGroup();
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
