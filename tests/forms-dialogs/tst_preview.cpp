// SPDX-License-Identifier: GPL-3.0-or-later
#include "driving.h"
#include "forms/previewwidget.h"

#include <QGraphicsView>
#include <QPainter>
#include <QPointer>
#include <QTemporaryDir>
#include <QWheelEvent>

class PreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void survivesTheFile_data();
    void survivesTheFile();
    void zooming();
    void wheel();
    void hugePageIsReduced();
    void badFiles();
    void groupIsOneViewer();
    void hiddenPagesAreSmall();
    void keyboard();

private:
    QString file(const QString& name) const { return m_folder.filePath(name); }
    QString page(const QString& name, const QSize& size = QSize(620, 877)) const;

    QTemporaryDir m_folder;
};

// Left half red, right half white.
QString PreviewTest::page(const QString& name, const QSize& size) const
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter(&image).fillRect(0, 0, size.width() / 2, size.height(), Qt::red);
    if (!image.save(file(name)))
        qFatal("cannot write %s", qPrintable(name));
    return file(name);
}

static QColor viewColor(PreviewWidget* preview, double x)
{
    auto* view = control<QGraphicsView>(*preview, "pageView");
    const QRectF scene = view->sceneRect();
    const QPoint at = view->mapFromScene(scene.left() + scene.width() * x, scene.center().y());
    return view->viewport()->grab().toImage().pixelColor(at);
}

static bool isRed(const QColor& color)
{
    return color.red() > 200 && color.green() < 60 && color.blue() < 60;
}

void PreviewTest::survivesTheFile_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"page.ppm", "page.jpg", "page.png", "page.bmp", "page.tif"})
        QTest::newRow(name) << name;
}

void PreviewTest::survivesTheFile()
{
    QFETCH(QString, name);
    const QString path = page(name);
    QPointer<PreviewWidget> preview = new PreviewWidget;
    preview->setPreviewFilePthAndShow(path);
    QVERIFY(QFile::remove(path));
    QVERIFY(QTest::qWaitForWindowExposed(preview));
    QVERIFY(isRed(viewColor(preview, 0.25)));
    QCOMPARE(viewColor(preview, 0.75), QColor(Qt::white));
    QVERIFY(control<QLabel>(*preview, "statusLabel")->text().contains("620 × 877"));
    QVERIFY(!preview->isModal());
    QTest::keyClick(preview, Qt::Key_Escape);
    QTRY_VERIFY(preview.isNull());
}

