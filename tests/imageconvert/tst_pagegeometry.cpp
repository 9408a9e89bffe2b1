// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawnpages.h"
#include "imageconvert/geometry.h"
#include "imageconvert/picture.h"
#include "imageconvert/sheet.h"
#include "imageconvert/skew.h"

#include <QtTest>
#include <opencv2/imgproc.hpp>

using namespace imageconvert;

// Where the page lies: sheet, skew, cutting and turning.
class PageGeometryTest : public QObject
{
    Q_OBJECT

    static Sheet sheetIn(const cv::Mat& scan)
    {
        Picture picture(scan, 150);
        return detectSheet(picture.reduced()).scaled(picture.reduced().factor);
    }
    static SkewResult skewOf(const cv::Mat& scan)
    {
        Picture picture(scan, 150);
        return detectSkew(picture.reduced().grey, picture.reduced().dpi);
    }
    static constexpr double kBedWidth = 1240, kBedHeight = 1754;

private slots:
    void sheetOnBed_data()
    {
        QTest::addColumn<int>("bed");
        QTest::addColumn<double>("angle");
        QTest::addColumn<QPoint>("shift");
        for (int bed : {20, 60, 130, 235})
            for (double angle : {0.0, -4.3})
                QTest::addRow("%d %.1f", bed, angle) << bed << angle << QPoint(35, -120);
        QTest::newRow("in the corner") << 30 << 0.0 << QPoint(-180, -257); // touches the left and upper frame
    }
    void sheetOnBed()
    {
        QFETCH(int, bed);
        QFETCH(double, angle);
        QFETCH(QPoint, shift);
        const cv::Mat page = drawn::page({{880, 1240}, {250, 249, 246}, 18}); // A5
        const cv::Size frame(kBedWidth, kBedHeight);
        const cv::Mat scan = drawn::onBed(page, angle, frame, cv::Scalar::all(bed), {shift.x(), shift.y()});
        const Sheet sheet = sheetIn(scan);
        QVERIFY2(sheet.found, sheet.reason);
        QVERIFY2(std::abs(sheet.angleDeg - angle) < 0.06, qPrintable(QString::number(sheet.angleDeg)));
        QVERIFY(std::abs(sheet.size.width - 880) < 5 && std::abs(sheet.size.height - 1240) < 5);
        const cv::Mat cut = cutSheet(scan, sheet, cv::Scalar::all(255));
        cv::Mat grey, rim;
        cv::cvtColor(cut, grey, cv::COLOR_RGB2GRAY);
        rim = grey.clone();
        rim(cv::Rect(6, 6, rim.cols - 12, rim.rows - 12)).setTo(255);
        QVERIFY2(bed > 200 || drawn::darkShare(rim, bed + 30) == 0, "bed is left");
        cv::Mat whole, cutScaled; // all of the content is there and upright
        cv::cvtColor(page, whole, cv::COLOR_RGB2GRAY);
        cv::resize(grey, cutScaled, whole.size(), 0, 0, cv::INTER_AREA);
        cv::GaussianBlur(whole, whole, cv::Size(), 3);
        cv::GaussianBlur(cutScaled, cutScaled, cv::Size(), 3);
        QVERIFY(drawn::meanDifference(whole, cutScaled) < 5);
    }

    // What is no sheet on a bed is never cut.
    void fullPagesAreLeftAlone()
    {
        const cv::Mat photo = drawn::photograph({1240, 1754}), text = drawn::page(),
                      white = drawn::page({{1240, 1754}, {250, 249, 246}, 0});
        cv::Mat illustrated = white.clone(), framed = white.clone();
        photo(cv::Rect(0, 0, 800, 700)).copyTo(illustrated(cv::Rect(200, 800, 800, 700)));
        cv::rectangle(framed, {100, 100, 1040, 1554}, cv::Scalar::all(20), 4);
        const cv::Mat black(white.size(), CV_8UC3, cv::Scalar::all(8));
        // Printed bands along the upper frame: one with writing on it, one of a colour that no bed has.
        cv::Mat written = white.clone(), coloured = white.clone();
        cv::Mat band = written(cv::Rect(0, 0, 1240, 260));
        cv::bitwise_not(text(cv::Rect(0, 100, 1240, 260)), band);
        coloured(cv::Rect(0, 0, 1240, 260)).setTo(cv::Scalar(150, 20, 30));
        // A page in a dark gutter, its lines reaching into the shadow.
        cv::Mat gutter = text(cv::Rect(100, 0, 1140, 1754)).clone();
        for (int x = 0; x < 160; ++x)
            gutter.col(x) *= 0.1 + 0.9 * x / 160.0;
        for (const cv::Mat& scan :
             {text, photo, illustrated, framed, white, black, written, coloured, gutter}) {
            const Sheet sheet = sheetIn(scan);
            QVERIFY2(!sheet.found,
                     qPrintable(QString("%1 x %2").arg(sheet.size.width).arg(sheet.size.height)));
        }
    }

