// SPDX-License-Identifier: GPL-3.0-or-later
#include "recognition/projection.h"

#include <QtTest>
#include <opencv2/imgproc.hpp>

namespace {

cv::Mat blank(int width, int height)
{
    return cv::Mat::zeros(height, width, CV_8UC1);
}

// Rows `top` to `top + height - 1` get `ink` pixels each.
void ink(cv::Mat& image, int top, int height, int ink, int left = 20)
{
    image(cv::Rect(left, top, ink, height)).setTo(255);
}

// Fuses 10 wide with the anchor in the middle: a word of n columns becomes n + 9, starting 4 or 5 further
// left.
constexpr int kFused = 9;

} // namespace

class TestProjection : public QObject
{
    Q_OBJECT

private slots:
    void rowsOfNineAreKept()
    {
        for (const int height : {1, 8, 9, 60}) {
            cv::Mat image = blank(200, 120);
            ink(image, 30, height, 50);
            const std::vector<cv::Rect> rows = getRowRects(image);
            QCOMPARE(rows.size(), std::size_t(height >= 9 ? 1 : 0));
            QVERIFY(rows.empty() || rows[0] == cv::Rect(0, 30, 200, height));
        }
    }

    void sevenPixelsNeitherStartNorEndARow()
    {
        cv::Mat image = blank(200, 120);
        ink(image, 10, 10, 7); // would be a row if 7 started one
        ink(image, 20, 20, 8); // the row starts here
        ink(image, 40, 15, 7); // carries it on
        ink(image, 55, 5, 6);  // ends it
        const std::vector<cv::Rect> rows = getRowRects(image);
        QCOMPARE(rows.size(), std::size_t(1));
        QVERIFY(rows[0] == cv::Rect(0, 20, 200, 35));
    }

    void onlyFullInkCounts()
    {
        cv::Mat image = blank(200, 60);
        image(cv::Rect(20, 10, 100, 20)).setTo(254);
        QVERIFY(getRowRects(image).empty());
        QVERIFY(getBlockRects(image, 0).empty());
    }

    void rowsFollowEachOtherAndTheOpenOneIsDropped()
    {
        cv::Mat image = blank(200, 100);
        ink(image, 0, 12, 50);
        ink(image, 13, 12, 50); // one empty pixel row parts them
        ink(image, 80, 20, 50); // reaches the bottom
        const std::vector<cv::Rect> rows = getRowRects(image);
        QCOMPARE(rows.size(), std::size_t(2));
        QVERIFY(rows[0] == cv::Rect(0, 0, 200, 12));
        QVERIFY(rows[1] == cv::Rect(0, 13, 200, 12));
    }

    void gapsOfTenColumnsAreMerged()
    {
        for (const int gap : {10, 11}) {
            cv::Mat row = blank(300, 20);
            ink(row, 0, 20, 30, 20);
            ink(row, 0, 20, 40, 50 + gap + kFused); // `gap` columns stay empty between the fused words
            const std::vector<cv::Rect> blocks = getBlockRects(row, 77);
            QCOMPARE(blocks.size(), std::size_t(gap == 10 ? 1 : 2));
            QCOMPARE(blocks[0].y, 77);
            QCOMPARE(blocks[0].height, 20);
            if (gap == 10) {
                QCOMPARE(blocks[0].width, 30 + 40 + gap + 2 * kFused);
            } else {
                QCOMPARE(blocks[0].width, 30 + kFused);
                QCOMPARE(blocks[1].x - blocks[0].br().x, 11);
                QCOMPARE(blocks[1].width, 40 + kFused);
            }
        }
    }

    void narrowBlocksGrowToElevenColumns()
    {
        cv::Mat row = blank(200, 20);
        ink(row, 0, 20, 1, 100);                // one column, fused 10 wide
        row(cv::Rect(20, 5, 30, 1)).setTo(255); // one pixel high: no block
        const std::vector<cv::Rect> blocks = getBlockRects(row, 0);
        QCOMPARE(blocks.size(), std::size_t(1));
        QCOMPARE(blocks[0].width, 11);
        QVERIFY(blocks[0].x <= 100 && blocks[0].br().x > 100);
    }

    void aBlockOpenAtTheRightIsDropped()
    {
        cv::Mat row = blank(200, 20);
        ink(row, 0, 20, 60, 20);
        ink(row, 0, 20, 60, 140);
        const std::vector<cv::Rect> blocks = getBlockRects(row, 0);
        QCOMPARE(blocks.size(), std::size_t(1));
        QVERIFY(blocks[0].br().x < 100);
    }

    void emptyPictures()
    {
        QVERIFY(getRowRects(cv::Mat()).empty());
        QVERIFY(getBlockRects(cv::Mat(), 0).empty());
        QVERIFY(getRowRects(blank(1, 1)).empty());
        QVERIFY(getBlockRects(blank(1, 1), 0).empty());
    }
};

QTEST_APPLESS_MAIN(TestProjection)
#include "tst_projection.moc"
