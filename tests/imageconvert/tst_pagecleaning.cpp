// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawnpages.h"
#include "imageconvert/background.h"
#include "imageconvert/binarise.h"
#include "imageconvert/blank.h"
#include "imageconvert/despeckle.h"
#include "imageconvert/enhance.h"
#include "imageconvert/levels.h"
#include "imageconvert/picture.h"
#include "imageconvert/redheader.h"
#include "imageconvert/tone.h"

#include <QtTest>
#include <cmath>
#include <opencv2/imgproc.hpp>

using namespace imageconvert;

// What the page looks like: tone, blankness, two levels, background, red headers.
class PageCleaningTest : public QObject
{
    Q_OBJECT

    static constexpr double kDpi = 150;
    static cv::Mat greyOf(const cv::Mat& colour)
    {
        cv::Mat grey;
        cv::cvtColor(colour, grey, cv::COLOR_RGB2GRAY);
        return grey;
    }
    // A light that falls off to one corner by the given share.
    static void shade(cv::Mat& page, double share)
    {
        for (int y = 0; y < page.rows; ++y)
            for (int x = 0; x < page.cols; ++x)
                page.at<cv::Vec3b>(y, x) *= 1 - share * (x / double(page.cols) + y / double(page.rows)) / 2;
    }
    // The back of the sheet, seen through it: mirrored, blurred, weak.
    static void shineThrough(cv::Mat& page, double share)
    {
        cv::Mat back;
        cv::flip(drawn::page({page.size(), {255, 255, 255}, 30, 1, 0}), back, 1);
        cv::GaussianBlur(back, back, cv::Size(), 2.2 * kDpi / 300 * 1.6);
        for (int y = 0; y < page.rows; ++y)
            for (int x = 0; x < page.cols; ++x)
                page.at<cv::Vec3b>(y, x) *= 1 - share * (1 - back.at<cv::Vec3b>(y, x)[0] / 255.0);
    }
    static void letter(cv::Mat& page, cv::Point at, double inkShare = 1) // 3 mm high, as of 9 point type
    {
        const cv::Scalar ink = cv::Scalar(250, 249, 246) * (1 - 0.9 * inkShare);
        cv::rectangle(page, {at.x, at.y, 11, 18}, ink, 2);
        cv::line(page, {at.x, at.y + 9}, {at.x + 11, at.y + 9}, ink, 2);
    }
    static BlankResult blankness(const cv::Mat& page, int darkness = 20, double percent = 0.81)
    {
        Picture picture(page, kDpi);
        return detectBlank(picture.untoned(), picture.reduced(), {darkness, percent});
    }
    static cv::Mat emptyPage(const cv::Scalar& paper = {250, 249, 246})
    {
        return drawn::page({{1240, 1754}, paper, 0});
    }
    static void addDirt(cv::Mat& page, const QString& kind)
    {
        cv::RNG random(4);
        const auto anywhere = [&] {
            return cv::Point(random.uniform(0, page.cols), random.uniform(0, page.rows));
        };
        if (kind == "shaded")
            shade(page, 0.35);
        for (int i = 0; kind == "dust" && i < 60; ++i)
            cv::circle(page, anywhere(), random.uniform(1, 3), cv::Scalar::all(100), cv::FILLED, cv::LINE_AA);
        for (int i = 0; kind == "hairs" && i < 12; ++i) {
            const cv::Point at = anywhere();
            cv::line(page, at, at + cv::Point(random.uniform(-16, 16), random.uniform(-16, 16)),
                     cv::Scalar::all(140), 1, cv::LINE_AA);
        }
        if (kind == "holes")
            for (int y : {600, 1072})
                cv::circle(page, {70, y}, 18, cv::Scalar::all(30), cv::FILLED, cv::LINE_AA);
        if (kind == "rim") {
            page.colRange(0, 14).setTo(cv::Scalar::all(25));
            page.rowRange(1745, 1754).setTo(cv::Scalar::all(60));
        }
        if (kind == "through")
            shineThrough(page, 0.18);
    }
    static void addContent(cv::Mat& page, const QString& kind)
    {
        if (kind.contains("show-through"))
            shineThrough(page, 0.10);
        for (int x = 600; kind.startsWith("page number") && x < 620; x += 16)
            letter(page, {x, 1680});
        if (kind == "one letter")
            letter(page, {900, 300});
        for (int i = 0; kind.startsWith("faint") && i < 9; ++i)
            letter(page, {140 + 20 * i, 80}, 0.4);
        if (kind == "black")
            page.setTo(cv::Scalar::all(5));
        if (kind == "stamp")
            cv::circle(page, {700, 900}, 110, cv::Scalar(220, 60, 60), 6, cv::LINE_AA);
    }

private slots:
    void toneCurves()
    {
        QVERIFY(gammaTone(1).isIdentity() && gammaTone(0).isIdentity() &&
                gammaTone(std::nan("")).isIdentity());
        const Tone light = gammaTone(2), shifted = lightAndContrastTone(20, 0);
        QCOMPARE(int(light.channel(0)[64]), 128); // 255 * sqrt(64/255) = 127.7
        QCOMPARE(int(shifted.channel(1)[100]), 151);
        const Tone hard = lightAndContrastTone(0, 100);
        QVERIFY(hard.channel(0)[127] == 0 && hard.channel(0)[128] == 255);
        // Shared pixels are not written to.
        const cv::Mat page = drawn::page({{120, 90}, {250, 249, 246}, 4}), copy = page.clone(),
                      sharing = copy;
        light.applied(copy);
        QCOMPARE(cv::norm(sharing, page, cv::NORM_INF), 0.0);
    }

