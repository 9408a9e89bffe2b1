// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>
#include <string>

// Why nothing was packed.
class PackingError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Packs `folder`/OFD.xml and the tree `folder`/Doc_0 into `folder`/`name`, which appears whole or not at all
// and replaces an older file. Empty folders become entries. Throws PackingError (or another std::exception);
// then the parts are untouched.
void packParts(const std::string& folder, const std::string& name);

// Removes the parts and their mark file, the mark last. Throws std::filesystem::filesystem_error.
void removeParts(const std::string& folder);
