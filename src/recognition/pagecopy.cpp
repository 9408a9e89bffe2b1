// SPDX-License-Identifier: GPL-3.0-or-later
#include "recognition/pagecopy.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <leptonica/allheaders.h>
#include <opencv2/imgproc.hpp>

namespace {

// Found by trial, see docs/recognition.md.
constexpr int kAside = 2;           // page pixels of surroundings shown at each side,
constexpr int kAbove = 3;           // and above and below
constexpr int kPaper = 4;           // pixels of plain paper around the reduced strip, at least
constexpr double kStripHeight = 24; // pixels: the engine errs least on lines of about this height,
constexpr double kLeastScale = 0.5; // but a box may hold several lines
constexpr double kNoisyAbove = 16;  // grey levels
constexpr double kUseless = 0.2;    // a box that would be reduced further is shown as it is

PixOwner clip(Pix* page, const cv::Rect& part)
{
    Box* box = boxCreate(part.x, part.y, part.width, part.height);
    PixOwner clipped(pixClipRectangle(page, box, nullptr));
    boxDestroy(&box);
    return clipped;
}

void paste(Pix* page, const cv::Point& at, Pix* part)
{
    pixRasterop(page, at.x, at.y, pixGetWidth(part), pixGetHeight(part), PIX_SRC, part, 0, 0);
}

// Without sharpening, unlike the library's plain scaling.
PixOwner reduce(Pix* strip, double scale)
{
    const auto factor = static_cast<float>(scale);
    return PixOwner(pixScaleGeneral(strip, factor, factor, 0, 0));
}

// The grey of the paper: most of a strip of text is paper, whichever of both is brighter.
unsigned paperGrey(Pix* strip)
{
    float grey = 255;
    Numa* histogram = pixGetGrayHistogram(strip, 2);
    numaHistogramGetValFromRank(histogram, 0.6F, &grey);
    numaDestroy(&histogram);
    return static_cast<unsigned>(std::clamp(grey, 0.F, 255.F));
}

// The noise of `page` in grey levels: from the median difference of a pixel from the mean of its neighbours,
// which on most of a page are paper as it is (0.6745 sigma of a normal distribution, whose variance is 1.5
// fold).
double noiseOf(Pix* page)
{
    constexpr int kStep = 7; // every 49th pixel will do
    std::array<int, 511> counts{};
    int all = 0;
    for (int y = 0; y < pixGetHeight(page); y += kStep) {
        const l_uint32* line = pixGetData(page) + static_cast<std::ptrdiff_t>(y) * pixGetWpl(page);
        for (int x = 1; x + 1 < pixGetWidth(page); x += kStep, ++all) {
            const int twice =
                2 * GET_DATA_BYTE(line, x) - GET_DATA_BYTE(line, x - 1) - GET_DATA_BYTE(line, x + 1);
            ++counts[static_cast<std::size_t>(std::abs(twice))];
        }
    }
    std::size_t median = 0;
    for (int below = counts[0]; 2 * below < all; below += counts[median])
        ++median;
    return static_cast<double>(median) / 2 / 0.6745 / std::sqrt(1.5);
}

// On grainy pages the engine takes minutes to find lines (and cannot be stopped): these are low-passed.
PixOwner calmed(PixOwner page)
{
    if (!page || noiseOf(page.get()) <= kNoisyAbove)
        return page;
    PixOwner calm(pixBlockconv(page.get(), 1, 1));
    return calm ? std::move(calm) : std::move(page);
}

} // namespace

void PixDeleter::operator()(Pix* pix) const
{
    pixDestroy(&pix);
}

PixOwner pageCopy(const std::string& file)
{
    const PixOwner page(pixRead(file.c_str()));
    return calmed(PixOwner(page ? pixConvertTo8(page.get(), 0) : nullptr));
}

PixOwner pageCopy(const cv::Mat& page)
{
    if (page.empty() || (page.type() != CV_8UC1 && page.type() != CV_8UC3))
        return nullptr;
    cv::Mat grey = page;
    if (page.type() == CV_8UC3)
        cv::cvtColor(page, grey, cv::COLOR_BGR2GRAY);
    PixOwner copy(pixCreate(grey.cols, grey.rows, 8));
    if (!copy)
        return nullptr;
    // Lines are made of 32-bit words whose first pixel is the highest byte.
    const std::size_t wordsPerLine = static_cast<std::size_t>(pixGetWpl(copy.get()));
    for (int y = 0; y < grey.rows; ++y)
        std::memcpy(pixGetData(copy.get()) + static_cast<std::size_t>(y) * wordsPerLine, grey.ptr(y),
                    static_cast<std::size_t>(grey.cols));
    pixEndianByteSwap(copy.get());
    return calmed(std::move(copy));
}

BoxMargin::BoxMargin(Pix* page, const cv::Rect& box)
    : m_page(page), m_box(box), m_shown(box), m_origin(box.tl())
{
    const cv::Rect whole(0, 0, pixGetWidth(page), pixGetHeight(page));
    const cv::Rect shown =
        cv::Rect(box.x - kAside, box.y - kAbove, box.width + 2 * kAside, box.height + 2 * kAbove) & whole;
    const double wanted = std::clamp(kStripHeight / shown.height, kLeastScale, 1.0);
    const double scale = std::min(
        {wanted, (box.height - 2.0 * kPaper) / shown.height, (box.width - 2.0 * kPaper) / shown.width});
    const PixOwner strip = scale > kUseless ? clip(page, shown) : nullptr;
    const PixOwner reduced = strip ? reduce(strip.get(), scale) : nullptr;
    const PixOwner paper(pixCreate(box.width, box.height, 8));
    PixOwner kept = clip(page, box);
    if (!reduced || !paper || !kept)
        return;
    pixSetAllArbitrary(paper.get(), paperGrey(strip.get()));
    m_kept = std::move(kept);
    m_shown = shown;
    m_scale = scale;
    m_origin += cv::Point((box.width - pixGetWidth(reduced.get())) / 2,
                          (box.height - pixGetHeight(reduced.get())) / 2);
    paste(page, box.tl(), paper.get());
    paste(page, m_origin, reduced.get());
}

BoxMargin::~BoxMargin()
{
    if (m_kept)
        paste(m_page, m_box.tl(), m_kept.get());
}

int BoxMargin::toPage(int x) const
{
    return m_shown.x + static_cast<int>(std::lround((x - m_origin.x) / m_scale));
}