    void blankPages_data()
    {
        QTest::addColumn<bool>("blank");
        for (const char* kind :
             {"pure", "yellow", "dark paper", "shaded", "dust", "hairs", "holes", "rim", "through"})
            QTest::newRow(kind) << true;
        for (const char* kind :
             {"page number", "page number with show-through", "one letter", "faint heading",
              "faint heading on yellow", "text", "photograph", "black", "stamp"})
            QTest::newRow(kind) << false;
    }
    void blankPages()
    {
        QFETCH(bool, blank);
        const QString kind = QTest::currentDataTag();
        cv::Mat page = kind.contains("yellow") ? emptyPage({238, 226, 190})
                       : kind == "dark paper"  ? emptyPage({180, 170, 150})
                       : kind == "photograph"  ? drawn::photograph({1240, 1754})
                       : kind == "text"        ? drawn::page()
                                               : emptyPage();
        if (blank)
            addDirt(page, kind);
        else
            addContent(page, kind);
        const BlankResult result = blankness(page);
        QVERIFY2(result.blank == blank, qPrintable(QString::number(result.percent)));
    }

    // A larger level never keeps what a smaller one drops.
    void blankLevelsAreOrdered()
    {
        cv::Mat page = emptyPage();
        for (int x : {600, 620, 640, 660, 680})
            letter(page, {x, 700}, 0.13); // about 30 levels
        QVERIFY(!blankness(page, 10, 0.25).blank);
        QVERIFY(blankness(page, 45, 0.25).blank);
        QVERIFY(blankness(page, 10, 30).blank);
    }

    void twoLevelsFollowTheInk()
    {
        const cv::Mat truth = greyOf(drawn::page({{1240, 1754}, {255, 255, 255}, 30, 1, 0})) < 128;
        const struct
        {
            double ink, light, through;
        } pages[] = {{1, 0.45, 0}, {0.4, 0, 0}, {0.5, 0.3, 0}, {1, 0.1, 0.2}};
        for (const auto& [ink, light, through] : pages) {
            cv::Mat page = drawn::page({{1240, 1754}, {250, 249, 246}, 30, ink});
            shade(page, light);
            shineThrough(page, through);
            const cv::Mat bits = twoLevels(greyOf(page), {130, kDpi});
            QVERIFY(isTwoLevel(bits));
            const cv::Mat found = bits == 0;
            const double both = cv::countNonZero(found & truth);
            const double f = 2 * both / (cv::countNonZero(found) + cv::countNonZero(truth));
            QVERIFY2(f > 0.95, qPrintable(QString("%1 %2 %3: %4").arg(ink).arg(light).arg(through).arg(f)));
        }
    }

