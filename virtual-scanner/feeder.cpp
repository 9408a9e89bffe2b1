// SPDX-License-Identifier: GPL-3.0-or-later
#include "feeder.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <map>

namespace fs = std::filesystem;

namespace vscan {

namespace {

constexpr std::array<const char*, 7> extensions{".pnm", ".pbm", ".pgm", ".ppm", ".png", ".jpg", ".jpeg"};
constexpr size_t mostDigits = 9;

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool isPicture(const fs::path& file)
{
    return std::find(extensions.begin(), extensions.end(), lowerCase(file.extension().string())) !=
           extensions.end();
}

// NNN-front or NNN-back: the number and the side; false for other names.
bool parseSide(const fs::path& file, long& sheet, bool& front)
{
    const std::string stem = lowerCase(file.stem().string());
    const size_t digits = std::min(stem.find_first_not_of("0123456789"), stem.size());
    const std::string side = stem.substr(digits);
    if (digits == 0 || digits > mostDigits || (side != "-front" && side != "-back"))
        return false;
    sheet = std::stol(stem.substr(0, digits));
    front = side == "-front";
    return true;
}

std::vector<fs::path> picturesIn(const std::string& folder, std::string& error)
{
    std::vector<fs::path> pictures;
    std::error_code failure;
    for (fs::directory_iterator it(folder, failure), end; !failure && it != end; it.increment(failure)) {
        std::error_code ignored;
        if (it->is_regular_file(ignored) && isPicture(it->path()))
            pictures.push_back(fs::absolute(it->path(), ignored));
    }
    if (failure)
        error = folder + ": " + failure.message();
    else if (pictures.empty())
        error = folder + ": no PNM, PNG or JPEG pictures";
    std::sort(pictures.begin(), pictures.end());
    return failure ? std::vector<fs::path>() : pictures;
}

} // namespace

std::vector<Sheet> sheetsOf(const std::string& folder, std::string& error)
{
    const std::vector<fs::path> pictures = picturesIn(folder, error);
    std::map<long, Sheet> numbered;
    for (const fs::path& picture : pictures) {
        long number = 0;
        bool front = false;
        if (parseSide(picture, number, front))
            (front ? numbered[number].front : numbered[number].back) = picture.string();
    }
    std::vector<Sheet> sheets;
    for (auto& entry : numbered)
        sheets.push_back(std::move(entry.second));
    if (numbered.empty()) {
        for (const fs::path& picture : pictures)
            sheets.push_back({picture.string(), {}});
    }
    return sheets;
}

} // namespace vscan
