// SPDX-License-Identifier: GPL-3.0-or-later
#include "recognition/pagecopy.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <leptonica/allheaders.h>

static int envi(const char* n, int d) { const char* v = getenv(n); return v ? atoi(v) : d; }

namespace {

PixOwner clip(Pix* page, const cv::Rect& part)
{
    Box* box = boxCreate(part.x, part.y, part.width, part.height);
    PixOwner clipped(pixClipRectangle(page, box, nullptr));
    boxDestroy(&box);
    return clipped;
}

void paste(Pix* page, const cv::Rect& at, Pix* part)
{
    pixRasterop(page, at.x, at.y, at.width, at.height, PIX_SRC, part, 0, 0);
}

PixOwner lowpass(PixOwner in)
{
    int m = envi("LP", 0);
    if (!m || !in) return in;
    if (m == 1) return PixOwner(pixBlockconv(in.get(), 1, 1));
    if (m == 2) { // binomial 3x3
        L_KERNEL* k = makeGaussianKernel(1, 1, 0.7f, 1.0f);
        PixOwner o(pixConvolve(in.get(), k, 8, 1)); kernelDestroy(&k); return o; }
    if (m == 3) { // halve and double
        PixOwner h(pixScaleAreaMap2(in.get()));
        PixOwner o(pixScaleGray2xLI(h.get()));
        PixOwner same(pixCopy(nullptr, in.get()));
        pixRasterop(same.get(), 0, 0, pixGetWidth(o.get()), pixGetHeight(o.get()), PIX_SRC, o.get(), 0, 0);
        return same; }
    if (m == 4) return PixOwner(pixBlockconv(in.get(), 2, 2));
    return in;
}

} // namespace

void PixDeleter::operator()(Pix* pix) const
{
    pixDestroy(&pix);
}

PixOwner pageCopy(const std::string& file)
{
    const PixOwner page(pixRead(file.c_str()));
    return page ? lowpass(PixOwner(pixConvertTo8(page.get(), 0))) : nullptr;
}

PixOwner pageCopy(const cv::Mat&) { return nullptr; }

static double median(Pix* p)
{
    float v = 255; Numa* h = pixGetGrayHistogram(p, 2); float r; (void)r;
    numaHistogramGetValFromRank(h, 0.6f, &v); numaDestroy(&h); return v;
}

BoxMargin::BoxMargin(Pix* page, const cv::Rect& box) : m_page(page), m_box(box), m_shown(box)
{
    const int mode = envi("MODE", 1), mx = envi("MX", 3), my = envi("MY", 6);
    if (mode == 0) return;
    m_kept = clip(page, box);
    const cv::Rect whole(0, 0, pixGetWidth(page), pixGetHeight(page));
    const int pad = envi("PAD", 0);
    m_shown = cv::Rect(box.x - mx, box.y - my, box.width + 2 * mx, box.height + 2 * my) & whole;
    PixOwner part = clip(page, m_shown);
    if (mode == 1) { // anisotropic
        PixOwner s(pixScaleGeneral(part.get(), box.width / float(m_shown.width), box.height / float(m_shown.height), 0, 0));
        paste(page, box, s.get());
    } else if (mode == 2 || mode == 3) { // isotropic with background, pad px white border around
        const float sc = std::min((box.width - 2.f * pad) / m_shown.width, (box.height - 2.f * pad) / m_shown.height);
        PixOwner s(pixScaleGeneral(part.get(), sc, sc, 0, 0));
        PixOwner bg(pixCreate(box.width, box.height, 8));
        pixSetAllArbitrary(bg.get(), (unsigned)median(part.get()));
        pixRasterop(bg.get(), mode == 3 ? 0 : (box.width - pixGetWidth(s.get())) / 2, (box.height - pixGetHeight(s.get())) / 2,
            pixGetWidth(s.get()), pixGetHeight(s.get()), PIX_SRC, s.get(), 0, 0);
        paste(page, box, bg.get());
    } else if (mode == 4) { // anisotropic with pad
        PixOwner s(pixScaleGeneral(part.get(), (box.width - 2 * pad) / float(m_shown.width), (box.height - 2 * pad) / float(m_shown.height), 0, 0));
        PixOwner bg(pixCreate(box.width, box.height, 8));
        pixSetAllArbitrary(bg.get(), (unsigned)median(part.get()));
        pixRasterop(bg.get(), pad, pad, pixGetWidth(s.get()), pixGetHeight(s.get()), PIX_SRC, s.get(), 0, 0);
        paste(page, box, bg.get());
    }
}

BoxMargin::~BoxMargin()
{
    if (m_kept) paste(m_page, m_box, m_kept.get());
}

int BoxMargin::toPage(int x) const { return m_shown.x + cvRound((x - m_box.x) * double(m_shown.width) / m_box.width); }
