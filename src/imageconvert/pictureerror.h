// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <stdexcept>
#include <string>

namespace imageconvert {

// Why a picture or document could not be read, changed or written (English, for the log).
class PictureError : public std::runtime_error
{
public:
    explicit PictureError(const std::string& what, bool diskFull = false)
        : std::runtime_error(what), m_diskFull(diskFull)
    {
    }
    bool diskFull() const { return m_diskFull; }

private:
    bool m_diskFull;
};

} // namespace imageconvert
