// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace tesseract {
class TessBaseAPI;
}

// The text recogniser with the Simplified Chinese model from its default data folder. Loading the model takes
// about 70 ms and 68 MB. Use an engine only in the thread that made it: OpenMP, which slows recognition down
// and can hang a later fork, is switched off for that thread.
class OcrEngine
{
public:
    struct Reading
    {
        std::string text;   // UTF-8
        int confidence = 0; // mean over the words, 0 to 100; 0 when nothing was read
    };

    OcrEngine();
    ~OcrEngine(); // clears and ends the engine
    OcrEngine(const OcrEngine&) = delete;
    OcrEngine& operator=(const OcrEngine&) = delete;

    // False when the model is missing or damaged (logged); every reading is then empty.
    bool isReady() const { return m_api != nullptr; }

    // For the functions below and those of boxreading.h; nullptr when not ready.
    tesseract::TessBaseAPI* handle() { return m_api.get(); }

    // Reads one block of upright text: CV_8UC1, or CV_8UC3 (only its brightness matters).
    Reading read(const cv::Mat& image);

private:
    std::unique_ptr<tesseract::TessBaseAPI> m_api;
};

// Loads the model (again), in the engine mode "default", and switches OpenMP off for the calling thread.
// False when the model is missing or damaged (logged to stderr in English).
bool initEngine(tesseract::TessBaseAPI& api);

// Gives the engine a page at 300 dpi; later boxes are in this page's pixels. The engine keeps a grey copy of
// its own. The first reads a picture file (false when that fails), the second takes CV_8UC1 or CV_8UC3.
bool setEnginePage(tesseract::TessBaseAPI& api, const std::string& file);
bool setEnginePage(tesseract::TessBaseAPI& api, const cv::Mat& page);

// The boxes of the text lines on the engine's page by automatic segmentation (columns stay apart), in reading
// order, in page pixels; empty when there are none. Leaves the engine ready for readBoxes().
std::vector<cv::Rect> findTextLines(tesseract::TessBaseAPI& api);
