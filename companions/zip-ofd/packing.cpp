// SPDX-License-Identifier: GPL-3.0-or-later
#include "packing.h"

#include "config/ofdparts.h"
#include "imageconvert/zippackage.h"

#include <algorithm>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;
using imageconvert::ZipPackage;

namespace {

void checkName(const std::string& name)
{
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos)
        throw PackingError("\"" + name + "\" is not the name of a file in the folder");
    if (name == ofdparts::kEntry || name == ofdparts::kTree || name == ofdparts::kMark)
        throw PackingError("the package cannot have the name of one of its parts, " + name);
}

void checkParts(const fs::path& folder)
{
    if (!fs::is_directory(folder))
        throw PackingError(folder.string() + " is not a folder");
    if (!fs::is_regular_file(fs::symlink_status(folder / ofdparts::kEntry)))
        throw PackingError("there is no " + (folder / ofdparts::kEntry).string());
    if (!fs::is_directory(fs::symlink_status(folder / ofdparts::kTree)))
        throw PackingError("there is no folder " + (folder / ofdparts::kTree).string());
}

// Pictures are compressed already.
ZipPackage::Method methodFor(const fs::path& file)
{
    const std::string type = file.extension();
    const bool picture = type == ".jpg" || type == ".jpeg" || type == ".png" || type == ".jb2";
    return picture ? ZipPackage::Method::Store : ZipPackage::Method::Deflate;
}

void add(ZipPackage& package, const fs::directory_entry& entry, const fs::path& folder)
{
    const fs::file_status status = entry.symlink_status(); // a link could lead out of the folder
    const std::string name = entry.path().lexically_relative(folder).generic_string();
    if (fs::is_directory(status)) {
        if (fs::is_empty(entry.path()))
            package.addFolder(name);
    } else if (fs::is_regular_file(status)) {
        package.addFile(name, entry.path(), methodFor(entry.path()));
    } else {
        throw PackingError(entry.path().string() + " is neither a file nor a folder");
    }
}

} // namespace

void packParts(const std::string& folderName, const std::string& name)
{
    checkName(name);
    const fs::path folder = fs::path(folderName).lexically_normal();
    checkParts(folder);
    std::vector<fs::directory_entry> entries;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder / ofdparts::kTree))
        entries.push_back(entry);
    std::sort(entries.begin(), entries.end());

    ZipPackage package(folder / name);
    add(package, fs::directory_entry(folder / ofdparts::kEntry), folder);
    if (entries.empty())
        package.addFolder(ofdparts::kTree);
    for (const fs::directory_entry& entry : entries)
        add(package, entry, folder);
    package.write();
}

void removeParts(const std::string& folderName)
{
    const fs::path folder(folderName);
    fs::remove_all(folder / ofdparts::kTree);
    fs::remove(folder / ofdparts::kEntry);
    fs::remove(folder / ofdparts::kMark);
}
