// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawntext.h"
#include "ocr/layout.h"
#include "ocr/measures.h"
#include "ocr/pageframe.h"
#include "ocr/paragraphs.h"
#include "ocr/readablepage.h"

#include <QPainter>
#include <QtTest>
#include <opencv2/imgproc.hpp>

namespace {

zarnTXTLINERET line(int x, int y, int width, int height, const QString& text = QString("文"))
{
    zarnTXTLINERET record;
    record.x = x;
    record.y = y;
    record.width = width;
    record.height = record.lineHeight = height;
    record.confidence = 90;
    record.text = text;
    return record;
}

QMap<int, zarnTXTLINERET> numbered(const QList<zarnTXTLINERET>& records)
{
    QMap<int, zarnTXTLINERET> lines;
    for (const zarnTXTLINERET& record : records)
        lines.insert(lines.size(), record);
    return lines;
}

// Writes lines, the first one's baseline at `start`: `count` pieces of the story.
void write(QImage& page, int type, const QPoint& start, int pitch, int count, int length,
           const QColor& ink = Qt::black)
{
    QPainter painter(&page);
    painter.setFont(drawntext::font(type));
    painter.setPen(ink);
    for (int i = 0; i < count; ++i)
        painter.drawText(start.x(), start.y() + pitch * i, drawntext::story().mid(17 * i, length));
}

QImage framePaper()
{
    return drawntext::paper(kPageFrame.width, kPageFrame.height);
}

cv::Mat greyOf(const QImage& page)
{
    cv::Mat grey;
    cv::cvtColor(drawntext::toMat(page), grey, cv::COLOR_BGR2GRAY);
    return grey;
}

void addGrain(cv::Mat& grey, double deviation)
{
    cv::Mat grain(grey.size(), CV_16SC1);
    cv::theRNG().state = 5;
    cv::randn(grain, 0, deviation);
    cv::add(grey, grain, grey, cv::noArray(), CV_8U);
}

} // namespace

class TestOcrLayout : public QObject
{
    Q_OBJECT

private slots:
    void measuresOfTheDocument()
    {
        QCOMPARE(getTop(10), QString("2"));
        QCOMPARE(getLeft(2479), QString("619"));
        QCOMPARE(getWidth(2480), QString("992"));
        QCOMPARE(getHeight(51), QString("25"));
        const QMap<int, QString> sizes{{42, "16"}, {43, "18"}, {47, "18"}, {48, "19"}, {50, "20"},
                                       {51, "21"}, {55, "21"}, {56, "22"}, {59, "24"}, {63, "24"},
                                       {64, "25"}, {68, "27"}, {69, "28"}, {73, "28"}, {74, "30"},
                                       {78, "30"}, {79, "31"}, {200, "80"}};
        for (auto size = sizes.begin(); size != sizes.end(); ++size)
            QCOMPARE(getFontSize(size.key()), size.value());
        QCOMPARE(getPSFontSize(40, 3), QString("13"));
        QCOMPARE(getPSFontSize(40, 0), QString("0"));
        QCOMPARE(getPSLineSpacing(200, 2), QString("240"));
        QCOMPARE(getPSLineSpacing(201, 4), QString("80"));
        QCOMPARE(getPSLineSpacing(200, 1), QString("0"));
        QCOMPARE(getPresent(1, 19), QString("5"));
        QCOMPARE(getPresent(1, 3), QString("33"));
        QCOMPARE(getPresent(3, 3), QString("10"));
        QVERIFY(isDigitStr(QString("0123456789")));
        for (const char* text : {"", "12 ", "-1", "1.5", "１２"})
            QVERIFY2(!isDigitStr(QString::fromUtf8(text)), text);
    }

