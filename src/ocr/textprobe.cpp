// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/textprobe.h"

#include "recognition/boxreading.h"
#include "recognition/ocrengine.h"

#include <QDebug>
#include <QFile>

namespace {

constexpr int kMaxChildren = 10;

} // namespace

void handleTxtOcrTest(const QString& imageFile, std::ofstream& out)
{
    if (!QFile::exists(imageFile)) // spares the loading of the model
        return;
    OcrEngine engine;
    if (!engine.isReady() || !setEnginePage(*engine.handle(), QFile::encodeName(imageFile).toStdString()))
        return;
    const std::vector<cv::Rect> lines = findTextLines(*engine.handle());
    if (lines.empty()) {
        qDebug() << "boxes is null";
        return;
    }
    ReadingOptions options;
    options.maxChildren = kMaxChildren;
    for (const BoxText& line : readBoxes(*engine.handle(), lines, options).boxes)
        out << line.text << '\n';
    out.flush();
}
