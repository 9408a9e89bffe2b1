// SPDX-License-Identifier: GPL-3.0-or-later
#include "pdf/pagereader.h"

#include "imageconvert/picture.h"
#include "imageconvert/picturereader.h"
#include "recognition/ocrengine.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <atomic>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <opencv2/imgproc.hpp>
#include <thread>

namespace {

constexpr double kReadingDpi = 300;
constexpr int kLongestSide = 20000; // of what the engine is given, in pixels

class PageReaderText
{
    Q_DECLARE_TR_FUNCTIONS(PageReader)
public:
    static QString noModel() { return tr("缺少中文识别模型（chi_sim），无法识别文字"); }
};

// A page as the engine is to see it.
struct Sheet
{
    cv::Mat pixels;   // CV_8UC1; empty: the file could not be read
    QSize size;       // at 300 dpi
    double scale = 1; // of `pixels` against that: 1 but for enormous pages
};

Sheet loadSheet(const QString& picture)
{
    cv::Mat grey;
    double dpi = 0;
    try {
        const imageconvert::ReadResult read =
            imageconvert::readPicture(QFile::encodeName(picture).toStdString());
        grey = imageconvert::toGrey(read.pixels);
        dpi = read.dpi > 0 ? read.dpi : imageconvert::guessDpi(grey.size());
    } catch (const std::exception& error) {
        qWarning().noquote() << "text recognition: cannot read" << picture << error.what();
        return {};
    }
    const double toReading = kReadingDpi / dpi;
    Sheet sheet;
    sheet.size = QSize(std::max(1, int(std::lround(grey.cols * toReading))),
                       std::max(1, int(std::lround(grey.rows * toReading))));
    sheet.scale = std::min(1.0, double(kLongestSide) / std::max(sheet.size.width(), sheet.size.height()));
    const cv::Size size(std::max(1, int(std::lround(sheet.size.width() * sheet.scale))),
                        std::max(1, int(std::lround(sheet.size.height() * sheet.scale))));
    if (std::abs(size.width - grey.cols) <= 2 && std::abs(size.height - grey.rows) <= 2)
        sheet.pixels = grey; // 11811 dots per metre are not quite 300 dpi
    else
        cv::resize(grey, sheet.pixels, size, 0, 0, size.width < grey.cols ? cv::INTER_AREA : cv::INTER_CUBIC);
    return sheet;
}

// From the engine's pixels to those of the page.
void enlarge(BoxText& line, double factor)
{
    const auto scaled = [factor](int value) { return static_cast<int>(std::lround(value * factor)); };
    line.box =
        cv::Rect(scaled(line.box.x), scaled(line.box.y), scaled(line.box.width), scaled(line.box.height));
    for (SymbolSpan& symbol : line.symbols)
        symbol = {scaled(symbol.left), scaled(symbol.right)};
}

PageText readSheet(OcrEngine& engine, const QString& picture, const ReadingOptions& options)
{
    PageText page;
    if (!engine.isReady()) {
        page.problem = PageReaderText::noModel();
        return page;
    }
    const Sheet sheet = loadSheet(picture);
    page.size = sheet.size;
    page.readable = !sheet.pixels.empty() && setEnginePage(*engine.handle(), sheet.pixels);
    page.cancelled = options.isCancelled();
    if (!page.readable || page.cancelled)
        return page;
    const std::vector<cv::Rect> boxes = findTextLines(*engine.handle());
    if (boxes.empty()) {
        qDebug("boxes is null");
        return page;
    }
    PageReading reading = readBoxes(*engine.handle(), boxes, options);
    page.cancelled = reading.cancelled;
    page.lines = std::move(reading.boxes);
    for (const LostBoxes& lost : reading.lost) {
        qWarning().noquote() << "text recognition:" << lost.numbers.size() << "lines lost on" << picture
                             << QString::fromStdString(lost.reason);
        page.lostLines += static_cast<int>(lost.numbers.size());
    }
    if (sheet.scale < 1) {
        for (BoxText& line : page.lines)
            enlarge(line, 1 / sheet.scale);
    }
    return page;
}

} // namespace

// The engine's thread: takes one page at a time. The engine must be used where it was made, and its work may
// not hold up the window.
class EnginePageReader::Worker
{
public:
    explicit Worker(int traceTo) : m_traceTo(traceTo), m_thread([this] { work(); }) {}
    ~Worker()
    {
        m_cancel = true;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_ending = true;
        }
        m_wake.notify_all();
        m_thread.join();
    }

    void start(const QString& picture, bool symbols)
    {
        m_cancel = false;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_picture = picture;
            m_symbols = symbols;
            m_waiting = true;
            m_done = false;
        }
        m_wake.notify_all();
    }

    // Waits a moment for the page's end.
    bool isDone()
    {
        constexpr auto kMoment = std::chrono::milliseconds(10);
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_wake.wait_for(lock, kMoment, [this] { return m_done; });
    }

    void cancel() { m_cancel = true; }
    PageText take() { return std::move(m_page); }

private:
    void work()
    {
        OcrEngine engine;
        std::unique_lock<std::mutex> lock(m_mutex);
        for (;;) {
            m_wake.wait(lock, [this] { return m_waiting || m_ending; });
            if (m_ending)
                return;
            m_waiting = false;
            const QString picture = m_picture;
            ReadingOptions options;
            options.symbols = m_symbols;
            options.traceTo = m_traceTo;
            options.isCancelled = [this] { return m_cancel.load(); };
            lock.unlock();
            PageText page = readSheet(engine, picture, options);
            lock.lock();
            m_page = std::move(page);
            m_done = true;
            m_wake.notify_all();
        }
    }

    const int m_traceTo;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    QString m_picture;
    bool m_symbols = false;
    bool m_waiting = false;
    bool m_done = false;
    bool m_ending = false;
    std::atomic<bool> m_cancel{false};
    PageText m_page;
    std::thread m_thread; // last: it uses the others
};

EnginePageReader::EnginePageReader(int traceTo) : m_traceTo(traceTo) {}
EnginePageReader::~EnginePageReader() = default;

PageText EnginePageReader::read(const QString& picture, bool symbols, const std::function<bool()>& cancelled)
{
    if (!m_worker)
        m_worker = std::make_unique<Worker>(m_traceTo);
    m_worker->start(picture, symbols);
    while (!m_worker->isDone()) {
        QCoreApplication::processEvents();
        if (cancelled && cancelled())
            m_worker->cancel();
    }
    return m_worker->take();
}