    // Thin strokes with equal gaps run together in a blurred scan unless it is sharpened before the cut.
    void twoLevelsUndoTheBlur()
    {
        cv::Mat truth(600, 800, CV_8UC1, cv::Scalar(255));
        cv::rectangle(truth, {40, 40, 300, 300}, cv::Scalar(12), 12); // edges to measure the blur at
        for (int x = 400; x < 760; x += 6)
            cv::rectangle(truth, {x, 40, 3, 500}, cv::Scalar(12), cv::FILLED);
        for (double sigma : {0.6, 1.0, 1.5})
            for (double noise : {1.0, 7.0}) {
                cv::Mat scan, grain(truth.size(), CV_16SC1);
                cv::GaussianBlur(truth * 0.96, scan, cv::Size(), sigma);
                cv::theRNG().state = 7;
                cv::randn(grain, 0, noise);
                cv::add(scan, grain, scan, cv::noArray(), CV_8U);
                const double wrong = cv::mean(twoLevels(scan, {130, 300}) != ((truth > 128) & 255))[0] / 255;
                QVERIFY2(wrong < 0.015, qPrintable(QString("%1 %2: %3").arg(sigma).arg(noise).arg(wrong)));
            }
    }

    // Where there is no paper nothing is taken for its shade.
    void whiteOnBlackStays()
    {
        cv::Mat page = cv::Scalar::all(255) - drawn::page({{1240, 1754}, {250, 249, 246}, 30});
        QCOMPARE(cv::norm(withoutBackground(page, {5, kDpi}), page, cv::NORM_INF), 0.0);
        const cv::Mat grey = greyOf(page);
        const double wrong = cv::mean(twoLevels(grey, {130, kDpi}) != ((grey > 128) & 255))[0] / 255;
        QVERIFY2(wrong < 0.03, qPrintable(QString::number(wrong)));
    }

    void specksGoStrokesStay()
    {
        cv::Mat page(300, 300, CV_8UC1, cv::Scalar(255));
        cv::rectangle(page, {100, 100, 8, 40}, cv::Scalar(0), cv::FILLED);
        cv::rectangle(page, {102, 94, 4, 4}, cv::Scalar(0), cv::FILLED);  // the dot of an i
        cv::rectangle(page, {119, 135, 5, 5}, cv::Scalar(0), cv::FILLED); // a decimal point
        const cv::Mat clean = page.clone();
        cv::rectangle(page, {200, 200, 4, 5}, cv::Scalar(0), cv::FILLED);
        page.at<uchar>(50, 50) = 0;
        page.at<uchar>(98, 112) = 0; // tiny, beside the letter
        QCOMPARE(cv::norm(despeckled(page, 5, 300), clean, cv::NORM_INF), 0.0);
        QCOMPARE(int(despeckled(page, 3, 300).at<uchar>(202, 202)), 0); // larger than the limit
        QCOMPARE(int(despeckled(page, 5, 150).at<uchar>(202, 202)), 0); // twice as large on paper
    }

