// SPDX-License-Identifier: GPL-3.0-or-later
#include "arguments.h"

#include <cstdlib>
#include <filesystem>

namespace vscan {

const char* const usage =
    "usage: vscan run [SCANNER...] -- COMMAND [ARGUMENT...]   start COMMAND with a scanner attached\n"
    "       vscan daemon [SCANNER...]                         the scanner alone; prints what to export\n"
    "       vscan VERB...                                     control the scanner at $VSCAN_SOCKET\n"
    "scanner: --feeder DIR  --flatbed FILE  --speed real|fast  --dpi N  --model NAME  --sock PATH\n"
    "         --no-usb  --exclusive\n"
    "verbs:   load DIR | empty | flatbed FILE | cover open|closed | busy N | jam-at PAGE [BYTES]\n"
    "         error-at PAGE [BYTES] | no-docs-at PAGE [BYTES] | press KEY | pace MS_PER_MIB|real|fast\n"
    "         unplug | replug | clear | status | log | model NAME\n"
    "         counters [scan|roller|pad|standby=VALUE]... | usb FAULT...\n";

namespace {

bool parseDpi(const std::string& word, double& dpi)
{
    char* end = nullptr;
    dpi = std::strtod(word.c_str(), &end);
    return !word.empty() && !*end && dpi >= 20 && dpi <= 10000;
}

bool parseOption(const std::string& option, const std::string& value, Arguments& arguments,
                 std::string& error)
{
    if (option == "--feeder")
        arguments.setup.feeder = value;
    else if (option == "--flatbed")
        arguments.setup.flatbed = value;
    else if (option == "--model")
        arguments.setup.model = value;
    else if (option == "--sock")
        arguments.socket = value;
    else if (option == "--speed" && (value == "real" || value == "fast"))
        arguments.setup.realSpeed = value == "real";
    else if (option != "--dpi" || !parseDpi(value, arguments.setup.dpi)) {
        error = option + " " + value + ": not understood";
        return false;
    }
    return true;
}

} // namespace

bool parseArguments(const Fields& words, bool withCommand, Arguments& arguments, std::string& error)
{
    for (size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--no-usb" || words[i] == "--exclusive") {
            (words[i] == "--no-usb" ? arguments.usb : arguments.setup.exclusive) = words[i] == "--exclusive";
            continue;
        }
        if (withCommand && (words[i] == "--" || words[i][0] != '-')) {
            arguments.command.assign(words.begin() + static_cast<long>(i) + (words[i] == "--"), words.end());
            break;
        }
        if (i + 1 == words.size()) {
            error = words[i] + ": its value is missing";
            return false;
        }
        if (!parseOption(words[i], words[i + 1], arguments, error))
            return false;
        ++i;
    }
    if (withCommand && arguments.command.empty())
        error = "no command to run";
    return error.empty();
}

Fields absolutePaths(Fields command)
{
    if (command.size() == 2 && (command[0] == "load" || command[0] == "flatbed"))
        command[1] = std::filesystem::absolute(command[1]).string();
    return command;
}

} // namespace vscan
