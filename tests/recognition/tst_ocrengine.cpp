// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawntext.h"
#include "recognition/ocrengine.h"

#include <QPainter>
#include <QtTest>
#include <omp.h>
#include <thread>

namespace {

cv::Mat drawnLine(const QString& text)
{
    QImage line = drawntext::paper(40 * (text.size() + 2), 70);
    QPainter painter(&line);
    painter.setFont(drawntext::font(36));
    painter.drawText(20, 50, text);
    painter.end();
    return drawntext::toMat(line);
}

} // namespace

class TestOcrEngine : public QObject
{
    Q_OBJECT

private slots:
    void readsChinese()
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

    void withoutModelNothingIsRead()
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
};

QTEST_MAIN(TestOcrEngine)
#include "tst_ocrengine.moc"