    void skewIsFound()
    {
        for (double angle : {-8.0, -3.3, -0.45, 0.2, 1.27, 5.5}) {
            const cv::Mat scan = drawn::turned(drawn::page(), angle);
            const SkewResult skew = skewOf(scan);
            QVERIFY(skew.sure);
            QVERIFY2(std::abs(skew.angleDeg - angle) < 0.05, qPrintable(QString::number(skew.angleDeg)));
            const SkewResult left = skewOf(straightened(scan, skew.angleDeg, cv::Scalar::all(250)));
            QVERIFY2(std::abs(left.angleDeg) < 0.05, qPrintable(QString::number(left.angleDeg)));
        }
    }

    void uprightAndUnclearPagesStay()
    {
        const cv::Mat page = drawn::page();
        const SkewResult skew = skewOf(page);
        QVERIFY2(std::abs(skew.angleDeg) < 0.02, qPrintable(QString::number(skew.angleDeg)));
        QVERIFY(straightened(page, skew.angleDeg, cv::Scalar::all(250)).data ==
                page.data); // not even resampled
        QVERIFY(!skewOf(drawn::page({{1240, 1754}, {250, 249, 246}, 0})).sure);
        const SkewResult photo = skewOf(drawn::photograph({1240, 1754}));
        QVERIFY2(!photo.sure, qPrintable(QString::number(photo.confidence)));
        // One line proves no small angle: its characters pull it up and down.
        QVERIFY(!skewOf(drawn::turned(drawn::page({{1240, 1754}, {250, 249, 246}, 1}), 0.4)).sure);
        cv::Mat scrawl = drawn::page({{1240, 1754}, {250, 249, 246}, 0});
        cv::RNG random(5);
        for (int line = 0; line < 9; ++line)
            for (int x = 120, y = 180 + 120 * line, to = 0; x < 1060; x += 40, y = to) {
                to = 180 + 120 * line + random.uniform(-25, 25);
                cv::line(scrawl, {x, y}, {x + 40, to}, cv::Scalar(60, 60, 120), 3, cv::LINE_AA);
            }
        QVERIFY(!skewOf(scrawl).sure);
        // Beyond the range: nothing rather than a wrong angle.
        QVERIFY(!skewOf(drawn::turned(page, 17)).sure);
    }

    void rightAnglesAreExact()
    {
        const cv::Mat page = drawn::page({{90, 60}, {250, 249, 246}, 3});
        cv::Mat expected;
        cv::rotate(page, expected, cv::ROTATE_90_CLOCKWISE);
        QCOMPARE(cv::norm(rotated(page, 90, {}), expected, cv::NORM_INF), 0.0);
        QCOMPARE(cv::norm(rotated(rotated(page, 270, {}), 450, {}), page, cv::NORM_INF), 0.0);
        const cv::Mat tilted = rotated(page, 30, cv::Scalar::all(255)); // holds all of the page
        QVERIFY(tilted.cols > 90 && tilted.rows > 60);
        QCOMPARE(tilted.at<cv::Vec3b>(0, 0), cv::Vec3b(255, 255, 255));
    }

    void cuttingJoiningResampling()
    {
        cv::Mat grey(40, 60, CV_8UC1, cv::Scalar(100));
        grey.at<uchar>(0, 0) = 1;
        grey.at<uchar>(20, 30) = 2;
        QCOMPARE(int(cutOut(grey, {10, 500}, true).at<uchar>(0, 0)), 1);
        QCOMPARE(cutOut(grey, {10, 500}, true).size(), cv::Size(10, 40)); // never larger than the page
        QCOMPARE(int(cutOut(grey, {10, 10}, false).at<uchar>(5, 5)), 2);

        const cv::Mat colour(20, 30, CV_8UC3, cv::Scalar(200, 10, 10)), above = joined(grey, colour, false);
        QCOMPARE(above.size(), cv::Size(60, 60));
        QCOMPARE(above.at<cv::Vec3b>(50, 30), cv::Vec3b(200, 10, 10)); // in the middle, on white
        QCOMPARE(above.at<cv::Vec3b>(50, 5), cv::Vec3b(255, 255, 255));

        const cv::Mat bits = grey > 50;
        QVERIFY(isTwoLevel(resampled(bits, 0.37, 0.37)));
        QVERIFY(isTwoLevel(straightened(bits, 3, cv::Scalar::all(255))));
        QVERIFY_EXCEPTION_THROWN(resampled(grey, 5000, 5000), PictureError);
    }

    void borders()
    {
        const cv::Mat grey(40, 60, CV_8UC1, cv::Scalar(100));
        const cv::Mat inside = withBorder(grey, {cv::Scalar(255, 0, 0), 5, 7, true});
        QCOMPARE(inside.size(), grey.size());
        QCOMPARE(inside.at<cv::Vec3b>(4, 30), cv::Vec3b(255, 0, 0));
        QCOMPARE(inside.at<cv::Vec3b>(5, 7), cv::Vec3b(100, 100, 100));
        const cv::Mat around = withBorder(grey, {cv::Scalar::all(255), 5, 7, false});
        QCOMPARE(around.size(), cv::Size(74, 50));
        QCOMPARE(around.channels(), 1); // a neutral border makes no colour picture
    }
};

QTEST_GUILESS_MAIN(PageGeometryTest)
#include "tst_pagegeometry.moc"
