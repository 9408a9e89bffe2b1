// SPDX-License-Identifier: GPL-3.0-or-later
#include "feeder.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>

namespace fs = std::filesystem;

namespace vscan {

namespace {

std::vector<fs::path> picturesIn(const std::string& folder, std::string& error)
{
    static const std::regex picture(R"(.*\.(pnm|pbm|pgm|ppm|png|jpg|jpeg))", std::regex::icase);
    std::vector<fs::path> pictures;
    std::error_code failure;
    for (fs::directory_iterator it(folder, failure), end; !failure && it != end; it.increment(failure)) {
        std::error_code ignored;
        if (it->is_regular_file(ignored) && std::regex_match(it->path().filename().string(), picture))
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
    static const std::regex sided(R"((\d{1,9})-(front|back)\.\w+)", std::regex::icase);
    const std::vector<fs::path> pictures = picturesIn(folder, error);
    std::map<long, Sheet> numbered;
    for (const fs::path& picture : pictures) {
        const std::string name = picture.filename().string();
        std::smatch parts;
        if (!std::regex_match(name, parts, sided))
            continue;
        Sheet& sheet = numbered[std::stol(parts[1])];
        const bool front = parts[2].str()[0] == 'f' || parts[2].str()[0] == 'F';
        (front ? sheet.front : sheet.back) = picture.string();
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
