// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawntext.h"
#include "recognition/boxreading.h"
#include "recognition/ocrengine.h"

#include <QPainter>
#include <QtTest>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <omp.h>
#include <opencv2/imgproc.hpp>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

Q_DECLARE_METATYPE(std::function<void()>)

namespace {

const cv::Size kPage(1000, 9000);
constexpr int kFaulty = 6; // the second box of the second child

std::string plainText(int number)
{
    return "第" + std::to_string(number) + "行,两个\n逗号,";
}

// Reads without an engine; `fault` is done at box kFaulty.
class ScriptedReader : public BoxReader
{
public:
    explicit ScriptedReader(std::function<void()> fault = nullptr) : m_fault(std::move(fault)) {}

    void read(BoxText& box, bool symbols) override
    {
        if (box.number == kFaulty && m_fault)
            m_fault();
        box.text = plainText(box.number);
        box.confidence = 90;
        for (int i = 0; symbols && i < QString::fromStdString(box.text).size(); ++i)
            box.symbols.push_back({box.box.x + 10 * i, box.box.x + 10 * i + 9});
    }

private:
    std::function<void()> m_fault;
};

std::vector<cv::Rect> boxColumn(int count)
{
    std::vector<cv::Rect> boxes;
    for (int i = 0; i < count; ++i)
        boxes.emplace_back(20, 100 * i, 500, 60);
    return boxes;
}

ReadingOptions quiet()
{
    ReadingOptions options;
    options.traceTo = -1;
    return options;
}

std::vector<int> numbers(const PageReading& reading)
{
    std::vector<int> numbers;
    for (const BoxText& box : reading.boxes)
        numbers.push_back(box.number);
    return numbers;
}

std::vector<int> allBut(int count, const std::vector<int>& missing)
{
    std::vector<int> numbers;
    for (int i = 0; i < count; ++i)
        if (std::find(missing.begin(), missing.end(), i) == missing.end())
            numbers.push_back(i);
    return numbers;
}

void sleepForEver()
{
    while (true)
        pause();
}

cv::Mat drawnLine(const QString& text)
{
    QImage line = drawntext::paper(40 * (text.size() + 2), 70);
    QPainter painter(&line);
    painter.setFont(drawntext::font(36));
    painter.drawText(20, 50, text);
    painter.end();
    return drawntext::toMat(line);
}

// A page of printed lines and the boxes that end where their ink does.
cv::Mat drawnPage(const QStringList& lines, std::vector<cv::Rect>& tight)
{
    QImage page = drawntext::paper(1600, 100 * (lines.size() + 1));
    QPainter painter(&page);
    painter.setFont(drawntext::font(42));
    for (int i = 0; i < lines.size(); ++i)
        painter.drawText(100, 100 * (i + 1), lines.at(i));
    painter.end();
    const cv::Mat drawn = drawntext::toMat(page);
    cv::Mat ink;
    cv::extractChannel(drawn, ink, 0);
    ink = ink < 128;
    for (int i = 0; i < lines.size(); ++i) {
        const cv::Rect strip(0, 100 * i + 30, drawn.cols, 100);
        cv::Rect box = cv::boundingRect(ink(strip));
        tight.push_back(box + strip.tl());
    }
    return drawn;
}

} // namespace

class TestBoxReading : public QObject
{
    Q_OBJECT

private slots:
    void fivesInOrderAndTheLastTakesTheRest()
    {
        ScriptedReader reader;
        ReadingOptions options = quiet();
        options.symbols = true;
        for (const auto& [boxes, children] :
             {std::pair(0, 0), {1, 1}, {5, 1}, {12, 3}, {45, 9}, {46, 9}, {80, 9}}) {
            const PageReading reading = readBoxes(reader, kPage, boxColumn(boxes), options);
            QCOMPARE(reading.children, children);
            QVERIFY(reading.lost.empty() && !reading.cancelled);
            QCOMPARE(numbers(reading), allBut(boxes, {}));
            for (const BoxText& box : reading.boxes) {
                QCOMPARE(box.text, plainText(box.number));
                QVERIFY(box.box == cv::Rect(20, 100 * box.number, 500, 60));
                QCOMPARE(box.confidence, 90);
                QCOMPARE(static_cast<int>(box.symbols.size()), QString::fromStdString(box.text).size());
                QCOMPARE(box.symbols[2].left, 40);
                QCOMPARE(box.symbols[2].right, 49);
            }
        }
    }

