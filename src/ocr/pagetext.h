// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ocr/layout.h"
#include "ocr/textline.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <functional>

namespace tesseract {
class TessBaseAPI;
}

// From a page picture to the text of its boxes. The functions block until the children have answered and work
// in the calling thread, which must be the one that initialised the engine last. Nothing throws.

// Both may be empty. They are called about every 20 ms in the reading thread.
struct ReadingControl
{
    std::function<void()> idle;
    std::function<bool()> cancelled; // true ends the reading
    int traceTo = 2;                 // file descriptor for a debug line about each box; -1: none
};

// What became of one page.
struct PageNotes
{
    int boxes = 0;         // found on the page
    int lostBoxes = 0;     // of them could not be read, see `problems`
    double confidence = 0; // mean over the boxes that were read, 0 to 100
    double seconds = 0;
    bool readable = true; // false: the file is missing or damaged
    bool cancelled = false;
    QStringList problems; // English, for the log; boxes that were lost among them
};

// A page ready to be read: `frame` is what was scanned, `clean` what is read.
struct FramedPage
{
    cv::Mat frame; // empty: the file cannot be read
    cv::Mat clean;
    QMap<int, zarnRECT> boxes;
};

// Loads a page file, lays it on the frame and finds its boxes.
FramedPage framedPage(const QString& imageFile, PageNotes& notes);
FramedPage framedPage(const cv::Mat& page, double dpi, PageNotes& notes);

// Hands the clean picture to the engine; false, and a note, when it does not take it.
bool giveToEngine(const FramedPage& page, tesseract::TessBaseAPI* api, PageNotes& notes);

// Reads all boxes of the engine's page: the cleaned text of each by its number. Boxes beyond the frame, and
// those of a child that died, are left out.
void handleProcessMultiTestForTXT(const QMap<int, zarnRECT>& boxes, tesseract::TessBaseAPI* api,
                                  QMap<int, QString>& lines, PageNotes& notes,
                                  const ReadingControl& control = {});

// The same with place and confidence; doubtful boxes, and those of a child that died, get the marker for
// their text. `page` is the framed page.
void handleProcessMultiTestBorder(const QMap<int, zarnRECT>& boxes, tesseract::TessBaseAPI* api,
                                  const cv::Mat& page, QMap<int, zarnTXTLINERET>& lines, PageNotes& notes,
                                  const ReadingControl& control = {});
