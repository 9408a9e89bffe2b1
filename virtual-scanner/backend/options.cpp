// SPDX-License-Identifier: GPL-3.0-or-later
#include "options.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sane/saneopts.h>

namespace vscan {

namespace {

constexpr int settable = SANE_CAP_SOFT_SELECT | SANE_CAP_SOFT_DETECT;

const SANE_Word resolutionList[] = {7, 100, 150, 200, 300, 400, 600, 1200};
static_assert(sizeof resolutionList / sizeof *resolutionList == resolutions.size() + 1);

const WordOption* wordOption(int option)
{
    for (const WordOption& candidate : wordOptions) {
        if (candidate.option == option)
            return &candidate;
    }
    return nullptr;
}

SANE_Option_Descriptor numberDescriptor(const char* name, const char* title, const char* text)
{
    SANE_Option_Descriptor descriptor{};
    descriptor.name = name;
    descriptor.title = title;
    descriptor.desc = text;
    descriptor.type = SANE_TYPE_INT;
    descriptor.size = sizeof(SANE_Word);
    return descriptor;
}

SANE_Option_Descriptor group(const char* title)
{
    SANE_Option_Descriptor descriptor{};
    descriptor.name = descriptor.desc = "";
    descriptor.title = title;
    descriptor.type = SANE_TYPE_GROUP;
    return descriptor;
}

SANE_Option_Descriptor wordDescriptor(Option option, const char* name, const char* title, const char* text)
{
    SANE_Option_Descriptor descriptor{};
    descriptor.name = name;
    descriptor.title = title;
    descriptor.desc = text;
    descriptor.type = SANE_TYPE_STRING;
    descriptor.cap = settable;
    descriptor.constraint_type = SANE_CONSTRAINT_STRING_LIST;
    descriptor.constraint.string_list = wordOption(option)->words;
    for (const char* const* word = descriptor.constraint.string_list; *word; ++word)
        descriptor.size = std::max(descriptor.size, static_cast<SANE_Int>(std::strlen(*word) + 1));
    return descriptor;
}

std::array<SANE_Option_Descriptor, OptionsInList> makeList()
{
    std::array<SANE_Option_Descriptor, OptionsInList> list{};
    list[OptionCount] = numberDescriptor("", SANE_TITLE_NUM_OPTIONS, SANE_DESC_NUM_OPTIONS);
    list[OptionCount].cap = SANE_CAP_SOFT_DETECT;
    SANE_Option_Descriptor& resolution = list[OptResolution];
    resolution = numberDescriptor(SANE_NAME_SCAN_RESOLUTION, "分辨率", "Dots per inch; 400 delivers 600.");
    resolution.unit = SANE_UNIT_DPI;
    resolution.cap = settable;
    resolution.constraint_type = SANE_CONSTRAINT_WORD_LIST;
    resolution.constraint.word_list = resolutionList;
    list[OptSource] =
        wordDescriptor(OptSource, SANE_NAME_SCAN_SOURCE, "扫描源", "Flatbed or side of the sheet.");
    list[3] = group("纸张");
    list[OptPaperSize] = wordDescriptor(OptPaperSize, "paper-size", "纸张大小", "Scanned area.");
    list[5] = group("图像");
    list[OptImageType] = wordDescriptor(OptImageType, "image-type", "图像类型", "Kind of page.");
    list[OptColourMode] =
        wordDescriptor(OptColourMode, SANE_NAME_SCAN_MODE, "颜色模式", "Colours delivered.");
    list[8] = group("高级");
    list[OptSwitch9] = wordDescriptor(OptSwitch9, "switch-9", "开关9", "Accepted, changes nothing.");
    list[OptRotation] = wordDescriptor(OptRotation, "rotation", "旋转", "Turns the delivered picture.");
    list[OptEdgeFill] = wordDescriptor(OptEdgeFill, "edge-fill", "边缘填充", "Paints the rim.");
    list[OptLevel12] = wordDescriptor(OptLevel12, "level-12", "级别12", "Accepted, changes nothing.");
    list[OptSwitch13] = wordDescriptor(OptSwitch13, "switch-13", "开关13", "Accepted, changes nothing.");
    return list;
}

SANE_Status setResolution(Settings& settings, SANE_Word& value, SANE_Int& info)
{
    const int wanted = std::clamp<int>(value, resolutions.front(), resolutions.back());
    const int nearest = *std::min_element(resolutions.begin(), resolutions.end(), [wanted](int a, int b) {
        return std::abs(a - wanted) < std::abs(b - wanted);
    });
    if (nearest != value)
        info |= SANE_INFO_INEXACT;
    value = nearest;
    settings.set(OptResolution, nearest);
    return SANE_STATUS_GOOD;
}

SANE_Status setWord(Settings& settings, const WordOption& option, const char* value)
{
    for (int index = 0; option.words[index]; ++index) {
        if (std::strcmp(option.words[index], value) == 0) {
            settings.set(option.option, index);
            return SANE_STATUS_GOOD;
        }
    }
    return SANE_STATUS_INVAL;
}

void getOption(const Settings& settings, int option, void* value)
{
    if (const WordOption* word = wordOption(option))
        std::strcpy(static_cast<char*>(value), word->words[settings.value(word->option)]);
    else
        *static_cast<SANE_Word*>(value) =
            option == OptionCount ? static_cast<int>(OptionsInList) : settings.value(OptResolution);
}

} // namespace

const SANE_Option_Descriptor* optionDescriptor(int option)
{
    static const std::array<SANE_Option_Descriptor, OptionsInList> list = makeList();
    return option >= 0 && option < OptionsInList ? &list[static_cast<size_t>(option)] : nullptr;
}

SANE_Status controlOption(Settings& settings, int option, SANE_Action action, void* value, SANE_Int* info)
{
    SANE_Int changes = 0;
    const SANE_Option_Descriptor* descriptor = optionDescriptor(option);
    if (!descriptor || descriptor->type == SANE_TYPE_GROUP || !value)
        return SANE_STATUS_INVAL;
    if (action == SANE_ACTION_GET_VALUE) {
        getOption(settings, option, value);
    } else if (action != SANE_ACTION_SET_VALUE || option == OptionCount) {
        return SANE_STATUS_INVAL;
    } else {
        const WordOption* word = wordOption(option);
        const SANE_Status status = word ? setWord(settings, *word, static_cast<const char*>(value))
                                        : setResolution(settings, *static_cast<SANE_Word*>(value), changes);
        if (status != SANE_STATUS_GOOD)
            return status;
        changes |= SANE_INFO_RELOAD_PARAMS;
    }
    if (info)
        *info = changes;
    return SANE_STATUS_GOOD;
}

} // namespace vscan