void PreviewTest::zooming()
{
    QPointer<PreviewWidget> preview = new PreviewWidget;
    preview->setPreviewFilePthAndShow(page("zoom.png", QSize(1000, 1414)));
    QVERIFY(QTest::qWaitForWindowActive(preview));
    auto* view = control<QGraphicsView>(*preview, "pageView");
    const auto fits = [&] {
        return view->viewport()
            ->rect()
            .adjusted(-2, -2, 2, 2)
            .contains(view->mapFromScene(view->sceneRect()).boundingRect());
    };
    QVERIFY(fits());
    preview->resize(300, 300);
    QTRY_VERIFY(fits()); // follows the window
    const double fitting = preview->zoom();
    QTest::keyClick(preview, Qt::Key_Plus, Qt::ControlModifier);
    QVERIFY(preview->zoom() > fitting * 1.1);
    QTest::keyClick(preview, Qt::Key_Minus, Qt::ControlModifier);
    QVERIFY(qAbs(preview->zoom() - fitting) < 0.001);
    QTest::keyClick(preview, Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(preview->zoom(), 1.0);
    QVERIFY(!fits());
    for (int i = 0; i < 40; ++i)
        QTest::keyClick(preview, Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(preview->zoom(), 8.0);
    QTest::keyClick(preview, Qt::Key_0, Qt::ControlModifier);
    QVERIFY(fits());
    delete preview;
}

void PreviewTest::wheel()
{
    QPointer<PreviewWidget> preview = new PreviewWidget;
    preview->setPreviewFilePthAndShow(page("wheel.png"));
    QVERIFY(QTest::qWaitForWindowExposed(preview));
    auto* viewport = control<QGraphicsView>(*preview, "pageView")->viewport();
    const double before = preview->zoom();
    const auto turn = [&](Qt::KeyboardModifiers modifiers) {
        const QPointF at = viewport->rect().center();
        QWheelEvent event(at, viewport->mapToGlobal(at.toPoint()), QPoint(), QPoint(0, 120), Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(viewport, &event);
    };
    turn(Qt::NoModifier);
    QCOMPARE(preview->zoom(), before);
    turn(Qt::ControlModifier);
    QVERIFY(preview->zoom() > before);
    delete preview;
}

void PreviewTest::hugePageIsReduced()
{
    PreviewPicture picture;
    for (const char* name : {"huge.jpg", "huge.ppm"}) {
        QVERIFY(picture.load(page(name, QSize(4960, 7016))));
        const QImage shown = picture.decode();
        QCOMPARE(qMax(shown.width(), shown.height()), PreviewPicture::longestSide);
        QCOMPARE(picture.originalSize(), QSize(4960, 7016));
        QVERIFY(isRed(shown.pixelColor(shown.width() / 4, 100)));
    }
    QPointer<PreviewWidget> preview = new PreviewWidget;
    preview->setPreviewFilePthAndShow(file("huge.jpg"));
    preview->zoomToOriginal();
    QCOMPARE(control<QGraphicsView>(*preview, "pageView")->sceneRect().toRect().width(), 4960);
    delete preview;
}

void PreviewTest::badFiles()
{
    const auto write = [this](const QString& name, const QByteArray& bytes) {
        QFile out(file(name));
        if (!out.open(QIODevice::WriteOnly))
            qFatal("cannot write");
        out.write(bytes);
        return file(name);
    };
    QFile jpeg(page("whole.png"));
    QVERIFY(jpeg.open(QIODevice::ReadOnly));
    const QStringList bad = {file("missing.ppm"),
                             write("empty.ppm", ""),
                             write("text.jpg", "no picture"),
                             write("absurd.ppm", "P6\n2000000 2000000\n255\nxx"),
                             write("short.ppm", "P6\n600 800\n255\nxx"),
                             write("cut.png", jpeg.read(60)),
                             m_folder.path()};
    for (const QString& path : bad) {
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

void PreviewTest::groupIsOneViewer()
{
    auto group = std::make_shared<PreviewGroup>();
    QVector<QPointer<PreviewWidget>> pages;
    for (int i = 0; i < 3; ++i) {
        const QString path = page(QString("group%1.png").arg(i), QSize(400 + i, 600));
        pages << new PreviewWidget(group);
        pages.last()->setPreviewFilePthAndShow(path);
        QFile::remove(path);
    }
    const auto visible = [&] {
        QList<int> seen;
        for (int i = 0; i < pages.size(); ++i)
            if (pages[i] && pages[i]->isVisible())
                seen << i;
        return seen;
    };
    QCOMPARE(visible(), QList<int>{0});
    QVERIFY(QTest::qWaitForWindowActive(pages[0]));
    QVERIFY(control<QLabel>(*pages[0], "statusLabel")->text().contains("共 3 页"));
    QTest::keyClick(pages[0], Qt::Key_PageUp);
    QCOMPARE(visible(), QList<int>{0}); // there is nothing before
    QTest::keyClick(pages[0], Qt::Key_PageDown);
    QCOMPARE(visible(), QList<int>{1});
    QVERIFY(QTest::qWaitForWindowActive(pages[1]));
    QVERIFY(isRed(viewColor(pages[1], 0.25)));
    QVERIFY(control<QLabel>(*pages[1], "statusLabel")->text().contains("401 × 600"));
    QTest::keyClick(pages[1], Qt::Key_PageDown);
    QCOMPARE(visible(), QList<int>{2});
    QVERIFY(QTest::qWaitForWindowActive(pages[2]));
    QTest::keyClick(pages[2], Qt::Key_Escape);
    for (const auto& one : pages)
        QTRY_VERIFY(one.isNull());
}

void PreviewTest::hiddenPagesAreSmall()
{
    PreviewPicture picture;
    QVERIFY(picture.load(page("stack.ppm", QSize(2480, 3508))));
    QVERIFY2(picture.storedBytes() < 4 << 20, "a page of a stack costs megabytes");
}

void PreviewTest::keyboard()
{
    QPointer<PreviewWidget> preview = new PreviewWidget;
    preview->setPreviewFilePthAndShow(page("keys.png"));
    QVERIFY(QTest::qWaitForWindowActive(preview));
    checkReachable(*preview);
    delete preview;
}

QTEST_MAIN(PreviewTest)
#include "tst_preview.moc"
