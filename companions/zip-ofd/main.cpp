// SPDX-License-Identifier: GPL-3.0-or-later
// zip-ofd DIR NAME: packs the loose parts of an OFD document into one file. See docs/man/zip-ofd.1.
#include "config/ofdparts.h"
#include "imageconvert/pictureerror.h"
#include "packing.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

constexpr char kHelp[] = "Usage: zip-ofd [--keep] DIR NAME\n"
                         "\n"
                         "Packs DIR/OFD.xml and the folder DIR/Doc_0 into DIR/NAME, then removes them.\n"
                         "\n"
                         "  --keep   leave the loose parts where they are\n"
                         "  --help   show this text\n"
                         "\n"
                         "Exit status: 0 packed; 1 nothing was packed, the parts are untouched; 2 wrong\n"
                         "arguments; 3 packed, but the parts could not be removed; 4 as 1, for lack of\n"
                         "disk space.\n";

enum ExitStatus
{
    kPacked = 0,
    kFailed = 1,
    kUsage = 2,
    kNotRemoved = ofdparts::kPartsRemain,
    kDiskFull = ofdparts::kDiskFull
};

int run(const std::string& folder, const std::string& name, bool keep)
{
    try {
        packParts(folder, name);
    } catch (const imageconvert::PictureError& error) {
        std::fprintf(stderr, "zip-ofd: %s\n", error.what());
        return error.diskFull() ? kDiskFull : kFailed;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zip-ofd: %s\n", error.what());
        return kFailed;
    }
    try {
        if (!keep)
            removeParts(folder);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zip-ofd: %s was written, but its parts remain: %s\n", name.c_str(),
                     error.what());
        return kNotRemoved;
    }
    return kPacked;
}

} // namespace

int main(int argc, char** argv)
{
    bool keep = false, onlyNames = false;
    std::vector<std::string> names;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (!onlyNames && word == "--help") {
            std::fputs(kHelp, stdout);
            return kPacked;
        }
        if (!onlyNames && word == "--")
            onlyNames = true;
        else if (!onlyNames && word == "--keep")
            keep = true;
        else if (!onlyNames && names.empty() && word.size() > 1 && word[0] == '-') {
            std::fprintf(stderr, "zip-ofd: unknown option %s\n\n%s", word.c_str(), kHelp);
            return kUsage;
        } else
            names.push_back(word);
    }
    if (names.size() != 2) {
        std::fputs(kHelp, stderr);
        return kUsage;
    }
    return run(names[0], names[1], keep);
}
