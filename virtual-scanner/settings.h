// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The scanner's settings: numbers in its option list, words, and what they mean in millimetres and pixels.
// Both sides use them: the backend offers the words, the daemon makes the page.

#include <array>
#include <string>

namespace vscan {

// Position in the option list. The numbers between them are group headings.
enum Option
{
    OptionCount = 0,
    OptResolution = 1,
    OptSource = 2,
    OptPaperSize = 4,
    OptImageType = 6,
    OptColourMode = 7,
    OptSwitch9 = 9,
    OptRotation = 10,
    OptEdgeFill = 11,
    OptLevel12 = 12,
    OptSwitch13 = 13,
    OptionsInList = 14
};

// Indices into the word lists below.
enum class Source
{
    Flatbed,
    AdfFront,
    AdfBack,
    AdfDuplex,
    AutoFeeder
};
enum class Paper
{
    Full,
    A4,
    Letter,
    A5,
    B5,
    Legal,
    User
};
enum class ColourMode
{
    Colour,
    Grey,
    BlackWhite
};
enum class Rotation
{
    None,
    Left90,
    Right90,
    Half
};
enum class EdgeFill
{
    None,
    White,
    Black
};

// Null-terminated, as SANE wants its string lists.
namespace words {
inline constexpr const char* source[] = {
    "Flatbed", "ADF Front", "ADF Back", "ADF Duplex", "Automatic Document Feeder", nullptr};
inline constexpr const char* paperSize[] = {"FULL", "A4", "Letter", "A5", "B5", "LEG", "USER", nullptr};
inline constexpr const char* imageType[] = {"文字效果", "图片效果", "文字和图片", nullptr};
inline constexpr const char* colourMode[] = {"彩色", "灰度", "黑白", nullptr};
inline constexpr const char* onOff[] = {"开", "关", nullptr};
inline constexpr const char* rotation[] = {"正常", "左转90度", "右转90度", "旋转180度", nullptr};
inline constexpr const char* edgeFill[] = {"无", "加白边", "加黑边", nullptr};
inline constexpr const char* level[] = {"无",  "0.1", "0.2", "0.3", "0.4",  "0.5",
                                        "0.6", "0.7", "0.8", "0.9", nullptr};
inline constexpr const char* offOn[] = {"关", "开", nullptr};
} // namespace words

constexpr std::array<int, 7> resolutions{100, 150, 200, 300, 400, 600, 1200};

// The 400 of the option list is served with 600 dpi data.
constexpr int deliveredDpi(int resolution)
{
    return resolution == 400 ? 600 : resolution;
}

struct SizeMm
{
    double width;
    double height;
};

// Scanned area; zero for the sizes that take the whole picture: FULL, and USER, which the client cuts itself.
constexpr SizeMm paperSize(Paper paper)
{
    constexpr SizeMm sizes[] = {{0, 0},     {210, 297},     {215.9, 279.4}, {148, 210},
                                {182, 257}, {215.9, 355.6}, {0, 0}};
    return sizes[static_cast<int>(paper)];
}

constexpr int toPixels(double millimetres, int dpi)
{
    return static_cast<int>(millimetres * dpi / 25.4 + 0.5);
}

// The word lists in the order of the options that have one.
struct WordOption
{
    Option option;
    const char* const* words;
    int defaultIndex;
};
constexpr std::array<WordOption, 9> wordOptions{{{OptSource, words::source, 1},
                                                 {OptPaperSize, words::paperSize, 1},
                                                 {OptImageType, words::imageType, 1},
                                                 {OptColourMode, words::colourMode, 0},
                                                 {OptSwitch9, words::onOff, 1},
                                                 {OptRotation, words::rotation, 0},
                                                 {OptEdgeFill, words::edgeFill, 0},
                                                 {OptLevel12, words::level, 0},
                                                 {OptSwitch13, words::offOn, 0}}};

// Value of every option by its number: the resolution in dpi, else an index into the option's words.
class Settings
{
public:
    Settings()
    {
        m_values[OptResolution] = 300;
        for (const WordOption& option : wordOptions)
            m_values[option.option] = option.defaultIndex;
    }
    int value(Option option) const { return m_values[option]; }
    void set(Option option, int value) { m_values[option] = value; }

    int dpi() const { return deliveredDpi(m_values[OptResolution]); }
    Source source() const { return static_cast<Source>(m_values[OptSource]); }
    Paper paper() const { return static_cast<Paper>(m_values[OptPaperSize]); }
    ColourMode colour() const { return static_cast<ColourMode>(m_values[OptColourMode]); }
    Rotation rotation() const { return static_cast<Rotation>(m_values[OptRotation]); }
    EdgeFill edgeFill() const { return static_cast<EdgeFill>(m_values[OptEdgeFill]); }

private:
    std::array<int, OptionsInList> m_values{};
};

} // namespace vscan
