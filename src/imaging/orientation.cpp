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

// True when every sample reads as text with confidence.
bool readsUpright(OcrEngine& engine, const std::vector<cv::Mat>& samples)
{
    return std::all_of(samples.begin(), samples.end(), [&](const cv::Mat& sample) {
        const OcrEngine::Reading reading = engine.read(sample);
        const QString text = QString::fromStdString(reading.text);
        qDebug() << "words: " << text.simplified() << reading.confidence;
        return reading.confidence > kConfidenceAbove && provesText(text);
    });
}

int judge(const cv::Mat& image)
{
    std::vector<cv::Mat> samples = findTextSamples(image);
    if (samples.empty())
        return kOrientationUndecided;
    OcrEngine engine;
    if (!engine.isReady())
        return kOrientationUndecided;
    if (readsUpright(engine, samples))
        return 0;
    qDebug("********** 180 OCR ************");
    for (cv::Mat& sample : samples)
        cv::flip(sample, sample, -1);
    return readsUpright(engine, samples) ? 2 : kOrientationUndecided;
}

} // namespace

int getRotation(const cv::Mat& image)
{
    if (image.empty() || image.type() != CV_8UC3)
        return kOrientationUndecided;
    try {
        return judge(image);
    } catch (const std::exception& error) {
        qWarning("orientation: %s", error.what());
    }
    return kOrientationUndecided;
}

int getRealRotation(const std::string& path)
{
    try {
        const cv::Mat image = cv::imread(path, cv::IMREAD_COLOR);
        const int upright = getRotation(image);
        if (upright != kOrientationUndecided || image.empty())
            return upright;
        cv::Mat turned;
        cv::transpose(image, turned);
        cv::flip(turned, turned, 1);
        const int sideways = getRotation(turned);
        return sideways == 0 ? 1 : sideways == 2 ? 3 : kOrientationUndecided;
    } catch (const std::exception& error) {
        qWarning("orientation: cannot judge \"%s\": %s", path.c_str(), error.what());
    }
    return kOrientationUndecided;
}

double rotationAngle(int code)
{
    return code >= 1 && code <= 3 ? code * 90.0 : 0.0;
}
