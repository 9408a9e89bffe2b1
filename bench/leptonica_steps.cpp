// SPDX-License-Identifier: GPL-3.0-or-later
// The nearest steps that Leptonica offers, over files, so that run_bench.py can compare them with ours.
//
//   leptonica_steps STEP OUT_FOLDER FILE...      (leptonica_steps --list names the steps)
//
// Reads each file, runs the step, writes OUT_FOLDER/page.bmp (the chain and "jpeg": page.jpg, quality 85).
#include <cstdio>
#include <cstring>
#include <functional>
#include <leptonica/allheaders.h>
#include <map>
#include <memory>
#include <string>

namespace {

struct PixCloser
{
    void operator()(Pix* pix) const { pixDestroy(&pix); }
};
using PixPtr = std::unique_ptr<Pix, PixCloser>;
using Step = std::function<PixPtr(Pix*)>;

PixPtr grey(Pix* page)
{
    return PixPtr(pixConvertTo8(page, 0));
}

PixPtr sauvola(Pix* page)
{
    Pix* twoLevels = nullptr;
    pixSauvolaBinarizeTiled(grey(page).get(), 12, 0.34f, 1, 1, nullptr, &twoLevels);
    return PixPtr(twoLevels);
}

PixPtr otsu(Pix* page)
{
    Pix* twoLevels = nullptr;
    pixOtsuAdaptiveThreshold(grey(page).get(), 300, 300, 0, 0, 0.1f, nullptr, &twoLevels);
    return PixPtr(twoLevels);
}

// Cuts to what is brighter than the bed.
PixPtr cropped(Pix* page)
{
    const PixPtr small(pixScaleAreaMap(page, 0.25f, 0.25f));
    const PixPtr dark(pixThresholdToBinary(grey(small.get()).get(), 128));
    const PixPtr light(pixInvert(nullptr, dark.get()));
    Box* found = nullptr;
    pixClipToForeground(light.get(), nullptr, &found);
    Box* whole = found ? boxTransform(found, 0, 0, 4, 4) : nullptr;
    PixPtr out(whole ? pixClipRectangle(page, whole, nullptr) : pixClone(page));
    boxDestroy(&found);
    boxDestroy(&whole);
    return out;
}

PixPtr chain(Pix* page)
{
    PixPtr toned(pixGammaTRC(nullptr, page, 1.1f, 0, 255));
    pixContrastTRC(toned.get(), toned.get(), 0.05f);
    return PixPtr(pixDeskew(cropped(toned.get()).get(), 0));
}

const std::map<std::string, Step>& steps()
{
    static const std::map<std::string, Step> all{
        {"none", [](Pix* p) { return PixPtr(pixClone(p)); }},
        {"jpeg", [](Pix* p) { return PixPtr(pixClone(p)); }},
        {"chain", chain},
        {"gamma", [](Pix* p) { return PixPtr(pixGammaTRC(nullptr, p, 1.1f, 0, 255)); }},
        {"contrast", [](Pix* p) { return PixPtr(pixContrastTRC(nullptr, p, 0.05f)); }},
        {"crop", cropped},
        {"deskew", [](Pix* p) { return PixPtr(pixDeskew(p, 0)); }},
        {"blur", [](Pix* p) { return PixPtr(pixBlockconv(p, 1, 1)); }},
        {"sharpen", [](Pix* p) { return PixPtr(pixUnsharpMasking(p, 2, 0.5f)); }},
        {"rotate90", [](Pix* p) { return PixPtr(pixRotate90(p, 1)); }},
        {"rotate3",
         [](Pix* p) { return PixPtr(pixRotate(p, 0.0524f, L_ROTATE_AREA_MAP, L_BRING_IN_WHITE, 0, 0)); }},
        {"resample", [](Pix* p) { return PixPtr(pixScaleAreaMap(p, 0.6667f, 0.6667f)); }},
        {"grey", grey},
        {"background", [](Pix* p) { return PixPtr(pixBackgroundNormSimple(p, nullptr, nullptr)); }},
        {"sauvola", sauvola},
        {"otsu", otsu},
        {"despeckle",
         [](Pix* p) {
             return PixPtr(
                 pixSelectBySize(otsu(p).get(), 3, 3, 8, L_SELECT_IF_EITHER, L_SELECT_IF_GT, nullptr));
         }},
    };
    return all;
}

bool run(const std::string& name, const Step& step, const std::string& folder, const char* file)
{
    const PixPtr page(pixRead(file));
    const PixPtr made = page ? step(page.get()) : nullptr;
    if (!made)
        return false;
    if (name == "chain" || name == "jpeg")
        return pixWriteJpeg((folder + "/page.jpg").c_str(), made.get(), 85, 0) == 0;
    return pixWrite((folder + "/page.bmp").c_str(), made.get(), IFF_BMP) == 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && std::strcmp(argv[1], "--list") == 0) {
        for (const auto& [name, step] : steps())
            std::printf("%s\n", name.c_str());
        return 0;
    }
    const auto found = argc > 3 ? steps().find(argv[1]) : steps().end();
    if (found == steps().end()) {
        std::fprintf(stderr, "usage: leptonica_steps STEP OUT_FOLDER FILE...\n");
        return 2;
    }
    int failed = 0;
    for (int i = 3; i < argc; ++i)
        if (!run(found->first, found->second, argv[2], argv[i])) {
            std::fprintf(stderr, "%s: failed\n", argv[i]);
            ++failed;
        }
    return failed == 0 ? 0 : 1;
}
