// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

// The ten scan parameters, in the order in which they are handed around.
struct ScanParameters
{
    int resolution = 0; // dpi
    int source = 0;     // ScanSource
    int paperSize = 0;  // 1 full, 2 A4, 3 Letter, 4 A5, 5 B5, 6 legal, 7 user-defined
    int imageType = 0;  // 1 text, 2 picture, 3 text and picture
    int colorMode = 0;  // 1 colour, 2 grey, 3 black and white
    int option9 = 0;    // 1 on, 2 off
    int rotation = 0;   // 1 none, 2 left 90 degrees, 3 right 90 degrees, 4 180 degrees
    int edgeFill = 0;   // 1 none, 2 white border, 3 black border
    int option12 = 0;   // 1 none, 2 to 10 the levels 0.1 to 0.9
    int option13 = 0;   // 1 off, 2 on
};

namespace scansource {
enum Source
{
    Flatbed = 1,
    FeederFront = 2,
    FeederBack = 3,
    FeederDuplex = 4,
    Automatic = 5
};
}

// One option by its number in the backend's option list, with a value in the backend's vocabulary.
struct StringOption
{
    int number;
    std::string value;
};

namespace scanoptions {

constexpr int resolutionOption = 1;
constexpr int sourceOption = 2;

// Whether the scanner offers this resolution.
bool isResolution(int dpi);

// All options but the resolution, in the order of setting. A parameter outside its values has no entry, so
// that its option keeps what the device has.
std::vector<StringOption> stringOptions(const ScanParameters& parameters);

// The value of the source option that selects the glass.
std::string flatbed();

} // namespace scanoptions
