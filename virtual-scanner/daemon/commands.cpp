// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that control the scanner: one table of words, each with the function that carries it out.

#include "scanner.h"

#include <array>
#include <filesystem>
#include <functional>

namespace vscan {

namespace {
constexpr int clearKey = 3; // of the keys on the case, the one that cancels
constexpr size_t maxLogText = 48 * 1024;
} // namespace

// Has access to the scanner's insides so that these need no public setters.
struct Commands
{
    using Handler = bool (*)(Scanner&, const Fields&, std::string& text);
    struct Command
    {
        const char* word;
        size_t minArguments;
        size_t maxArguments;
        const char* usage;
        Handler handler;
    };

    // Whole number of at least `least`; false with the text set otherwise.
    static bool parse(const Fields& command, size_t index, long long least, long long& value,
                      std::string& text)
    {
        value = number(command, index, least - 1);
        if (value >= least)
            return true;
        text = command[index] + ": a number from " + std::to_string(least) + " is needed";
        return false;
    }

    static bool addFault(Scanner& scanner, const Fields& command, Status status, std::string& text)
    {
        long long page = 0;
        long long bytes = -1;
        if (!parse(command, 1, 1, page, text) || (command.size() > 2 && !parse(command, 2, 0, bytes, text)))
            return false;
        scanner.m_state.addFault({status, static_cast<int>(page), bytes});
        return true;
    }

    static bool cover(Scanner& scanner, const Fields& command, std::string& text)
    {
        if (command[1] != "open" && command[1] != "closed") {
            text = command[1] + ": the cover is open or closed";
            return false;
        }
        scanner.m_state.setCover(command[1] == "open");
        return true;
    }

    static bool busy(Scanner& scanner, const Fields& command, std::string& text)
    {
        long long opens = 0;
        if (!parse(command, 1, 0, opens, text))
            return false;
        scanner.m_state.setBusy(static_cast<int>(opens));
        return true;
    }

    static bool press(Scanner& scanner, const Fields& command, std::string& text)
    {
        if (number(command, 1, 0) != clearKey) {
            text = command[1] + ": only key 3 (clear) reaches the SANE side";
            return false;
        }
        scanner.m_state.pressCancel();
        return true;
    }

    static bool pace(Scanner& scanner, const Fields& command, std::string& text)
    {
        if (command[1] == "real" || command[1] == "fast") {
            scanner.m_setup.realSpeed = command[1] == "real";
            scanner.m_msPerMiB = -1;
            return true;
        }
        return parse(command, 1, 0, scanner.m_msPerMiB, text);
    }

    static bool showLog(Scanner& scanner, const Fields&, std::string& text)
    {
        for (auto line = scanner.m_log.rbegin(); line != scanner.m_log.rend(); ++line) {
            if (text.size() + line->size() > maxLogText)
                break;
            text = text.empty() ? *line : *line + "\n" + text;
        }
        return true;
    }

    static const std::array<Command, 16>& all()
    {
        static const std::array<Command, 16> commands{{
            {"load", 1, 1, "DIR",
             [](Scanner& s, const Fields& c, std::string& t) { return s.load(c[1], t); }},
            {"empty", 0, 0, "",
             [](Scanner& s, const Fields&, std::string&) { return s.m_state.load({}), true; }},
            {"flatbed", 1, 1, "FILE",
             [](Scanner& s, const Fields& c, std::string& t) { return s.setFlatbed(c[1], t); }},
            {"cover", 1, 1, "open|closed", cover},
            {"busy", 1, 1, "N", busy},
            {"jam-at", 1, 2, "PAGE [BYTES]",
             [](Scanner& s, const Fields& c, std::string& t) { return addFault(s, c, Status::Jammed, t); }},
            {"error-at", 1, 2, "PAGE [BYTES]",
             [](Scanner& s, const Fields& c, std::string& t) { return addFault(s, c, Status::IoError, t); }},
            {"no-docs-at", 1, 2, "PAGE [BYTES]",
             [](Scanner& s, const Fields& c, std::string& t) { return addFault(s, c, Status::NoDocs, t); }},
            {"press", 1, 1, "3", press},
            {"pace", 1, 1, "MS_PER_MIB|real|fast", pace},
            {"unplug", 0, 0, "",
             [](Scanner& s, const Fields&, std::string&) { return s.m_state.unplug(), true; }},
            {"replug", 0, 0, "",
             [](Scanner& s, const Fields&, std::string&) { return s.m_state.replug(), true; }},
            {"clear", 0, 0, "",
             [](Scanner& s, const Fields&, std::string&) { return s.m_state.clear(), true; }},
            {"status", 0, 0, "",
             [](Scanner& s, const Fields&, std::string& t) { return t = s.statusText(), true; }},
            {"log", 0, 0, "", showLog},
            {"model", 1, 1, "NAME",
             [](Scanner& s, const Fields& c, std::string&) { return s.m_setup.model = c[1], true; }},
        }};
        return commands;
    }

    static void logCommand(Scanner& scanner, const Fields& command)
    {
        std::string line = "command";
        for (const std::string& word : command)
            line += " " + word;
        scanner.log(line);
    }
};

Fields runCommand(Scanner& scanner, const Fields& command)
{
    const std::string invalid = std::to_string(static_cast<int>(Status::Invalid));
    for (const Commands::Command& known : Commands::all()) {
        if (command[0] != known.word)
            continue;
        const size_t arguments = command.size() - 1;
        if (arguments < known.minArguments || arguments > known.maxArguments)
            return {invalid, "usage: vscan " + command[0] + " " + known.usage};
        std::string text;
        const bool done = known.handler(scanner, command, text);
        if (command[0] != "status" && command[0] != "log")
            Commands::logCommand(scanner, command);
        return {done ? std::to_string(static_cast<int>(Status::Good)) : invalid, text};
    }
    std::string words;
    for (const Commands::Command& known : Commands::all())
        words += std::string(" ") + known.word;
    return {invalid, command[0] + ": unknown; the commands are" + words};
}

} // namespace vscan
