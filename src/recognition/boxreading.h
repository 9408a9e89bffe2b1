// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace tesseract {
class TessBaseAPI;
}

// Reads the text in boxes of a page with several forked child processes at once. Every function here reports
// by its result and throws nothing.

// Where one character stands, in page pixels; half open.
struct SymbolSpan
{
    int left = 0;
    int right = 0;
};

struct BoxText
{
    int number = 0;     // place in the list of boxes given
    cv::Rect box;       // as given
    int confidence = 0; // mean over the words, 0 to 100; 0 when nothing was read
    std::string text;   // UTF-8, without trailing line feeds; may be empty
    // With ReadingOptions::symbols: one span for each code point of `text`, blanks included, left to right.
    // Empty when they could not be told.
    std::vector<SymbolSpan> symbols;
};

// Boxes that nothing is known of, and why ("killed by signal 9", "pipe error errno = 24 Too many open
// files").
struct LostBoxes
{
    std::vector<int> numbers;
    std::string reason; // English, for the log
};

struct PageReading
{
    std::vector<BoxText> boxes; // by ascending number; low confidence is the caller's business
    std::vector<LostBoxes> lost;
    int children = 0;       // started, second tries among them
    bool cancelled = false; // `boxes` then holds what had arrived
};

struct ReadingOptions
{
    int maxChildren = 9; // ten for the OCR function and the text probe; the last takes all remaining boxes
    bool symbols = false;
    // Boxes that reach beyond it are skipped: neither read nor lost. Empty: the page.
    cv::Size frame;
    std::function<void()> idle; // called about every 20 ms while children work; the GUI pumps events here
    std::function<bool()> isCancelled; // asked as often; true kills the children and ends the reading
    // A child that stands still, or works, for longer on one box is killed.
    std::chrono::milliseconds lineLimit{30000};
    int traceTo = 2; // file descriptor for the children's debug lines; -1: none
};

// What a child does for one box: a seam, so that tests can let children hang, die or talk without end. Called
// in the child only: it must not use Qt, threads or any lock of the parent.
class BoxReader
{
public:
    virtual ~BoxReader() = default;
    virtual void read(BoxText& box, bool symbols) = 0; // number and box are set; fills the rest
    virtual void finish() {}                           // before the child leaves
};

constexpr int kBoxesPerChild = 5;

// Reads the boxes of the engine's page (setEnginePage). Boxes may be tight and may overlap: each is shown to
// the engine with a margin. Child k (from 1) takes the k-th group of five boxes. What a child leaves
// unread that ends early or is killed is tried once more in another. Blocks until all are read;
// works in the calling thread, which must be the one that made the engine.
PageReading readBoxes(tesseract::TessBaseAPI& api, const std::vector<cv::Rect>& boxes,
                      const ReadingOptions& options);

// The same with any reader; `page` is the page's size.
PageReading readBoxes(BoxReader& reader, cv::Size page, const std::vector<cv::Rect>& boxes,
                      const ReadingOptions& options);
