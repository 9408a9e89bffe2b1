// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace imageconvert {

// A zip file that appears whole or not at all (see OutputFile). Entries are stored or deflated, their
// names UTF-8 with "/" between folders. Contents are read when write() needs them, one after the other.
// All operations throw PictureError.
class ZipPackage
{
public:
    enum class Method
    {
        Store,
        Deflate
    };

    explicit ZipPackage(const std::string& path);
    ~ZipPackage(); // not written: nothing is left
    ZipPackage(const ZipPackage&) = delete;
    ZipPackage& operator=(const ZipPackage&) = delete;

    void addFolder(const std::string& name);
    void addText(const std::string& name, std::string content);
    void addFile(const std::string& name, const std::string& path, Method method);
    // `content` is called while the package is written and may throw.
    void addLazily(const std::string& name, std::function<std::string()> content, Method method);

    // `progress` gets the share that is done, 0 to 1; false cancels.
    void write(const std::function<bool(double)>& progress = nullptr);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace imageconvert
