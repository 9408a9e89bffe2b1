// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/pagesize.h"

#include "imageconvert/ofdpaper.h"

#include <algorithm>
#include <cmath>

namespace imageconvert {

namespace {

// ISO 216, JIS P 0138 and ANSI/ASME Y14.1, upright.
const cv::Size2d kPapers[] = {{297, 420}, {210, 297}, {148, 210}, {182, 257}, {215.9, 279.4}, {215.9, 355.6}};

// The larger of the two deviations.
double distance(const cv::Size2d& a, const cv::Size2d& b)
{
    return std::max(std::abs(a.width - b.width), std::abs(a.height - b.height));
}

cv::Size2d inDirectionOf(const cv::Size2d& size, const cv::Size2d& upright)
{
    return size.width > size.height ? cv::Size2d(upright.height, upright.width) : upright;
}

} // namespace

cv::Size2d snappedToPaper(const cv::Size2d& size)
{
    cv::Size2d best = size;
    double nearest = 2.0;
    for (const cv::Size2d& upright : kPapers) {
        const cv::Size2d paper = inDirectionOf(size, upright);
        if (distance(size, paper) <= nearest) {
            nearest = distance(size, paper);
            best = paper;
        }
    }
    return best;
}

cv::Size2d snappedToOfdPaper(const cv::Size2d& size, int paperCode)
{
    const OfdPaper* known = ofdPaper(paperCode);
    if (!known)
        return size;
    const cv::Size2d paper = inDirectionOf(size, cv::Size2d(known->shortSideMm, known->longSideMm));
    return distance(size, paper) <= 3.0 ? paper : size;
}

} // namespace imageconvert
