// SPDX-License-Identifier: GPL-3.0-or-later
#include "recognition/ocrengine.h"

#include "recognition/boxreading.h"
#include "recognition/boxrecord.h"
#include "recognition/pagecopy.h"

#include <cstdio>
#include <leptonica/allheaders.h>
#include <omp.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

namespace {

constexpr char kLanguage[] = "chi_sim";
constexpr int kPageDpi = 300; // said to the engine, which else guesses and prints its guess

std::string takeText(char* text)
{
    const std::unique_ptr<char[]> owner(text);
    std::string taken(owner ? owner.get() : "");
    taken.erase(taken.find_last_not_of('\n') + 1);
    return taken;
}

bool setPage(tesseract::TessBaseAPI& api, PixOwner page)
{
    if (!page)
        return false;
    api.SetImage(page.get()); // keeps a copy of its own
    api.SetSourceResolution(kPageDpi);
    return true;
}

// Reads boxes of the engine's page. For each box its part of the engine's copy is repainted and put back.
class EngineReader : public BoxReader
{
public:
    explicit EngineReader(tesseract::TessBaseAPI& api) : m_api(api) {}

    void read(BoxText& box, bool symbols) override;
    void finish() override
    {
        m_api.Clear();
        m_api.End();
    }

private:
    std::vector<SymbolSpan> spans(const BoxText& box, const BoxMargin& margin);

    tesseract::TessBaseAPI& m_api;
};

void EngineReader::read(BoxText& box, bool symbols)
{
    const BoxMargin margin(m_api.GetInputImage(), box.box);
    m_api.SetRectangle(box.box.x, box.box.y, box.box.width, box.box.height);
    box.text = takeText(m_api.GetUTF8Text());
    box.confidence = m_api.MeanTextConf();
    if (symbols && !box.text.empty())
        box.symbols = spans(box, margin);
}

// The engine tells where the characters stand, but not the blanks between them: they fill the gaps.
std::vector<SymbolSpan> EngineReader::spans(const BoxText& box, const BoxMargin& margin)
{
    std::vector<SymbolSpan> spans;
    const std::unique_ptr<tesseract::ResultIterator> symbol(m_api.GetIterator());
    if (!symbol)
        return spans;
    std::size_t at = 0;
    do {
        const std::string text = takeText(symbol->GetUTF8Text(tesseract::RIL_SYMBOL));
        int left = 0, top = 0, right = 0, bottom = 0;
        const std::size_t found = text.empty() ? std::string::npos : box.text.find(text, at);
        if (found == std::string::npos ||
            !symbol->BoundingBox(tesseract::RIL_SYMBOL, &left, &top, &right, &bottom))
            continue;
        left = margin.toPage(left);
        right = margin.toPage(right);
        const std::size_t gap = codePoints(box.text.substr(at, found - at));
        spans.insert(spans.end(), gap, {spans.empty() ? left : spans.back().right, left});
        spans.insert(spans.end(), codePoints(text), {left, right});
        at = found + text.size();
    } while (symbol->Next(tesseract::RIL_SYMBOL));
    if (spans.empty())
        return spans;
    spans.insert(spans.end(), codePoints(box.text.substr(at)), {spans.back().right, spans.back().right});
    return spans;
}

} // namespace

bool initEngine(tesseract::TessBaseAPI& api)
{
    omp_set_max_active_levels(0);
    if (api.Init(nullptr, kLanguage, tesseract::OEM_DEFAULT) == 0)
        return true;
    std::fprintf(stderr, "text recognition: cannot load the language model \"%s\"\n", kLanguage);
    return false;
}

OcrEngine::OcrEngine()
{
    auto api = std::make_unique<tesseract::TessBaseAPI>();
    if (initEngine(*api))
        m_api = std::move(api);
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
    m_api->SetSourceResolution(kPageDpi);
    const std::unique_ptr<char[]> text(m_api->GetUTF8Text());
    if (text)
        reading.text = text.get();
    reading.confidence = m_api->MeanTextConf();
    return reading;
}

bool setEnginePage(tesseract::TessBaseAPI& api, const std::string& file)
{
    return setPage(api, pageCopy(file));
}

bool setEnginePage(tesseract::TessBaseAPI& api, const cv::Mat& page)
{
    return setPage(api, pageCopy(page));
}

std::vector<cv::Rect> findTextLines(tesseract::TessBaseAPI& api)
{
    std::vector<cv::Rect> lines;
    if (api.GetInputImage() == nullptr)
        return lines;
    const tesseract::PageSegMode mode = api.GetPageSegMode();
    api.SetPageSegMode(tesseract::PSM_AUTO);
    Boxa* found = api.GetComponentImages(tesseract::RIL_TEXTLINE, true, nullptr, nullptr);
    api.SetPageSegMode(mode);
    const int count = found != nullptr ? boxaGetCount(found) : 0;
    for (int i = 0; i < count; ++i) {
        cv::Rect line;
        if (boxaGetBoxGeometry(found, i, &line.x, &line.y, &line.width, &line.height) == 0)
            lines.push_back(line);
    }
    boxaDestroy(&found);
    return lines;
}

PageReading readBoxes(tesseract::TessBaseAPI& api, const std::vector<cv::Rect>& boxes,
                      const ReadingOptions& options)
{
    EngineReader reader(api);
    const Pix* page = api.GetInputImage();
    return readBoxes(reader, page ? cv::Size(pixGetWidth(page), pixGetHeight(page)) : cv::Size(), boxes,
                     options);
}
