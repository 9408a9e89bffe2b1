// SPDX-License-Identifier: GPL-3.0-or-later
#include "channelcommands.h"

namespace vscan {

namespace {

constexpr const char* standbyName = "standby";
constexpr int maxStandbyMinutes = 255 * 60 + 255; // what a frame can say
constexpr const char* usage =
    "usage: vscan usb silent|garbage [N] | short|late [N [BYTES|MS]] | stall EP [N] | "
    "claim-busy 0|1 | driver none|bound|stuck | report HEX... | ok";

// Value of a whole word in `base` (0: 0x.. or decimal), -1 when it is none.
long wholeNumber(const std::string& word, int base)
{
    char* end = nullptr;
    const long value = std::strtol(word.c_str(), &end, base);
    return word.empty() || *end || value < 0 ? -1 : value;
}

bool fault(CommandChannel& channel, const Fields& command)
{
    struct Kind
    {
        const char* word;
        ReplyFault fault;
        int defaultValue; // -1: it has none
    };
    constexpr Kind kinds[] = {{"silent", ReplyFault::Silent, -1},
                              {"garbage", ReplyFault::Garbage, -1},
                              {"short", ReplyFault::Short, 3},   // less than a key report
                              {"late", ReplyFault::Late, 3000}}; // later than a client waits
    for (const Kind& kind : kinds) {
        if (command[1] != kind.word)
            continue;
        const long long count = command.size() > 2 ? number(command, 2, -1) : 1;
        const long long value = command.size() > 3 ? number(command, 3, -1) : kind.defaultValue;
        if (count < 0 || command.size() > (kind.defaultValue < 0 ? 3 : 4) ||
            (value < 0 && kind.defaultValue >= 0))
            return false;
        channel.setFault(kind.fault, static_cast<int>(count), static_cast<int>(value));
        return true;
    }
    return false;
}

bool stall(CommandChannel& channel, const Fields& command)
{
    const long endpoint = command.size() > 2 ? wholeNumber(command[2], 16) : -1;
    const long long count = command.size() > 3 ? number(command, 3, -1) : 1;
    if (!endpoint::exists(endpoint) || count < 0 || command.size() > 4)
        return false;
    channel.setStall(static_cast<uint8_t>(endpoint), static_cast<int>(count));
    return true;
}

bool report(CommandChannel& channel, const Fields& command)
{
    Bytes bytes;
    for (size_t i = 2; i < command.size(); ++i) {
        const long value = wholeNumber(command[i], 16);
        if (value < 0 || value > 255)
            return false;
        bytes.push_back(static_cast<uint8_t>(value));
    }
    channel.queueReport(bytes);
    return true;
}

bool driver(CommandChannel& channel, const std::string& word)
{
    constexpr const char* words[] = {"none", "bound", "stuck"};
    for (int i = 0; i < 3; ++i) {
        if (word == words[i])
            return channel.setDriver(static_cast<KernelDriver>(i)), true;
    }
    return false;
}

bool understood(CommandChannel& channel, const Fields& command)
{
    const std::string& word = command[1];
    if (word == "stall")
        return stall(channel, command);
    if (word == "report")
        return report(channel, command);
    if (word == "ok" && command.size() == 2)
        return channel.clearFaults(), true;
    if (word == "driver" && command.size() == 3)
        return driver(channel, command[2]);
    if (word == "claim-busy" && command.size() == 3 && (command[2] == "0" || command[2] == "1"))
        return channel.setClaimBusy(command[2] == "1"), true;
    return fault(channel, command);
}

} // namespace

bool usbCommand(CommandChannel& channel, const Fields& command, std::string& text)
{
    if (understood(channel, command))
        return true;
    text = usage;
    return false;
}

bool countersCommand(Wear& wear, const Fields& command, std::string& text)
{
    std::vector<std::pair<std::atomic<int>*, int>> changes;
    for (size_t i = 1; i < command.size(); ++i) {
        const size_t sign = command[i].find('=');
        const std::string name = command[i].substr(0, sign);
        const long value = sign == std::string::npos ? -1 : wholeNumber(command[i].substr(sign + 1), 10);
        std::atomic<int>* target = name == standbyName ? &wear.standbyMinutes() : nullptr;
        for (size_t part = 0; part < Wear::parts.size(); ++part) {
            if (name == Wear::parts[part].name)
                target = &wear.counter(part);
        }
        if (!target || value < 0 || value > (name == standbyName ? maxStandbyMinutes : Wear::maxCount)) {
            text = command[i] + ": scan, roller, pad = 0 to 65535, or standby = minutes";
            return false;
        }
        changes.emplace_back(target, static_cast<int>(value));
    }
    for (const auto& [target, value] : changes)
        *target = value;
    for (size_t part = 0; part < Wear::parts.size(); ++part)
        text += std::string(Wear::parts[part].name) + "=" + std::to_string(wear.counter(part)) + "\n";
    text += std::string(standbyName) + "=" + std::to_string(wear.standbyMinutes());
    return true;
}

} // namespace vscan
