// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/scanoptions.h"

#include <algorithm>
#include <array>

namespace scanoptions {

namespace {

struct OptionValues
{
    int number;
    int ScanParameters::*parameter;
    std::vector<const char*> values; // of parameter value 1, 2, ...
};

const std::vector<OptionValues>& table()
{
    using P = ScanParameters;
    // Option 13 lists its values the other way round than option 9: that is how the backend numbers them.
    static const std::vector<OptionValues> options = {
        {sourceOption,
         &P::source,
         {"Flatbed", "ADF Front", "ADF Back", "ADF Duplex", "Automatic Document Feeder"}},
        {4, &P::paperSize, {"FULL", "A4", "Letter", "A5", "B5", "LEG", "USER"}},
        {6, &P::imageType, {"文字效果", "图片效果", "文字和图片"}},
        {7, &P::colorMode, {"彩色", "灰度", "黑白"}},
        {9, &P::option9, {"开", "关"}},
        {10, &P::rotation, {"正常", "左转90度", "右转90度", "旋转180度"}},
        {11, &P::edgeFill, {"无", "加白边", "加黑边"}},
        {12, &P::option12, {"无", "0.1", "0.2", "0.3", "0.4", "0.5", "0.6", "0.7", "0.8", "0.9"}},
        {13, &P::option13, {"关", "开"}},
    };
    return options;
}

} // namespace

bool isResolution(int dpi)
{
    constexpr std::array<int, 7> offered = {100, 150, 200, 300, 400, 600, 1200};
    return std::find(offered.begin(), offered.end(), dpi) != offered.end();
}

std::vector<StringOption> stringOptions(const ScanParameters& parameters)
{
    std::vector<StringOption> options;
    for (const OptionValues& option : table()) {
        const int value = parameters.*option.parameter;
        if (value >= 1 && value <= int(option.values.size()))
            options.push_back({option.number, option.values[std::size_t(value - 1)]});
    }
    return options;
}

std::string flatbed()
{
    return table().front().values.front();
}

} // namespace scanoptions