    void backgroundGetsWhite()
    {
        cv::Mat page = drawn::page({{1240, 1754}, {236, 222, 182}, 14});
        shade(page, 0.2);
        shineThrough(page, 0.12);
        const cv::Mat photo = drawn::photograph({700, 600});
        const cv::Rect place(270, 950, 700, 600);
        photo.copyTo(page(place));
        const cv::Mat clean = withoutBackground(page, {5, kDpi});
        const cv::Mat text = greyOf(clean(cv::Rect(0, 0, 1240, 800))),
                      mark = greyOf(drawn::page({{1240, 1754}, {255, 255, 255}, 14, 1, 0}));
        const cv::Mat paperPlaces = mark(cv::Rect(0, 0, 1240, 800)) > 250,
                      ink = mark(cv::Rect(0, 0, 1240, 800)) < 60;
        cv::Mat core;
        cv::erode(paperPlaces, core, cv::getStructuringElement(cv::MORPH_RECT, {7, 7}));
        QVERIFY(cv::countNonZero((text < 245) & core) < 0.01 * cv::countNonZero(core));
        QVERIFY(cv::mean(text, ink)[0] < 60);
        cv::Mat correlation;
        cv::matchTemplate(greyOf(clean(place)), greyOf(photo), correlation, cv::TM_CCOEFF_NORMED);
        QVERIFY2(correlation.at<float>(0, 0) > 0.95f,
                 qPrintable(QString::number(correlation.at<float>(0, 0))));
    }

    void redHeadersStayRed()
    {
        cv::Mat page = drawn::page({{1240, 1754}, {238, 226, 190}, 10});
        page.rowRange(0, 124).setTo(cv::Scalar(238, 226, 190));
        cv::rectangle(page, {140, 60, 900, 8}, cv::Scalar(205, 40, 45), cv::FILLED);
        cv::circle(page, {900, 1400}, 90, cv::Scalar(210, 80, 75), 8, cv::LINE_AA);
        drawn::addNoise(page, 2.5);
        const cv::Mat clean = asRedHeaderDocument(page, kDpi);
        const auto isRed = [](const cv::Vec3b& p) {
            return p[0] > 150 && p[1] < 0.6 * p[0] && p[2] < 0.6 * p[0];
        };
        QVERIFY(isRed(clean.at<cv::Vec3b>(64, 500)) && isRed(clean.at<cv::Vec3b>(1310, 900)));
        // Light red, as at the edge of type, stays red when only the background goes.
        cv::Mat pink(400, 400, CV_8UC3, cv::Scalar(250, 249, 246));
        cv::rectangle(pink, {100, 100, 30, 8}, cv::Scalar(225, 165, 162), cv::FILLED);
        QVERIFY(isRed(withoutBackground(pink, {5, kDpi}).at<cv::Vec3b>(104, 115)));
        QCOMPARE(clean.at<cv::Vec3b>(1700, 600), cv::Vec3b(255, 255, 255));
        cv::Mat text = clean.rowRange(124, 560), planes[3]; // neutral where it is not white
        cv::split(text, planes);
        QVERIFY(cv::norm(planes[0], planes[2], cv::NORM_INF) == 0);
        QVERIFY(drawn::darkShare(planes[0], 90) > 0.05);
    }

    void denseStretchesPagesNotPhotographs()
    {
        const cv::Mat pale = drawn::page({{600, 800}, {205, 195, 170}, 20, 0.6});
        const cv::Mat dense = greyOf(levelsTone(detectLevels(pale), 3).applied(pale.clone()));
        QVERIFY(drawn::darkShare(dense, 250) < 0.35); // the paper is white
        QVERIFY(drawn::darkShare(dense, 40) > 0.01);  // the ink is black
        QVERIFY(!detectLevels(drawn::photograph({600, 800})).isPage);
    }

    void enhancingDarkensStrokesOnly()
    {
        const cv::Mat page = drawn::page({{600, 800}, {240, 232, 205}, 20, 0.5});
        const cv::Mat mark = greyOf(drawn::page({{600, 800}, {255, 255, 255}, 20, 1, 0}));
        const cv::Mat before = greyOf(page), after = greyOf(enhancedCharacters(page, 5, kDpi));
        QVERIFY(cv::mean(after, mark < 60)[0] < cv::mean(before, mark < 60)[0] - 3);
        QVERIFY(std::abs(cv::mean(after, mark > 253)[0] - cv::mean(before, mark > 253)[0]) < 3);
    }
};

QTEST_GUILESS_MAIN(PageCleaningTest)
#include "tst_pagecleaning.moc"
