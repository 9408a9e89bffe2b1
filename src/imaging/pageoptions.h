// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "output/savetype.h"

#include <QString>
#include <optional>

class QSettings;

// Everything the page pipeline needs to know about one page: no widget, no settings file. Filled afresh for
// every page, so a change in a dialog takes effect on the next one.
struct PageOptions
{
    static constexpr int kNeutralThreshold = 130;

    enum Filter
    {
        Blur = 2,
        BlurMore = 3,
        Sharpen = 4,
        SharpenMore = 5
    }; // other values change nothing

    // A rotation label: used when it is enabled. Both disabled: automatic orientation.
    struct Turn
    {
        bool enabled = false;
        double clockwiseDegrees = 0;
    };
    struct Border
    {
        bool on = false;
        bool inside = false; // else around the frame
        int red = 255;       // 0 to 255
        int green = 255;
        int blue = 255;
        double topMm = 0;
        double leftMm = 0;
    };
    struct CustomPaper
    {
        bool on = false;
        double widthCm = 0;
        double heightCm = 0;
        bool leftUp = false;
    };

    double gamma = 1.0;
    double brightness = 0; // percent
    double contrast = 0;   // percent
    bool autoCrop = false;
    bool deleteBlank = false;
    int blankLevel = 0; // 1 to 15, else never
    int filter = 0;
    Turn frontTurn;
    Turn backTurn;
    bool autoDense = false;
    bool deskew = false;
    bool deleteBackground = false;
    int backgroundStrength = 0;
    bool characterEnhance = false;
    int enhanceStrength = 0;
    bool redFile = false;
    int dpi = 300;                    // the resolution field: what the finished page has
    int scanDpi = 300;                // what the page file has
    bool customResolution = false;    // the page is resampled to `dpi`
    bool scannedFinerThan400 = false; // 400 was chosen: the device delivers 600
    CustomPaper paper;

    bool merge = false; // front and back of a sheet become one picture
    bool split = false;
    int splitCount = 0;
    bool horizontal = false; // direction of merge and split
    Border border;
    ColorMode colorMode = ColorMode::Color;
    int blackWhiteThreshold = kNeutralThreshold;
    int noiseSize = 0; // 0: no despeckling of two-level pages

    QString folder;   // ends in "/"
    QString saveType; // "jpg", "tif", "png", "bmp"
    std::optional<QString> compression;
    bool replaceExisting = false;
    bool startApplication = false;
    QString applicationCommand;
    bool extraCopies = false;
    int greyCopyDpi = 300;
    int blackWhiteCopyDpi = 300;
    bool preview = false;
};

// The settings groups that a function of one page (scan or file) of the window reads its pipeline settings
// from.
struct PageSettingsGroups
{
    QString paperSize;                 // for example "Scan_Scan_PaperSize"
    QString deNoise;                   // for example "Scan_DeNoise"
    std::optional<int> noiseMode = {}; // where a control chooses it: 0 none, 1 custom, 2 automatic
};

// Adds what stands in the settings file: strengths, blank level, split count, border, custom paper, noise,
// resolutions of the extra copies. `customThreshold`: the threshold control is on "custom".
// The switches of `options` are left alone.
void readPipelineSettings(PageOptions& options, QSettings& settings, const PageSettingsGroups& names,
                          bool customThreshold);

// The size of the specks that are removed, in pixels at 300 dpi; 0: none. `mode`: 0 none, 1 custom, 2
// automatic; `level`: 1 to 3 of the custom mode.
int noiseSize(int mode, int level);

// What is cut out of an A4 scan for a custom paper size, in centimetres; nothing: the page is left whole.
struct PaperCut
{
    double widthCm;
    double heightCm;
};
std::optional<PaperCut> customCut(const PageOptions::CustomPaper& paper);

// The pair (darkness, percent) of a blank-page level 1 to 15; nothing for any other level.
struct BlankLimits
{
    int darkness;
    double percent;
};
std::optional<BlankLimits> blankLimits(int level);
