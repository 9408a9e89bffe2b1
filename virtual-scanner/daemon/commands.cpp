// SPDX-License-Identifier: GPL-3.0-or-later
// The commands that control the scanner: one table of words, each with the function that carries it out.

#include "scanner.h"
#include "usb/channelcommands.h"

#include <array>
#include <filesystem>
#include <functional>

namespace vscan {

namespace {
constexpr int clearKey = 3; // of the keys on the case, the one that cancels
constexpr size_t maxWords = 80;
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

    static bool usbSide(const Scanner& scanner, std::string& text)
    {
        if (!scanner.m_usb)
            text = "this scanner has no USB side";
        return scanner.m_usb;
    }

    static bool press(Scanner& scanner, const Fields& command, std::string& text)
    {
        const long long key = number(command, 1, -1);
        if (key < 0 || key > 255) {
            text = command[1] + ": a key has a number from 0 to 255";
            return false;
        }
        if (key == clearKey && scanner.m_state.pressCancel())
            return true;
        if (!usbSide(scanner, text))
            return key == clearKey; // which ends a scan, or does nothing
        if (!scanner.m_state.plugged()) {
            text = "the scanner is unplugged";
            return false;
        }
        scanner.m_channel.press(static_cast<uint8_t>(key));
        return true;
    }

    static bool usb(Scanner& scanner, const Fields& command, std::string& text)
    {
        return usbSide(scanner, text) && usbCommand(scanner.m_channel, command, text);
    }

    static bool unplug(Scanner& scanner, const Fields&, std::string&)
    {
        scanner.m_state.unplug();
        if (scanner.m_usb)
            scanner.m_usb->unplug();
        return true;
    }

    static bool replug(Scanner& scanner, const Fields&, std::string& text)
    {
        scanner.m_state.replug();
        if (!scanner.m_usb || scanner.m_usb->plug())
            return true;
        text = "the USB side cannot be plugged in";
        return false;
    }

    static bool clear(Scanner& scanner, const Fields&, std::string&)
    {
        scanner.m_state.clear();
        scanner.m_channel.clearFaults();
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

    static const std::array<Command, 18>& all()
    {
        static const std::array<Command, 18> commands{{
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
            {"press", 1, 1, "KEY", press},
            {"pace", 1, 1, "MS_PER_MIB|real|fast", pace},
            {"unplug", 0, 0, "", unplug},
            {"replug", 0, 0, "", replug},
            {"clear", 0, 0, "", clear},
            {"usb", 1, maxWords, "FAULT...", usb},
            {"counters", 0, 4, "[scan|roller|pad|standby=VALUE]...",
             [](Scanner& s, const Fields& c, std::string& t) { return countersCommand(s.m_wear, c, t); }},
            {"status", 0, 0, "",
             [](Scanner& s, const Fields&, std::string& t) { return t = s.statusText(), true; }},
            {"log", 0, 0, "",
             [](Scanner& s, const Fields&, std::string& t) { return t = s.m_log.text(maxLogText), true; }},
            {"model", 1, 1, "NAME",
             [](Scanner& s, const Fields& c, std::string&) { return s.m_setup.model = c[1], true; }},
        }};
        return commands;
    }

    static void wakeUsb(const Scanner& scanner)
    {
        if (scanner.m_usb)
            scanner.m_usb->wake();
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
        if (command[0] != "status" && command[0] != "log" && command[0] != "counters")
            Commands::logCommand(scanner, command);
        Commands::wakeUsb(scanner);
        return {done ? std::to_string(static_cast<int>(Status::Good)) : invalid, text};
    }
    std::string words;
    for (const Commands::Command& known : Commands::all())
        words += std::string(" ") + known.word;
    return {invalid, command[0] + ": unknown; the commands are" + words};
}

} // namespace vscan
