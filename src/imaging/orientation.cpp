// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/orientation.h"

#include "imaging/textsamples.h"
#include "recognition/ocrengine.h"

#include <QDebug>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <algorithm>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <optional>

namespace {

constexpr int kConfidenceAbove = 74;
constexpr int kMinIdeographs = 3;
constexpr int kMinLetters = 8; // different ones

bool isIdeograph(QChar c)
{
    return c.unicode() >= 0x4E00 && c.unicode() <= 0x9FFF;
}

// Specks and rings are read as "。" or "o" with confidence whichever way up they lie, and many digits look
// alike upside down: only ideographs, or Latin words with many different letters, prove that text was read.
bool provesText(const QString& text)
{
    int ideographs = 0, rings = 0;
    QSet<QChar> letters;
    for (const QString& word : text.split(QRegularExpression(QStringLiteral("\\s")))) {
        for (const QChar c : word) {
            if (c == QChar(0x3002) || c == QLatin1Char('o')) // "。"
                ++rings;
            else if (isIdeograph(c))
                ++ideographs;
            else if (c.unicode() < 128 && c.isLetter())
                letters.insert(c);
        }
    }
    return (ideographs >= kMinIdeographs && ideographs > rings) || letters.size() >= kMinLetters;
}

// The lowest confidence, 0 to 1, when every sample reads as text with confidence; else 0.
double readsUpright(OcrEngine& engine, const std::vector<cv::Mat>& samples)
{
    int lowest = 100;
    for (const cv::Mat& sample : samples) {
        const OcrEngine::Reading reading = engine.read(sample);
        const QString text = QString::fromStdString(reading.text);
        qDebug() << "words: " << text.simplified() << reading.confidence;
        if (reading.confidence <= kConfidenceAbove || !provesText(text))
            return 0;
        lowest = std::min(lowest, reading.confidence);
    }
    return lowest / 100.0;
}

// Code 0, 2 or undecided. The engine is made when there is something to read, and serves both directions: its
// model costs as much time as a sample.
Orientation judge(const cv::Mat& image, std::optional<OcrEngine>& engine)
{
    std::vector<cv::Mat> samples = findTextSamples(image);
    if (samples.empty())
        return {};
    if (!engine)
        engine.emplace();
    if (!engine->isReady())
        return {};
    if (const double confidence = readsUpright(*engine, samples); confidence > 0)
        return {0, confidence};
    qDebug("********** 180 OCR ************");
    for (cv::Mat& sample : samples)
        cv::flip(sample, sample, -1);
    const double confidence = readsUpright(*engine, samples);
    return confidence > 0 ? Orientation{2, confidence} : Orientation{};
}

Orientation judgeUpright(const cv::Mat& image, std::optional<OcrEngine>& engine)
{
    if (image.empty() || image.type() != CV_8UC3)
        return {};
    try {
        return judge(image, engine);
    } catch (const std::exception& error) {
        qWarning("orientation: %s", error.what());
    }
    return {};
}

} // namespace

int getRotation(const cv::Mat& image)
{
    std::optional<OcrEngine> engine;
    return judgeUpright(image, engine).code;
}

int getRealRotation(const std::string& path)
{
    return detectOrientation(path).code;
}

Orientation detectOrientation(const std::string& path)
{
    try {
        const cv::Mat image = cv::imread(path, cv::IMREAD_COLOR);
        std::optional<OcrEngine> engine;
        const Orientation upright = judgeUpright(image, engine);
        if (upright.code != kOrientationUndecided || image.empty())
            return upright;
        cv::Mat turned;
        cv::transpose(image, turned);
        cv::flip(turned, turned, 1);
        Orientation sideways = judgeUpright(turned, engine);
        if (sideways.code != kOrientationUndecided)
            sideways.code = sideways.code == 0 ? 1 : 3;
        return sideways;
    } catch (const std::exception& error) {
        qWarning("orientation: cannot judge \"%s\": %s", path.c_str(), error.what());
    }
    return {};
}

double rotationAngle(int code)
{
    return code >= 1 && code <= 3 ? code * 90.0 : 0.0;
}
