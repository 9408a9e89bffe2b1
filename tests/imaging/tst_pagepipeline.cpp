// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "config/settingsfile.h"
#include "imaging/backgroundrun.h"
#include "imaging/lastpage.h"
#include "imaging/pagepipeline.h"

#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QSettings>
#include <QTextCodec>
#include <QTimer>
#include <QtTest>

namespace {

constexpr int kWidth = 1240; // A4 at 150 dpi
constexpr int kHeight = 1754;

// A sheet with a black bar near its top; its colour tells front and back apart.
QString drawPage(const QString& name, const QColor& bar, const QSize& size = {kWidth, kHeight})
{
    QImage page(size, QImage::Format_RGB32);
    page.fill(Qt::white);
    QPainter painter(&page);
    painter.fillRect(size.width() / 4, size.height() / 10, size.width() / 2, size.height() / 20, bar);
    painter.end();
    const QString path = paths::tempFolder() + name;
    return page.save(path, "PPM") ? path : QString();
}

} // namespace

class TestPagePipeline : public QObject
{
    Q_OBJECT

private:
    ImageConvertFunction m_library;
    int m_names = 0;
    PageOptions m_options;

    PagePipeline pipeline()
    {
        return PagePipeline(m_library, [this] { return QStringLiteral("page%1").arg(++m_names); });
    }
    PageResult process(int number, const QColor& bar = Qt::black)
    {
        return pipeline().processPage(drawPage(QString("zarnqwd200-000%1.pnm").arg(number), bar), m_options);
    }
    QImage saved(const PageResult& result, int index = 0) { return QImage(result.files.value(index)); }

private slots:
    void initTestCase() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("utf-8")); }

    void init()
    {
        QVERIFY(freshRoot());
        QVERIFY(QDir().mkpath(defaultSaveFolder()));
        m_names = 0;
        m_options = PageOptions();
        m_options.folder = defaultSaveFolder() + QLatin1Char('/');
        m_options.saveType = QStringLiteral("png");
        m_options.dpi = m_options.scanDpi = 150;
        m_options.frontTurn.enabled = m_options.backTurn.enabled = true; // no recognition unless asked for
    }

    void savesThePageAndLeavesTheNumberOfNamesToTheNumberOfFiles()
    {
        const PageResult result = process(1);
        QCOMPARE(result.files, QStringList{m_options.folder + "page1.png"});
        QVERIFY(result.sourceDone && result.problems.isEmpty());
        const QImage image = saved(result);
        QCOMPARE(image.size(), QSize(kWidth, kHeight));
        QCOMPARE(qRound(image.dotsPerMeterX() * 0.0254), 150);

        // The name is taken: a page is not lost by overwriting it.
        m_names = 0;
        QCOMPARE(process(2, Qt::red).files, QStringList{m_options.folder + "page1-1.png"});
        m_names = 0;
        m_options.replaceExisting = true;
        QCOMPARE(process(3, Qt::red).files, QStringList{m_options.folder + "page1.png"});
    }

    void fixedTurnFollowsTheSideOfTheSheet()
    {
        m_options.frontTurn.clockwiseDegrees = 90;
        m_options.backTurn.clockwiseDegrees = 180;
        const QImage front = saved(process(1));
        const QImage back = saved(process(2));
        QCOMPARE(front.size(), QSize(kHeight, kWidth));
        QVERIFY(qGray(front.pixel(kHeight * 7 / 8, kWidth / 2)) < 60); // the bar is at the right
        QCOMPARE(back.size(), QSize(kWidth, kHeight));
        QVERIFY(qGray(back.pixel(kWidth / 2, kHeight * 7 / 8)) < 60); // and at the bottom
        // With one side set only, it counts for every page.
        m_options.frontTurn.enabled = false;
        QCOMPARE(saved(process(3)).size(), QSize(kWidth, kHeight));
    }

    void automaticOrientationLeavesNoProbeBehind()
    {
        m_options.frontTurn.enabled = m_options.backTurn.enabled = false;
        const PageResult result = process(1);
        QCOMPARE(saved(result).size(), QSize(kWidth, kHeight));
        QVERIFY(!QFile::exists(paths::tempFolder() + "autoRotate.bmp"));
    }

    void blankPagesAreDroppedAtValidLevelsOnly()
    {
        m_options.deleteBlank = true;
        for (const int level : {1, 8, 15}) {
            m_options.blankLevel = level;
            const PageResult result = process(1, Qt::white);
            QVERIFY(result.blank && result.sourceDone && result.files.isEmpty());
        }
        QCOMPARE(m_names, 0); // a dropped page takes no number
        for (const int level : {0, 16, -1}) {
            m_options.blankLevel = level;
            QVERIFY(!process(1, Qt::white).blank);
        }
        m_options.blankLevel = 8;
        QVERIFY(!process(1).blank);
    }

    void sheetsAreJoinedInBothDirectionsAndKeptWithOneBlankSide()
    {
        m_options.merge = m_options.deleteBlank = true;
        m_options.blankLevel = 8;
        const QString front = drawPage("zarnqwd200-0001.pnm", Qt::red);
        const QString back = drawPage("zarnqwd200-0002.pnm", Qt::white);
        QCOMPARE(saved(pipeline().processSheet(front, back, m_options)).size(), QSize(kWidth, 2 * kHeight));
        m_options.horizontal = true;
        const QImage wide = saved(pipeline().processSheet(front, back, m_options));
        QCOMPARE(wide.size(), QSize(2 * kWidth, kHeight));
        QVERIFY(qRed(wide.pixel(kWidth / 2, kHeight / 8)) > 200 &&
                qGreen(wide.pixel(kWidth / 2, kHeight / 8)) < 60);
        QVERIFY(qGray(wide.pixel(kWidth * 3 / 2, kHeight / 8)) > 200);
        const PageResult blank =
            pipeline().processSheet(drawPage("zarnqwd200-0003.pnm", Qt::white), back, m_options);
        QVERIFY(blank.blank && blank.files.isEmpty());
    }

    void piecesOfASplitPageAreSavedInOrder()
    {
        m_options.split = true;
        m_options.splitCount = 2;
        m_options.horizontal = true;
        const QString page = drawPage("zarnqwd200-0001.pnm", Qt::black);
        const PageResult result = pipeline().processPage(page, m_options);
        QCOMPARE(result.files.size(), 2);
        QCOMPARE(saved(result, 0).size(), QSize(kWidth / 2, kHeight));
        QVERIFY(result.sourceDone);
        QVERIFY(QDir(paths::tempFolder()).entryList({"crop*.bmp"}).isEmpty());

        m_options.splitCount = 0; // gives no piece: the page is kept and the user is told
        const PageResult none = pipeline().processPage(page, m_options);
        QVERIFY(none.files.isEmpty() && !none.sourceDone);
        QVERIFY(none.problems.value(0).contains("zarnqwd200-0001.pnm"));
    }

    void customPaperIsCutBelowA4Only()
    {
        const struct
        {
            double width, height, cutWidth, cutHeight; // in cm
        } rows[] = {
            {10, 15, 10, 15}, {30, 15, 21, 15}, {10, 40, 10, 29.7}, {21, 25, 21, 29.7}, {30, 40, 21, 29.7}};
        for (const auto& [width, height, cutWidth, cutHeight] : rows) {
            m_options.paper = {true, width, height, true};
            const QSize got = saved(process(1)).size();
            QVERIFY2(qAbs(got.width() - cutWidth / 2.54 * 150) <= 1.5 &&
                         qAbs(got.height() - cutHeight / 2.54 * 150) <= 1.5,
                     qPrintable(QStringLiteral("%1 x %2").arg(got.width()).arg(got.height())));
        }
    }

    void resolutionIsReachedFromWhatTheDeviceDelivers()
    {
        // 400 dpi comes from 600: two thirds of the pixels.
        m_options.dpi = 400;
        m_options.scanDpi = 600;
        m_options.scannedFinerThan400 = true;
        const QString page = drawPage("zarnqwd200-0001.pnm", Qt::black, {900, 1200});
        QCOMPARE(saved(pipeline().processPage(page, m_options)).size(), QSize(600, 800));
        m_options.scannedFinerThan400 = false; // typed by the user, not chosen
        QCOMPARE(saved(pipeline().processPage(page, m_options)).size(), QSize(900, 1200));
        m_options.customResolution = true;
        m_options.dpi = 150;
        m_options.scanDpi = 300;
        const QImage image = saved(pipeline().processPage(page, m_options));
        QCOMPARE(image.size(), QSize(450, 600));
        QCOMPARE(qRound(image.dotsPerMeterX() * 0.0254), 150);
    }

    void extraCopiesFollowTheColourMode()
    {
        m_options.extraCopies = true;
        m_options.dpi = m_options.scanDpi = 300;
        m_options.greyCopyDpi = 100;
        m_options.blackWhiteCopyDpi = 300;
        const QString page = drawPage("zarnqwd200-0001.pnm", Qt::red);
        const PageResult color = pipeline().processPage(page, m_options);
        QCOMPARE(color.files.size(), 3);
        QVERIFY(!saved(color, 0).allGray());
        QVERIFY(saved(color, 1).allGray());
        QCOMPARE(saved(color, 1).width(), qRound(kWidth / 3.0));
        QCOMPARE(saved(color, 2).size(), QSize(kWidth, kHeight));
        QCOMPARE(QImageReader(color.files[2]).imageFormat(), QImage::Format_Mono);
        m_options.colorMode = ColorMode::Grey;
        QCOMPARE(pipeline().processPage(page, m_options).files.size(), 2);
        m_options.colorMode = ColorMode::BlackAndWhite;
        QCOMPARE(pipeline().processPage(page, m_options).files.size(), 1);
        m_options.preview = true;
        m_options.colorMode = ColorMode::Color;
        QCOMPARE(pipeline().processPage(page, m_options).files.size(), 1);
    }

    void damagedPagesAndUnwritableFoldersKeepThePage()
    {
        const QString damaged = paths::tempFolder() + "zarnqwd200-0001.pnm";
        for (const QByteArray& content : {QByteArray(), QByteArray("P6\n9999999 9999999\n255\nabc"),
                                          QByteArray("P6\n100 100\n255\nshort"), QByteArray("no picture")}) {
            QVERIFY(putFile(damaged, content));
            const PageResult result = pipeline().processPage(damaged, m_options);
            QVERIFY(!result.sourceDone && result.files.isEmpty());
            QVERIFY(result.problems.value(0).contains("zarnqwd200-0001.pnm"));
            QVERIFY(!pipeline().processSheet(damaged, damaged, m_options).sourceDone);
        }
        m_options.folder = defaultSaveFolder() + "/missing/";
        const PageResult result = process(2);
        QVERIFY(!result.sourceDone);
        QVERIFY(result.problems.value(0).contains("missing"));
    }

    void settingsAreReadAsStored()
    {
        const auto file = openMainSettings();
        const auto read = [&](bool customThreshold) {
            PageOptions options;
            readPipelineSettings(options, *file, {"Scan_Scan_PaperSize", "Scan_DeNoise"}, customThreshold);
            return options;
        };
        QCOMPARE(read(false).blankLevel, 0); // missing keys switch their steps off
        QCOMPARE(read(false).noiseSize, 0);
        file->setValue("wholeSet/imgMendUp", 3.5);
        file->setValue("wholeSet/imgMendLeft", 7);
        file->setValue("wholeSet/imgMendLeftState", "false");
        QCOMPARE(read(false).border.leftMm, 3.5);
        file->setValue("wholeSet/imgMendLeftState", "true");
        QCOMPARE(read(false).border.leftMm, 7.0);
        file->setValue("wholeSet/fWBDpi", 3);
        QCOMPARE(read(false).blackWhiteCopyDpi, 600);
        file->setValue("Scan_DeNoise/WBThreshold", 99);
        QCOMPARE(read(false).blackWhiteThreshold, 130);
        QCOMPARE(read(true).blackWhiteThreshold, 99);
        file->setValue("Scan_DeNoise/noiseMode", 1);
        file->setValue("Scan_DeNoise/noiseThreshold", 3);
        QCOMPARE(read(false).noiseSize, 2);
        file->setValue("Scan_DeNoise/noiseMode", 2);
        QCOMPARE(read(false).noiseSize, 3);
        file->setValue("Scan_Scan_PaperSize/width", 1050);
        QCOMPARE(read(false).paper.widthCm, 10.5);
    }

    void workInTheBackgroundLeavesTheEventLoopAlive()
    {
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&] { ++ticks; });
        timer.start(5);
        bool answered = false;
        runWithEvents([&] {
            while (ticks < 5) // ends only when events are delivered meanwhile
                QThread::msleep(1);
            QMetaObject::invokeMethod(
                this, [&] { answered = true; }, Qt::BlockingQueuedConnection);
        });
        QVERIFY(answered);
    }

    void lastPageIsKeptAsSample()
    {
        const QString scan = drawPage("zarnqwd200-0001.pnm", Qt::white, {1600, 2400});
        QImage page(scan);
        QPainter painter(&page);
        for (int line = 0; line < 8; ++line)
            painter.fillRect(900, 1500 + 40 * line, 400, 8, Qt::black);
        painter.end();
        QVERIFY(page.save(scan, "PPM") && keepLastPage(scan, 300));
        const SamplePage sample = lastPage();
        QVERIFY(sample.good() && sample.dpi == 300 && sample.size == page.size());
        QCOMPARE(QImage(sample.page).size(), QSize(400, 600));
        QVERIFY(sample.place.contains(QRect(900, 1500, 400, 280))); // where the lines are
        QCOMPARE(QImage(sample.detail),
                 page.copy(sample.place).convertToFormat(QImage(sample.detail).format()));
        QVERIFY(putFile(paths::tempFolder() + "zarnqwd200-0002.pnm", "broken"));
        QVERIFY(!keepLastPage(paths::tempFolder() + "zarnqwd200-0002.pnm", 300));
    }
};

QTEST_MAIN(TestPagePipeline)
#include "tst_pagepipeline.moc"