    void onlyLargePagesAreReduced()
    {
        const auto size = [](int width, int height) {
            return reducedInk(cv::Mat(height, width, CV_8UC1, cv::Scalar(255))).size();
        };
        QVERIFY(size(1000, 1000) == cv::Size(1000, 1000)); // a million exactly is small
        QVERIFY(size(1000, 1001) == cv::Size(800, 801));
        QVERIFY(size(1001, 1000) == cv::Size(1000, 999));
        QVERIFY(size(2480, 3508) == cv::Size(800, 1132));
        QVERIFY(findTextBoxes(cv::Mat()).isEmpty());
        QVERIFY(findTextBoxes(cv::Mat(1, 1, CV_8UC1, cv::Scalar(0))).isEmpty());
    }

    void boxesLieOnTheTextInReadingOrder()
    {
        QImage page = framePaper();
        QPainter painter(&page);
        painter.setFont(drawntext::font(50));
        const QList<QPoint> places{{200, 400}, {1400, 400}, {300, 700}};
        for (const QPoint& place : places)
            painter.drawText(place, QString("今天上午整理文件"));
        painter.end();
        const QMap<int, zarnRECT> boxes = findTextBoxes(drawntext::toMat(page));
        QCOMPARE(boxes.size(), places.size());
        for (int i = 0; i < places.size(); ++i) {
            const cv::Rect box = onPage(boxes[i]);
            QVERIFY(withinFrame(box));
            QVERIFY(std::abs(box.x - places[i].x()) < 40);
            QVERIFY(std::abs(box.br().y - places[i].y()) < 20);
            QVERIFY(std::abs(box.width - 400) < 60 && std::abs(box.height - 50) < 16);
        }
        QVERIFY(onPage(zarnRECT{11, 13, 100, 20}) == cv::Rect(34, 40, 310, 62));
        QVERIFY(withinFrame(cv::Rect(2470, 3500, 10, 8)));
        QVERIFY(!withinFrame(cv::Rect(2471, 100, 10, 8)));
        QVERIFY(!withinFrame(cv::Rect(100, 3501, 10, 8)));
    }