    void aFaultCostsItsOwnBoxes_data()
    {
        QTest::addColumn<std::function<void()>>("fault");
        QTest::addColumn<QString>("reason");
        const auto killed = [] { raise(SIGKILL); };
        static QTemporaryDir folder;
        const auto killedOnce = [mark = folder.filePath(QString("mark")).toStdString()] {
            if (open(mark.c_str(), O_CREAT | O_EXCL, 0600) >= 0)
                raise(SIGKILL);
        };
        const auto spins = [] {
            for (volatile unsigned turns = 0;; turns = turns + 1)
                continue;
        };
        const auto thrown = [] { throw std::runtime_error("broken"); };
        const auto left = [] { _exit(1); };
        QTest::newRow("killed") << std::function<void()>(killed) << "killed by signal 9";
        QTest::newRow("killed once") << std::function<void()>(killedOnce) << "";
        QTest::newRow("spins") << std::function<void()>(spins) << "silent for 400 ms, killed";
        QTest::newRow("throws") << std::function<void()>(thrown) << "ended early";
        QTest::newRow("leaves") << std::function<void()>(left) << "ended early";
        QTest::newRow("hangs") << std::function<void()>(sleepForEver) << "silent for 400 ms, killed";
    }

    void aFaultCostsItsOwnBoxes()
    {
        QFETCH(std::function<void()>, fault);
        QFETCH(QString, reason);
        ScriptedReader reader(fault);
        ReadingOptions options = quiet();
        options.lineLimit = std::chrono::milliseconds(400);
        int idled = 0;
        options.idle = [&idled] { ++idled; };
        const PageReading reading = readBoxes(reader, kPage, boxColumn(17), options);
        QCOMPARE(reading.children, 5); // the boxes behind it are read in a second try
        QVERIFY(idled >= 5 || !reason.startsWith("silent"));
        if (reason.isEmpty()) {
            QCOMPARE(numbers(reading), allBut(17, {}));
            QVERIFY(reading.lost.empty());
            return;
        }
        const std::vector<int> lost{kFaulty};
        QCOMPARE(numbers(reading), allBut(17, lost));
        QCOMPARE(reading.lost.size(), std::size_t(1));
        QCOMPARE(reading.lost[0].numbers, lost);
        QCOMPARE(QString::fromStdString(reading.lost[0].reason), reason);
    }

    void longTextsArriveWhole()
    {
        class LongReader : public BoxReader
        {
        public:
            void read(BoxText& box, bool) override
            {
                box.text = QString("文a").repeated(30000 + box.number).toStdString() + "\x1E" + "end";
            }
        } reader;
        const PageReading reading = readBoxes(reader, kPage, boxColumn(10), quiet());
        QCOMPARE(numbers(reading), allBut(10, {}));
        for (const BoxText& box : reading.boxes)
            QVERIFY(box.text == QString("文a").repeated(30000 + box.number).toStdString() + "end");
    }

    void cancellingKillsTheChildren()
    {
        ScriptedReader reader(sleepForEver);
        ReadingOptions options = quiet();
        int asked = 0;
        options.isCancelled = [&asked] { return ++asked == 5; };
        const PageReading reading = readBoxes(reader, kPage, boxColumn(10), options);
        QVERIFY(reading.cancelled);
        QVERIFY(reading.lost.empty());
    }

    void withoutPipesTheBoxesAreNamed()
    {
        rlimit usual{};
        getrlimit(RLIMIT_NOFILE, &usual);
        const int next = dup(0);
        close(next);
        const rlimit few{static_cast<rlim_t>(next) + 2, usual.rlim_max}; // one pipe while it is being made
        setrlimit(RLIMIT_NOFILE, &few);
        ScriptedReader reader;
        const PageReading reading = readBoxes(reader, kPage, boxColumn(12), quiet());
        setrlimit(RLIMIT_NOFILE, &usual);
        QCOMPARE(reading.children, 1);
        QCOMPARE(numbers(reading), std::vector<int>({0, 1, 2, 3, 4}));
        QCOMPARE(reading.lost.size(), std::size_t(2));
        QCOMPARE(QString::fromStdString(reading.lost[0].reason),
                 QString("pipe error errno = 24 Too many open files"));
        QCOMPARE(reading.lost[1].numbers, std::vector<int>({10, 11}));
    }

    void boxesBeyondTheFrameAreSkipped()
    {
        ScriptedReader reader;
        ReadingOptions options = quiet();
        options.frame = cv::Size(521, 2000);
        std::vector<cv::Rect> boxes = boxColumn(6);
        boxes[1].x = 21;                           // ends at the frame
        boxes[2].x = 22;                           // one pixel too far
        boxes[3] = cv::Rect(-5, 0, 100, 50);       // off the page
        boxes[4] = cv::Rect(10, 10, 0, 50);        // nothing
        boxes[5] = cv::Rect(0, 1999, 100000, 100); // far too large
        const PageReading reading = readBoxes(reader, kPage, boxes, options);
        QCOMPARE(numbers(reading), std::vector<int>({0, 1}));
        QVERIFY(reading.lost.empty());
        QCOMPARE(reading.children, 1);
    }

