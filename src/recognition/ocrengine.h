// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <opencv2/core.hpp>
#include <string>

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
    ~OcrEngine();
    OcrEngine(const OcrEngine&) = delete;
    OcrEngine& operator=(const OcrEngine&) = delete;

    // False when the model is missing or damaged (logged); every reading is then empty.
    bool isReady() const { return m_api != nullptr; }

    // Reads one block of upright text: CV_8UC1, or CV_8UC3 (only its brightness matters).
    Reading read(const cv::Mat& image);

private:
    std::unique_ptr<tesseract::TessBaseAPI> m_api;
};
