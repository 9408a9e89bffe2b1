// SPDX-License-Identifier: GPL-3.0-or-later
#include "ocr/pagetext.h"

#include "ocr/pageframe.h"
#include "ocr/readablepage.h"
#include "recognition/boxreading.h"
#include "recognition/ocrengine.h"

#include <QDebug>

namespace {

constexpr int kMaxChildren = 10;

QString numberList(const std::vector<int>& numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts << QString::number(number);
    return texts.join(QLatin1Char(' '));
}

// Reads the boxes and notes what every caller wants to know.
PageReading readPage(const QMap<int, zarnRECT>& boxes, tesseract::TessBaseAPI* api, PageNotes& notes,
                     const ReadingControl& control)
{
    ReadingOptions options;
    options.maxChildren = kMaxChildren;
    options.frame = kPageFrame;
    options.idle = control.idle;
    options.isCancelled = control.cancelled;
    options.traceTo = control.traceTo;
    PageReading reading = readBoxes(*api, onPage(boxes), options);
    notes.cancelled = reading.cancelled;
    for (const LostBoxes& lost : reading.lost) {
        notes.lostBoxes += static_cast<int>(lost.numbers.size());
        notes.problems << QStringLiteral("boxes %1 were not read: %2")
                              .arg(numberList(lost.numbers), QString::fromStdString(lost.reason));
        qWarning().noquote() << notes.problems.last();
    }
    double sum = 0;
    for (const BoxText& box : reading.boxes)
        sum += box.confidence;
    notes.confidence = reading.boxes.empty() ? 0 : sum / static_cast<double>(reading.boxes.size());
    return reading;
}

zarnTXTLINERET record(const BoxText& box)
{
    zarnTXTLINERET line;
    line.x = box.box.x;
    line.y = box.box.y;
    line.width = box.box.width;
    line.height = line.lineHeight = box.box.height;
    line.confidence = box.confidence;
    if (box.confidence < kDoubtfulBelow) {
        line.text = doubtfulMarker();
        return line;
    }
    const QString text = cleanedText(QString::fromStdString(box.text));
    const QStringList inner = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    line.text = inner.join(QLatin1String(kLineJoint));
    line.lines = std::max(1, static_cast<int>(inner.size()));
    line.lineHeight = line.height / line.lines;
    return line;
}

} // namespace

FramedPage framedPage(const QString& imageFile, PageNotes& notes)
{
    const LoadedPage loaded = loadPage(imageFile);
    if (!loaded.problem.isEmpty()) {
        notes.readable = false;
        notes.problems << loaded.problem;
        qWarning().noquote() << imageFile << loaded.problem;
    }
    return framedPage(loaded.pixels, loaded.dpi, notes);
}

FramedPage framedPage(const cv::Mat& page, double dpi, PageNotes& notes)
{
    FramedPage framed;
    if (page.empty())
        return framed;
    framed.frame = layOnFrame(page, dpi);
    ReadablePage readable = readablePage(framed.frame);
    framed.clean = readable.clean;
    framed.boxes = findTextBoxes(readable.smooth);
    notes.boxes = framed.boxes.size();
    return framed;
}

bool giveToEngine(const FramedPage& page, tesseract::TessBaseAPI* api, PageNotes& notes)
{
    if (setEnginePage(*api, page.clean))
        return true;
    notes.problems << QStringLiteral("the engine does not take the page");
    qWarning().noquote() << notes.problems.last();
    return false;
}

void handleProcessMultiTestForTXT(const QMap<int, zarnRECT>& boxes, tesseract::TessBaseAPI* api,
                                  QMap<int, QString>& lines, PageNotes& notes, const ReadingControl& control)
{
    for (const BoxText& box : readPage(boxes, api, notes, control).boxes)
        lines.insert(box.number, cleanedText(QString::fromStdString(box.text)));
}

void handleProcessMultiTestBorder(const QMap<int, zarnRECT>& boxes, tesseract::TessBaseAPI* api,
                                  const cv::Mat& page, QMap<int, zarnTXTLINERET>& lines, PageNotes& notes,
                                  const ReadingControl& control)
{
    const cv::Rect whole(cv::Point(), page.size());
    PageReading reading = readPage(boxes, api, notes, control);
    for (const LostBoxes& lost : reading.lost)
        for (const int number : lost.numbers)
            reading.boxes.push_back({number, onPage(boxes[number]), 0, {}, {}});
    for (const BoxText& box : reading.boxes)
        if ((box.box & whole) == box.box)
            lines.insert(box.number, record(box));
}
