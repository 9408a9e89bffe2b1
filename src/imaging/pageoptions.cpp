// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/pageoptions.h"

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
    settings.beginGroup(QStringLiteral("wholeSet"));
    options.blankLevel = settings.value(QStringLiteral("delBlank")).toInt();
    options.backgroundStrength = settings.value(QStringLiteral("delValue")).toInt();
    options.enhanceStrength = settings.value(QStringLiteral("enhanceValue")).toInt();
    options.splitCount = settings.value(QStringLiteral("splitCount")).toInt();
    options.greyCopyDpi = extraCopyDpi(settings.value(QStringLiteral("fGrayDpi")).toInt());
    options.blackWhiteCopyDpi = extraCopyDpi(settings.value(QStringLiteral("fWBDpi")).toInt());
    options.border.inside = isTrue(settings, "imgMendIn");
    options.border.color = QColor(qBound(0, settings.value(QStringLiteral("imgMendcolorRed")).toInt(), 255),
                                  qBound(0, settings.value(QStringLiteral("imgMendcolorGreen")).toInt(), 255),
                                  qBound(0, settings.value(QStringLiteral("imgMendcolorBlue")).toInt(), 255));
    options.border.topMm = settings.value(QStringLiteral("imgMendUp")).toDouble();
    // "false" is the linked state: one width for all four sides.
    const bool linked =
        settings.value(QStringLiteral("imgMendLeftState")).toString() == QLatin1String("false");
    options.border.leftMm =
        linked ? options.border.topMm : settings.value(QStringLiteral("imgMendLeft")).toDouble();
    settings.endGroup();
}

} // namespace

void readPipelineSettings(PageOptions& options, QSettings& settings, const PageSettingsGroups& groups,
                          bool customThreshold)
{
    readWholeGroup(options, settings);

    settings.beginGroup(groups.paperSize);
    options.paper.widthCm = settings.value(QStringLiteral("width")).toInt() / 100.0;
    options.paper.heightCm = settings.value(QStringLiteral("height")).toInt() / 100.0;
    options.paper.leftUp = isTrue(settings, "leftUp");
    settings.endGroup();

    settings.beginGroup(groups.deNoise);
    constexpr int kNeutralThreshold = 130;
    options.blackWhiteThreshold =
        customThreshold ? settings.value(QStringLiteral("WBThreshold")).toInt() : kNeutralThreshold;
    options.noiseSize = noiseSizeFor(settings.value(QStringLiteral("noiseMode")).toInt(),
                                     settings.value(QStringLiteral("noiseThreshold")).toInt());
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
