// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <opencv2/core.hpp>
#include <string>

struct Pix;

// The engine's copy of a page: what it is shown instead of the page as scanned.

struct PixDeleter
{
    void operator()(Pix* pix) const;
};
using PixOwner = std::unique_ptr<Pix, PixDeleter>;

// The page as 8-bit grey, low-passed when it is noisy; empty when the file cannot be read or the matrix is
// neither CV_8UC1 nor CV_8UC3.
PixOwner pageCopy(const std::string& file);
PixOwner pageCopy(const cv::Mat& page);

// While it lives, the part of `page` (8-bit grey) inside `box` shows its text reduced to the height
// that the engine reads best, in the middle of plain paper. The engine loses most of the text of a box that
// ends where its ink does. Uses Leptonica and plain memory only, so that a forked child may use it.
class BoxMargin
{
public:
    BoxMargin(Pix* page, const cv::Rect& box);
    ~BoxMargin(); // puts the page's own pixels back
    BoxMargin(const BoxMargin&) = delete;
    BoxMargin& operator=(const BoxMargin&) = delete;

    // The page's column that stands at column x of the repainted box.
    int toPage(int x) const;

private:
    Pix* m_page;
    cv::Rect m_box;
    cv::Rect m_shown;   // of the page
    cv::Point m_origin; // where its top-left corner is painted
    double m_scale = 1; // painted / shown
    PixOwner m_kept;
};
