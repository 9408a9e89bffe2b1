// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/pictureerror.h"

namespace imageconvert {

// A document failed because of one of its page files.
class PageError : public PictureError
{
public:
    PageError(const PictureError& error, const std::string& page)
        : PictureError(error.what(), error.diskFull()), m_page(page)
    {
    }
    const std::string& page() const { return m_page; }

private:
    std::string m_page;
};

// Runs `work`, which reads a page file; what goes wrong with it carries the page's path.
template <class Work>
auto aboutPage(const std::string& page, Work work)
{
    try {
        return work();
    } catch (const PictureError& error) {
        throw PageError(error, page);
    }
}

} // namespace imageconvert
