// SPDX-License-Identifier: GPL-3.0-or-later
#include "recognition/ocrengine.h"

#include <cstdio>
#include <omp.h>
#include <tesseract/baseapi.h>

namespace {

constexpr char kLanguage[] = "chi_sim";
constexpr int kSampleDpi = 300; // said to the engine, which else guesses and prints its guess

} // namespace

OcrEngine::OcrEngine()
{
    omp_set_max_active_levels(0);
    auto api = std::make_unique<tesseract::TessBaseAPI>();
    if (api->Init(nullptr, kLanguage, tesseract::OEM_DEFAULT) == 0)
        m_api = std::move(api);
    else
        std::fprintf(stderr, "text recognition: cannot load the language model \"%s\"\n", kLanguage);
}

OcrEngine::~OcrEngine()
{
    if (!m_api)
        return;
    m_api->Clear();
    m_api->End();
}

OcrEngine::Reading OcrEngine::read(const cv::Mat& image)
{
    Reading reading;
    if (!m_api || image.empty())
        return reading;
    m_api->SetImage(image.data, image.cols, image.rows, static_cast<int>(image.elemSize()),
                    static_cast<int>(image.step));
    m_api->SetSourceResolution(kSampleDpi);
    const std::unique_ptr<char[]> text(m_api->GetUTF8Text());
    if (text)
        reading.text = text.get();
    reading.confidence = m_api->MeanTextConf();
    return reading;
}