    void theFrameHoldsEveryPage_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("dpi");
        QTest::addColumn<QSize>("covered");
        QTest::newRow("a frame already") << QSize(2480, 3508) << 200.0 << QSize(2480, 3508);
        QTest::newRow("A4 at 200 dpi grows") << QSize(1654, 2339) << 200.0 << QSize(2480, 3508);
        QTest::newRow("A5 at 600 dpi shrinks") << QSize(3496, 4960) << 600.0 << QSize(1748, 2480);
        QTest::newRow("landscape is reduced to fit") << QSize(3508, 2480) << 300.0 << QSize(2480, 1753);
        QTest::newRow("longer than A4") << QSize(2480, 4200) << 300.0 << QSize(2071, 3508);
        QTest::newRow("a receipt keeps its size") << QSize(900, 1500) << 300.0 << QSize(900, 1500);
        QTest::newRow("one pixel") << QSize(1, 1) << 300.0 << QSize(1, 1);
        QTest::newRow("a thread") << QSize(2, 100000) << 300.0 << QSize(1, 3508);
    }

    void theFrameHoldsEveryPage()
    {
        QFETCH(QSize, size);
        QFETCH(double, dpi);
        QFETCH(QSize, covered);
        const cv::Mat page(size.height(), size.width(), CV_8UC1, cv::Scalar(40));
        const cv::Mat frame = layOnFrame(page, dpi);
        QVERIFY(frame.size() == kPageFrame);
        const cv::Rect place = cv::boundingRect(frame < 128);
        QVERIFY(place.tl() == cv::Point());
        QVERIFY(std::abs(place.width - covered.width()) <= 1 &&
                std::abs(place.height - covered.height()) <= 1);
        QVERIFY(layOnFrame(cv::Mat(), 300).empty());
    }

    void tablesFallApartIntoCells()
    {
        for (const int skew : {0, 8}) { // pixels that a rule of the whole width climbs
            QImage page = framePaper();
            QPainter painter(&page);
            painter.setFont(drawntext::font(46));
            painter.setPen(QPen(Qt::black, 6));
            for (int row = 0; row <= 6; ++row)
                painter.drawLine(200, 400 + 110 * row, 2200, 400 + 110 * row - skew);
            for (int column = 0; column <= 5; ++column)
                painter.drawLine(200 + 400 * column, 400 - skew * column / 5, 200 + 400 * column, 1060);
            for (int cell = 0; cell < 30; ++cell)
                painter.drawText(240 + 400 * (cell % 5), 472 + 110 * (cell / 5), QString("合计数量"));
            painter.end();
            const cv::Mat picture = drawntext::toMat(page);
            QVERIFY(findTextBoxes(picture).size() < 10);
            QCOMPARE(findTextBoxes(readablePage(picture).smooth).size(), 30);
        }
    }

    void noiseMakesNoBoxes()
    {
        for (const auto& [noise, level] : {std::pair{0, 0}, {4, 60}, {4, 190}, {25, 20}}) { // clean to heavy
            QImage page = framePaper();
            write(page, 46, {300, 400}, 200, 12, 30, QColor(level, level, level));
            cv::Mat grey = greyOf(page);
            addGrain(grey, noise);
            const int boxes = findTextBoxes(readablePage(grey).smooth).size();
            QVERIFY2(std::abs(boxes - 12) <= (noise > 10 ? 2 : 0), qPrintable(QString::number(boxes)));
        }
    }

    // Yellowed paper with the shadow of its edges, smaller than the frame: neither the edge nor the step to
    // the white frame joins the rows.
    void aCroppedPageIsNoBox()
    {
        QImage page = drawntext::paper(1500, 2000);
        write(page, 46, {150, 200}, 200, 9, 25);
        cv::Mat grey = greyOf(page);
        grey.convertTo(grey, CV_8U, 0.8, 20);
        cv::rectangle(grey, cv::Rect(0, 0, 1500, 2000), cv::Scalar(150), 6);
        addGrain(grey, 4);
        QCOMPARE(findTextBoxes(readablePage(layOnFrame(grey, 300)).smooth).size(), 9);

        // On white paper the last stroke is not the page's end: nothing is taken from it.
        cv::Mat white(kPageFrame, CV_8UC1, cv::Scalar(255));
        white(cv::Rect(300, 500, 1200, 40)).setTo(0);
        cv::Mat low;
        cv::threshold(readablePage(white).smooth, low, 128, 255, cv::THRESH_BINARY_INV);
        QVERIFY(std::abs(cv::boundingRect(low).br().y - 540) <= 2);
    }

    // On yellow paper, over the text: the rows stay apart and what lies under the stamp stays black. Alone it
    // stays.
    void aStampJoinsNoRows()
    {
        QImage page = framePaper();
        page.fill(QColor(238, 226, 190));
        write(page, 46, {300, 400}, 100, 9, 30);
        QPainter painter(&page);
        painter.setCompositionMode(QPainter::CompositionMode_Multiply);
        const QColor stampInk(230, 90, 90);
        painter.setPen(QPen(stampInk, 14));
        painter.drawEllipse(QPoint(1200, 900), 240, 240);
        painter.fillRect(1180, 700, 40, 400, stampInk);
        painter.drawEllipse(QPoint(1200, 2500), 240, 240);
        painter.end();
        const ReadablePage readable = readablePage(drawntext::toMat(page));
        QCOMPARE(findTextBoxes(readable.smooth).size(), 10);
        const cv::Mat crossed = readable.clean(cv::Rect(1180, 700, 40, 400));
        QVERIFY(cv::mean(crossed, crossed > 130)[0] > 215);
        QVERIFY(cv::countNonZero(crossed < 60) > 300);
    }

    // Blurred and without grain, where the paper between the lines is hardest to tell.
    void nothingStandsBesideShortLinesOfSmallType()
    {
        QImage page = framePaper();
        QPainter painter(&page);
        painter.setFont(drawntext::font(36));
        const QString text = drawntext::story().repeated(2);
        for (int i = 0; i < 60; ++i)
            painter.drawText(250, 400 + 50 * i, text.mid(3 * i, i % 4 == 3 ? 12 : 54));
        painter.end();
        cv::Mat grey = greyOf(page);
        grey.convertTo(grey, CV_8U, 0.7, 60);
        cv::GaussianBlur(grey, grey, cv::Size(), 1.5);
        QCOMPARE(findTextBoxes(readablePage(grey).smooth).size(), 60);
    }

    void textAndPicturesOutliveTheRulesRemoval()
    {
        QImage page = framePaper();
        drawntext::fillLines(page, drawntext::story() + QString("一二三十——工士王"), 50, 300);
        QPainter painter(&page);
        painter.setFont(drawntext::font(140));
        painter.drawText(600, 250, QString("一年一度大会"));
        painter.fillRect(0, 3300, 2480, 100, Qt::black); // too thick for a rule
        painter.end();
        cv::Mat grey = greyOf(page);
        const cv::Mat clean = readablePage(grey).clean;
        QCOMPARE(cv::countNonZero(clean != grey), 0);
        const cv::Mat black(kPageFrame, CV_8UC1, cv::Scalar(0));
        QCOMPARE(cv::countNonZero(readablePage(black).clean), 0);
    }

    void linesOfOneParagraphJoin_data()
    {
        QTest::addColumn<QList<int>>("below"); // x, y, width, height of a line below 100, 100, 1000, 50
        QTest::addColumn<bool>("joined");
        QTest::newRow("next line") << QList<int>{100, 165, 1000, 50} << true;
        QTest::newRow("short last line") << QList<int>{100, 165, 120, 48} << true;
        QTest::newRow("the first is indented by two") << QList<int>{0, 165, 1100, 50} << true;
        QTest::newRow("by three: no paragraph") << QList<int>{-60, 165, 1100, 50} << false;
        QTest::newRow("the second is indented: a new one") << QList<int>{200, 165, 900, 50} << false;
        QTest::newRow("pitch too large") << QList<int>{100, 185, 1000, 50} << false;
        QTest::newRow("other size") << QList<int>{100, 165, 1000, 68} << false;
        QTest::newRow("other column") << QList<int>{1200, 165, 1000, 50} << false;
        QTest::newRow("the same row") << QList<int>{1200, 100, 1000, 50} << false;
    }

    void linesOfOneParagraphJoin()
    {
        QFETCH(QList<int>, below);
        QFETCH(bool, joined);
        const auto first = line(100, 100, 1000, 50), second = line(below[0], below[1], below[2], below[3]);
        QCOMPARE(joinParagraphs(numbered({first, second})).size(), joined ? 1 : 2);
        auto doubtful = second, several = second;
        doubtful.text = doubtfulMarker();
        several.lines = 2;
        QCOMPARE(joinParagraphs(numbered({first, doubtful})).size(), 2);
        QCOMPARE(joinParagraphs(numbered({first, several})).size(), 2);
    }

    void joinedRecordSpansItsLines()
    {
        // Two columns side by side: numbers run across them.
        const auto lines = numbered({line(200, 100, 900, 50, "甲"), line(1300, 100, 900, 50, "乙"),
                                     line(100, 165, 1000, 50, "丙"), line(1300, 165, 900, 50, "丁"),
                                     line(100, 230, 500, 46, "戊")});
        const auto joined = joinParagraphs(lines);
        QCOMPARE(joined.keys(), (QList<int>{0, 1}));
        const zarnTXTLINERET& left = joined[0];
        QCOMPARE(left.text, QString("甲ZARNFAXZARN丙ZARNFAXZARN戊"));
        QCOMPARE(left.lines, 3);
        QVERIFY(cv::Rect(left.x, left.y, left.width, left.height) == cv::Rect(100, 100, 1000, 176));
        QCOMPARE(left.height - left.lineHeight, 130); // from the first line's top to the last line's
        QCOMPARE(joined[1].text, QString("乙ZARNFAXZARN丁"));
    }
};

QTEST_MAIN(TestOcrLayout)
#include "tst_ocrlayout.moc"
