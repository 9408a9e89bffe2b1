// SPDX-License-Identifier: GPL-3.0-or-later
// Milliseconds per step and page of the default chain, and resident memory before and after many pages.
//
//   bench_steps [--repeat N] [--out DIR] PAGE...
//
// Medians over all pages and repeats, one core: pin it with taskset for steady figures. Pixels are touched
// when a step needs them, so the tone steps are paid for where they are first seen (at the latest when
// saving).
#include "imageconvert/imageconvertfunction.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <opencv2/core/utility.hpp>
#include <string>
#include <vector>

namespace {

struct Step
{
    const char* name;
    std::function<void()> run;
    std::vector<double> ms;
};

// Resident memory in MB, from the kernel's own count.
double residentMb(const char* key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = status.readAll();
    const int at = text.indexOf(key);
    return at < 0 ? 0 : std::strtod(text.constData() + at + std::strlen(key) + 1, nullptr) / 1024;
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<long>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double timed(const std::function<void()>& work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    int repeat = 5;
    QTemporaryDir scratch;
    QString out = scratch.path();
    std::vector<const char*> pages;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--repeat") == 0 && i + 1 < argc)
            repeat = std::max(1, std::atoi(argv[++i]));
        else if (std::strcmp(argv[i], "--out") == 0 && i + 1 < argc)
            out = QFile::decodeName(argv[++i]);
        else
            pages.push_back(argv[i]);
    }
    if (pages.empty()) {
        std::fprintf(stderr, "usage: bench_steps [--repeat N] [--out DIR] PAGE...\n");
        return 2;
    }
    cv::setNumThreads(1);

    ImageConvertFunction library;
    MagickWand* wand = nullptr;
    const char* page = nullptr;
    std::vector<Step> steps = {
        {"read", [&] { wand = library.getImage(page); }, {}},
        {"gamma 1.2", [&] { wand = library.imageGamma(wand, 1.2); }, {}},
        {"light/contrast 15,35", [&] { wand = library.imageLightAndContrast(wand, 15, 35); }, {}},
        {"auto crop", [&] { wand = library.imageAutoCrop(wand); }, {}},
        {"auto dense", [&] { wand = library.imageAutoDense(wand); }, {}},
        {"deskew", [&] { wand = library.imageDeskew(wand); }, {}},
        {"save JPEG", [&] { library.saveImage(wand, out + QLatin1Char('/'), "page", "jpg", 300); }, {}},
        {"free", [&] { library.destroyImage(wand); }, {}},
    };
    std::vector<double> whole;
    int failed = 0;
    double afterFirst = 0;
    const double before = residentMb("VmRSS:");
    for (int round = 0; round < repeat; ++round)
        for (const char* file : pages) {
            page = file;
            double sum = 0;
            for (Step& step : steps) {
                step.ms.push_back(timed(step.run));
                sum += step.ms.back();
                if (!library.lastError().isEmpty()) {
                    std::fprintf(stderr, "%s: %s\n", file, qPrintable(library.lastError()));
                    ++failed;
                }
            }
            whole.push_back(sum);
            if (whole.size() == 1)
                afterFirst = residentMb("VmRSS:");
        }

    std::printf("%-22s %10s %10s\n", "step", "median ms", "worst ms");
    for (const Step& step : steps)
        std::printf("%-22s %10.1f %10.1f\n", step.name, median(step.ms),
                    *std::max_element(step.ms.begin(), step.ms.end()));
    std::printf("%-22s %10.1f %10.1f\n", "page", median(whole),
                *std::max_element(whole.begin(), whole.end()));
    std::printf("\n%zu pages, %d failed\n", whole.size(), failed);
    std::printf(
        "resident memory: start %.0f MB, after the first page %.0f MB, at the end %.0f MB, peak %.0f MB\n",
        before, afterFirst, residentMb("VmRSS:"), residentMb("VmHWM:"));
    return failed == 0 ? 0 : 1;
}
