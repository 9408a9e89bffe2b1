// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawntext.h"
#include "imageconvert/drawnpages.h"
#include "imaging/orientation.h"

#include <QPainter>
#include <QtTest>
#include <opencv2/imgproc.hpp>

namespace {

QImage filledPage(const QString& text, const QSize& size = {1654, 2339}, int pixelSize = 36, int margin = 170)
{
    QImage page = drawntext::paper(size.width(), size.height()); // A4 at 200 dpi unless told otherwise
    drawntext::fillLines(page, text, pixelSize, margin);
    return page;
}

QImage toImage(const cv::Mat& page)
{
    return QImage(page.data, page.cols, page.rows, static_cast<int>(page.step), QImage::Format_BGR888).copy();
}

// Each cell of a ruled table holds a few words.
QImage tablePage()
{
    QImage page = drawntext::paper(1654, 2339);
    QPainter painter(&page);
    painter.setFont(drawntext::font(34));
    painter.setPen(QPen(QColor(40, 40, 40), 3));
    const QString text = drawntext::story();
    for (int row = 0; row < 28; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QRect cell(140 + column * 450, 160 + row * 70, 450, 70);
            painter.drawRect(cell);
            painter.drawText(cell.adjusted(14, 0, 0, 0), Qt::AlignVCenter,
                             text.mid((row * 3 + column) * 2, 10));
        }
    }
    return page;
}

QImage smallPage() // small enough to be judged as it is
{
    return filledPage(drawntext::story(), {800, 1100}, 22, 70);
}

QImage loneCharactersPage()
{
    QImage page = drawntext::paper(1654, 2339);
    QPainter painter(&page);
    painter.setFont(drawntext::font(40));
    for (int i = 0; i < 60; ++i)
        painter.drawText(150 + i % 6 * 250, 250 + i / 6 * 190, drawntext::story().mid(i, 1));
    return page;
}

QImage verticalPage()
{
    QImage page = drawntext::paper(1654, 2339);
    drawntext::fillColumns(page, drawntext::story(), 36, 170);
    return page;
}

} // namespace

class TestOrientation : public QObject
{
    Q_OBJECT

private slots:
    void turnsTextUpright_data()
    {
        QTest::addColumn<QImage>("page");
        QTest::newRow("text") << filledPage(drawntext::story());
        QTest::newRow("table") << tablePage();
        QTest::newRow("skewed by 5 degrees")
            << toImage(drawn::turned(drawntext::toMat(filledPage(drawntext::story())), 5));
        QTest::newRow("small") << smallPage();
    }
    void turnsTextUpright()
    {
        QFETCH(QImage, page);
        for (int lies = 0; lies < 360; lies += 90) {
            const int code = codeOf(page.transformed(QTransform().rotate(lies)));
            QVERIFY2(code != kOrientationUndecided, qPrintable(QString::number(lies)));
            QCOMPARE((lies + static_cast<int>(rotationAngle(code))) % 360, 0);
        }
    }

    void leavesAlone_data()
    {
        QTest::addColumn<QImage>("page");
        QTest::newRow("blank") << drawntext::paper(1654, 2339);
        QTest::newRow("photograph") << toImage(drawn::photograph({1654, 2339}));
        QTest::newRow("vertical text") << verticalPage();
        QTest::newRow("lone characters") << loneCharactersPage();
        QTest::newRow("digits") << filledPage(QStringLiteral("6908169.1809 68 "));
        QTest::newRow("rings and dots") << filledPage(QStringLiteral("。o。，o 0。o、。。o"));
    }
    void leavesAlone()
    {
        QFETCH(QImage, page);
        for (int lies = 0; lies < 360; lies += 90)
            QCOMPARE(codeOf(page.transformed(QTransform().rotate(lies))), kOrientationUndecided);
        QCOMPARE(rotationAngle(kOrientationUndecided), 0.0);
    }

    void withoutModelUndecided()
    {
        const QImage page = smallPage();
        QTemporaryDir empty;
        qputenv("TESSDATA_PREFIX", empty.path().toLocal8Bit());
        const int without = codeOf(page);
        qunsetenv("TESSDATA_PREFIX");
        QCOMPARE(without, kOrientationUndecided);
        QCOMPARE(codeOf(page), 0);
    }

    void unreadableFilesAreUndecided()
    {
        QCOMPARE(getRealRotation(std::string()), kOrientationUndecided);
        QCOMPARE(getRealRotation(m_folder.filePath(QStringLiteral("none.bmp")).toStdString()),
                 kOrientationUndecided);
        const QString path = m_folder.filePath(QStringLiteral("cut.bmp"));
        QVERIFY(smallPage().save(path));
        for (const int bytes : {5000, 60, 20, 1, 0}) {
            QVERIFY(QFile::resize(path, bytes));
            QCOMPARE(getRealRotation(path.toStdString()), kOrientationUndecided);
        }
    }

    void unfitPicturesAreUndecided()
    {
        const cv::Mat page = drawntext::toMat(smallPage());
        QCOMPARE(getRotation(page), 0);
        cv::Mat grey;
        cv::cvtColor(page, grey, cv::COLOR_BGR2GRAY);
        QCOMPARE(getRotation(grey), kOrientationUndecided);
        QCOMPARE(getRotation(cv::Mat()), kOrientationUndecided);
        for (const cv::Size& size :
             {cv::Size(1, 1), cv::Size(1, 4000), cv::Size(4000, 1), cv::Size(3, 400000)})
            QCOMPARE(getRotation(cv::Mat(size, CV_8UC3, cv::Scalar::all(0))), kOrientationUndecided);
    }

private:
    int codeOf(const QImage& page)
    {
        const QString path = m_folder.filePath(QStringLiteral("页面.bmp"));
        return page.save(path) ? getRealRotation(path.toStdString()) : -1;
    }

    QTemporaryDir m_folder;
};

QTEST_MAIN(TestOrientation)
#include "tst_orientation.moc"