    void tightBoxesAreReadWithTheirCharactersPlaces()
    {
        const QString story = drawntext::story();
        const QStringList lines{story.mid(0, 20), story.mid(20, 24), story.mid(44, 10)};
        std::vector<cv::Rect> tight;
        const cv::Mat page = drawnPage(lines, tight);
        OcrEngine engine;
        QVERIFY(engine.isReady());
        QVERIFY(setEnginePage(*engine.handle(), page));
        const std::vector<cv::Rect> found = findTextLines(*engine.handle());
        QCOMPARE(found.size(), tight.size());
        ReadingOptions options = quiet();
        options.symbols = true;
        for (const auto& boxes : {tight, found}) {
            int misread = 0;
            const PageReading reading = readBoxes(*engine.handle(), boxes, options);
            QCOMPARE(reading.boxes.size(), tight.size());
            for (std::size_t i = 0; i < tight.size(); ++i) {
                const BoxText& box = reading.boxes[i];
                QString text = QString::fromStdString(box.text);
                QCOMPARE(box.symbols.size(), static_cast<std::size_t>(text.size()));
                QVERIFY(std::abs(box.symbols.front().left - tight[i].x) < 15);
                QVERIFY(std::abs(box.symbols.back().right - tight[i].br().x) < 35);
                for (std::size_t s = 1; s < box.symbols.size(); ++s)
                    QVERIFY(box.symbols[s].left >= box.symbols[s - 1].left);
                text.remove(' ');
                const QString& line = lines.at(static_cast<int>(i));
                QCOMPARE(text.size(), line.size());
                for (int c = 0; c < line.size(); ++c)
                    misread += text.at(c) != line.at(c);
                QVERIFY(box.confidence > 80);
            }
            QVERIFY(misread <= 1); // of 54; half of them when the box is shown as tight as it is
        }
    }

    void engineReadsChinese()
    {
        const QString text = QString("图书馆今天上午开始整理旧文件");
        OcrEngine engine;
        QVERIFY(engine.isReady());
        const OcrEngine::Reading reading = engine.read(drawnLine(text));
        QCOMPARE(QString::fromStdString(reading.text).remove(' ').trimmed(), text);
        QVERIFY(reading.confidence > 80 && reading.confidence <= 100);

        const OcrEngine::Reading nothing = engine.read(cv::Mat(60, 300, CV_8UC1, cv::Scalar(255)));
        QVERIFY(QString::fromStdString(nothing.text).trimmed().isEmpty());
        QVERIFY(engine.read(cv::Mat()).text.empty());
    }

    void engineWithoutModelReadsNothing()
    {
        QTemporaryDir empty;
        qputenv("TESSDATA_PREFIX", empty.path().toLocal8Bit());
        OcrEngine engine;
        qunsetenv("TESSDATA_PREFIX");
        QVERIFY(!engine.isReady());
        const OcrEngine::Reading reading = engine.read(drawnLine(drawntext::story().left(8)));
        QVERIFY(reading.text.empty());
        QCOMPARE(reading.confidence, 0);
    }

    void openMpIsOffInTheRecognisingThreadOnly()
    {
        int teams = 0, other = 0;
        std::thread([&] {
            OcrEngine engine;
#pragma omp parallel num_threads(2) reduction(+ : teams)
            teams += 1;
        }).join();
        std::thread([&] {
#pragma omp parallel num_threads(2) reduction(+ : other)
            other += 1;
        }).join();
        QCOMPARE(teams, 1);
        QCOMPARE(other, 2);
    }

    void withoutModelOrPage()
    {
        OcrEngine engine;
        QVERIFY(engine.isReady());
        QVERIFY(!setEnginePage(*engine.handle(), std::string("/nowhere/page.png")));
        QVERIFY(!setEnginePage(*engine.handle(), cv::Mat()));
        QVERIFY(findTextLines(*engine.handle()).empty());
        QVERIFY(readBoxes(*engine.handle(), boxColumn(3), quiet()).boxes.empty());
        QVERIFY(setEnginePage(*engine.handle(), cv::Mat(600, 800, CV_8UC1, cv::Scalar(255))));
        QVERIFY(findTextLines(*engine.handle()).empty());

        QTemporaryDir empty;
        qputenv("TESSDATA_PREFIX", empty.path().toLocal8Bit());
        QVERIFY(!initEngine(*engine.handle()));
        qunsetenv("TESSDATA_PREFIX");
        QVERIFY(initEngine(*engine.handle()));
    }

    void cleanup()
    {
        QCOMPARE(waitpid(-1, nullptr, WNOHANG), -1); // every child was waited for
        QCOMPARE(errno, ECHILD);
    }
};

QTEST_MAIN(TestBoxReading)
#include "tst_boxreading.moc"
