// SPDX-License-Identifier: GPL-3.0-or-later
#include "driving.h"
#include "forms/previewwidget.h"

#include <QGraphicsView>
#include <QPainter>
#include <QPointer>
#include <QTemporaryDir>

static bool isRed(const QColor& color)
{
    return color.red() > 200 && color.green() < 60 && color.blue() < 60;
}

static bool showsThePage(PreviewWidget* preview)
{
    auto* view = control<QGraphicsView>(*preview, "pageView");
    const QImage seen = view->viewport()->grab().toImage();
    const QRectF scene = view->sceneRect();
    const auto color = [&](double x) {
        return seen.pixelColor(view->mapFromScene(scene.left() + scene.width() * x, scene.center().y()));
    };
    return isRed(color(0.25)) && color(0.75) == QColor(Qt::white);
}

class PreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void survivesTheFile()
    {
        for (const char* name : {"page.ppm", "page.jpg", "page.png", "page.bmp", "page.tif"}) {
            const QString path = page(name);
            QPointer<PreviewWidget> preview = new PreviewWidget;
            preview->setPreviewFilePthAndShow(path);
            QVERIFY(QFile::remove(path));
            QVERIFY(QTest::qWaitForWindowExposed(preview));
            QVERIFY2(showsThePage(preview), name);
            QVERIFY(control<QLabel>(*preview, "statusLabel")->text().contains("620 × 877"));
            QVERIFY(!preview->isModal());
            QTest::keyClick(preview, Qt::Key_Escape);
            QTRY_VERIFY(preview.isNull());
        }
    }

    void zooming()
    {
        QPointer<PreviewWidget> preview = new PreviewWidget;
        preview->setPreviewFilePthAndShow(page("zoom.png", QSize(1000, 1414)));
        QVERIFY(QTest::qWaitForWindowActive(preview));
        checkReachable(*preview);
        auto* view = control<QGraphicsView>(*preview, "pageView");
        const auto fits = [&] {
            const QRect shown = view->mapFromScene(view->sceneRect()).boundingRect();
            return view->viewport()->rect().adjusted(-2, -2, 2, 2).contains(shown);
        };
        const auto key = [&](Qt::Key code) { QTest::keyClick(preview, code, Qt::ControlModifier); };
        QVERIFY(fits());
        preview->resize(300, 300);
        QTRY_VERIFY(fits()); // follows the window
        const double fitting = preview->zoom();
        key(Qt::Key_Plus);
        QVERIFY(preview->zoom() > fitting * 1.1);
        key(Qt::Key_Minus);
        QVERIFY(qAbs(preview->zoom() - fitting) < 0.001);
        key(Qt::Key_1);
        QCOMPARE(preview->zoom(), 1.0);
        QVERIFY(!fits());
        for (int i = 0; i < 40; ++i)
            key(Qt::Key_Plus);
        QCOMPARE(preview->zoom(), 8.0);
        key(Qt::Key_0);
        QVERIFY(fits());
        delete preview;
    }

    void largePages()
    {
        PreviewPicture picture;
        for (const char* name : {"huge.jpg", "huge.ppm"}) {
            QVERIFY(picture.load(page(name, QSize(4960, 7016))));
            const QImage shown = picture.decode();
            QCOMPARE(qMax(shown.width(), shown.height()), PreviewPicture::longestSide);
            QCOMPARE(picture.originalSize(), QSize(4960, 7016));
            QVERIFY(isRed(shown.pixelColor(shown.width() / 4, 100)));
        }
        QVERIFY(picture.load(page("stack.ppm", QSize(2480, 3508))));
        QVERIFY2(picture.storedBytes() < 4 << 20, "a page of a stack costs megabytes");
    }

    void badFiles()
    {
        QFile whole(page("whole.png"));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        const QVector<QPair<QString, QByteArray>> bad = {{"empty.ppm", ""},
                                                         {"text.jpg", "no picture"},
                                                         {"absurd.ppm", "P6\n2000000 2000000\n255\nxx"},
                                                         {"short.ppm", "P6\n600 800\n255\nxx"},
                                                         {"cut.png", whole.read(60)}};
        QStringList paths = {file("missing.ppm"), m_folder.path()};
        for (const auto& [name, bytes] : bad) {
            QFile out(file(name));
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(bytes);
            paths << out.fileName();
        }
        for (const QString& path : paths) {
            QPointer<PreviewWidget> preview = new PreviewWidget;
            preview->setPreviewFilePthAndShow(path);
            QVERIFY(QTest::qWaitForWindowExposed(preview));
            const auto* fault = control<QLabel>(*preview, "faultLabel");
            QVERIFY2(fault->isVisible() && fault->text().contains("无法显示"), qPrintable(path));
            preview->zoomIn();
            preview->zoomToFit();
            preview->nextPage();
            delete preview;
        }
    }

    void groupIsOneViewer()
    {
        auto group = std::make_shared<PreviewGroup>();
        QVector<QPointer<PreviewWidget>> pages;
        for (int i = 0; i < 3; ++i) {
            const QString path = page(QString("group%1.png").arg(i), QSize(400 + i, 600));
            pages << new PreviewWidget(group);
            pages.last()->setPreviewFilePthAndShow(path);
            QFile::remove(path);
        }
        const auto onlyVisible = [&](int shown) {
            for (int i = 0; i < pages.size(); ++i)
                if (pages[i]->isVisible() != (i == shown))
                    return false;
            return QTest::qWaitForWindowActive(pages[shown]) && showsThePage(pages[shown]);
        };
        QVERIFY(onlyVisible(0));
        QVERIFY(control<QLabel>(*pages[0], "statusLabel")->text().contains("共 3 页"));
        QTest::keyClick(pages[0], Qt::Key_PageUp);
        QVERIFY(onlyVisible(0)); // there is nothing before
        QTest::keyClick(pages[0], Qt::Key_PageDown);
        QVERIFY(onlyVisible(1));
        QVERIFY(control<QLabel>(*pages[1], "statusLabel")->text().contains("401 × 600"));
        QTest::keyClick(pages[1], Qt::Key_PageDown);
        QVERIFY(onlyVisible(2));
        QTest::keyClick(pages[2], Qt::Key_Escape);
        for (const auto& one : pages)
            QTRY_VERIFY(one.isNull());
    }

private:
    QString file(const QString& name) const { return m_folder.filePath(name); }

    // Left half red, right half white.
    QString page(const QString& name, const QSize& size = QSize(620, 877)) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), Qt::red);
        if (!image.save(file(name)))
            qFatal("cannot write %s", qPrintable(name));
        return file(name);
    }

    QTemporaryDir m_folder;
};

QTEST_MAIN(PreviewTest)
#include "tst_preview.moc"
