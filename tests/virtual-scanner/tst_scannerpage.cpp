// SPDX-License-Identifier: GPL-3.0-or-later
#include "page.h"
#include "picture.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>
#include <functional>

using namespace vscan;

namespace {

constexpr int bedMost = 60;

// A delivered page, readable by pixel; negative positions count from the right and the lower edge.
struct Delivered
{
    StartReply shape;
    QByteArray bytes;
    QSize size() const { return {shape.width, shape.height}; }
    int grey(int x, int y) const
    {
        x += x < 0 ? shape.width : 0;
        y += y < 0 ? shape.height : 0;
        return static_cast<uchar>(bytes[y * shape.bytesPerLine + x * (shape.colour ? 3 : 1)]);
    }
};

Delivered deliver(
    const QString& picture, int resolution, Paper paper, ColourMode mode = ColourMode::Grey,
    const std::function<void(Settings&)>& more = [](Settings&) {})
{
    Settings settings;
    settings.set(OptResolution, resolution);
    settings.set(OptPaperSize, static_cast<int>(paper));
    settings.set(OptColourMode, static_cast<int>(mode));
    more(settings);
    Delivered page;
    Fd data;
    std::string error;
    if (!renderPage({picture.toStdString(), {}}, settings, 300, data, page.shape, error)) {
        qWarning("%s", error.c_str());
        return page;
    }
    page.bytes.resize(page.shape.bytesPerLine * page.shape.height + 1);
    page.bytes.resize(
        static_cast<int>(pread(data.get(), page.bytes.data(), static_cast<size_t>(page.bytes.size()), 0)));
    return page;
}

} // namespace

class TestScannerPage : public QObject
{
    Q_OBJECT
private slots:
    void readsEveryKindOfPicture()
    {
        const QByteArray greys("\x00\x80\xff\x10\x20\x30", 6), bits("\xa5\x80\x5a\x00", 4);
        const struct
        {
            QByteArray header, pixels;
            ColourMode mode;
            QByteArray expected;
        } rows[] = {{"P5\n\n3 2\n255\n", greys, ColourMode::Grey, greys},
                    {"P5\n# scanner\n3 2\n255\n", greys, ColourMode::Grey, greys},
                    {"P6\n2 1\n255\n", greys, ColourMode::Colour, greys},
                    {"P4\n9 2\n", bits, ColourMode::BlackWhite, bits},
                    {"P5\n1 2\n65535\n", QByteArray("\x80\x00\xff\xff", 4), ColourMode::Grey, "\x7f\xff"}};
        for (const auto& [header, pixels, mode, expected] : rows)
            QCOMPARE(deliver(write("a.pnm", header + pixels), 300, Paper::Full, mode).bytes, expected);
    }

    void readsTheResolution()
    {
        QCOMPARE(qRound(statedDpi(sheet("a.png", 50, 50, 200).toStdString())), 200);
        QCOMPARE(qRound(statedDpi(sheet("a.jpg", 50, 50, 150).toStdString())), 150);
        const QByteArray perCm("\xff\xd8\xff\xe0\x00\x10JFIF\x00\x01\x01\x02\x00\x76\x00\x76\x00\x00", 20);
        QCOMPARE(qRound(statedDpi(write("cm.jpg", perCm).toStdString())), 300);
        QFile png(m_folder.filePath("a.png"));
        QVERIFY(png.open(QIODevice::ReadOnly));
        const QByteArray whole = png.read(120);
        for (int length = 0; length < whole.size(); ++length) // a cut file states its resolution or none
            QVERIFY(statedDpi(write("cut.png", whole.left(length)).toStdString()) >= 0);
    }

    void placesTheSheet()
    {
        // Smaller than the area: bed at the right and below; the square is where the paper has it.
        const QString file = sheet("small.png", 100, 150, 300);
        const Delivered small = deliver(file, 300, Paper::A4);
        QCOMPARE(small.size(), QSize(2480, 3508));
        QCOMPARE(small.bytes.size(), 2480 * 3508);
        QCOMPARE(small.grey(toPixels(99, 300), toPixels(149, 300)), 255);
        QVERIFY(small.grey(toPixels(101, 300), 5) < bedMost && small.grey(5, toPixels(151, 300)) < bedMost);
        QCOMPARE(small.grey(toPixels(15, 300), toPixels(15, 300)), 0);
        QCOMPARE(small.grey(toPixels(21, 300), toPixels(15, 300)), 255);
        // Larger: cut at the right and below, at true scale whatever the picture's resolution.
        const Delivered cut = deliver(sheet("large.png", 250, 300, 150), 200, Paper::A5);
        QCOMPARE(cut.size(), QSize(toPixels(148, 200), toPixels(210, 200)));
        QCOMPARE(cut.grey(-1, -1), 255);
        QCOMPARE(cut.grey(toPixels(11, 200), toPixels(11, 200)), 0);
        QCOMPARE(cut.grey(toPixels(9, 200), toPixels(9, 200)), 255);
        for (Paper paper : {Paper::Full, Paper::User}) { // the whole picture, no bed
            const Delivered whole = deliver(file, 150, paper);
            QCOMPARE(whole.size(), QSize(toPixels(100, 150), toPixels(150, 150)));
            QCOMPARE(whole.grey(-1, -1), 255);
        }
        // No picture at all: a white A4 sheet.
        QCOMPARE(deliver({}, 100, Paper::A4).grey(820, 1165), 255);
    }

    // A page enlarged band by band has the same rows as the ramp it came from: no step where bands meet.
    void scalesSeamlessly()
    {
        QByteArray ramp;
        for (int y = 0; y < 256; ++y)
            ramp += QByteArray(10, static_cast<char>(y));
        const Delivered page = deliver(write("ramp.pnm", "P5\n10 256\n255\n" + ramp), 1200, Paper::Full);
        QCOMPARE(page.shape.height, 1024);
        for (int y = 1; y < page.shape.height; ++y) {
            const int step = page.grey(20, y) - page.grey(20, y - 1);
            QVERIFY2(step == 0 || step == 1, qPrintable(QString("row %1: step %2").arg(y).arg(step)));
        }
    }

    void turns()
    {
        const QString file = sheet("turned.png", 100, 150, 100);
        struct Case
        {
            Rotation rotation;
            int right, bottom; // the corner that was top-left: 1, or -1 at the right or the lower edge
        };
        for (const Case& c :
             {Case{Rotation::Left90, 1, -1}, Case{Rotation::Right90, -1, 1}, Case{Rotation::Half, -1, -1}}) {
            const Delivered page = deliver(file, 200, Paper::A4, ColourMode::Grey, [&c](Settings& turned) {
                turned.set(OptRotation, static_cast<int>(c.rotation));
            });
            const QSize a4(toPixels(210, 200), toPixels(297, 200));
            QCOMPARE(page.size(), c.rotation == Rotation::Half ? a4 : a4.transposed());
            const int square = toPixels(15, 200), edge = toPixels(5, 200);
            QCOMPARE(page.grey(c.right * square, c.bottom * square), 0);
            QCOMPARE(page.grey(c.right * edge, c.bottom * edge), 255);
            QVERIFY(page.grey(-c.right * edge, -c.bottom * edge) < bedMost);
        }
    }

    void fillsTheEdge()
    {
        const Delivered page =
            deliver(sheet("edge.png", 210, 297, 100), 100, Paper::A4, ColourMode::Grey,
                    [](Settings& filled) { filled.set(OptEdgeFill, static_cast<int>(EdgeFill::Black)); });
        QCOMPARE(page.grey(3, 600), 0);
        QCOMPARE(page.grey(-3, -3), 0);
        QCOMPARE(page.grey(30, 600), 255);
    }

    void convertsColours()
    {
        QImage image(20, 10, QImage::Format_ARGB32);
        image.fill(QColor(250, 10, 10));
        for (const char* name : {"red.png", "red.jpg"}) {
            const QString file = save(name, image, 300);
            const Delivered colour = deliver(file, 300, Paper::Full, ColourMode::Colour);
            QVERIFY(colour.shape.colour && colour.shape.bytesPerLine == 60 &&
                    qAbs(colour.grey(0, 0) - 250) < 4);
            const int grey = deliver(file, 300, Paper::Full).grey(0, 0);
            QVERIFY(grey > 60 && grey < 100);
            const Delivered bits = deliver(file, 300, Paper::Full, ColourMode::BlackWhite);
            QCOMPARE(bits.bytes.left(3), QByteArray("\xff\xff\xf0")); // black is 1, the padding is not
        }
        image.fill(Qt::transparent);
        QCOMPARE(deliver(save("clear.png", image, 300), 300, Paper::Full).grey(1, 1), 255);
    }

    void refusesDamagedPictures()
    {
        Fd data;
        StartReply shape;
        for (const QString& file :
             {write("empty.png", {}), write("text.jpg", "no picture"),
              write("huge.pnm", "P5\n900000 900000\n255\n"), m_folder.filePath("missing.png")}) {
            std::string error;
            QVERIFY(!renderPage({file.toStdString(), {}}, Settings(), 300, data, shape, error));
            QVERIFY(!error.empty());
        }
    }

private:
    // A white sheet with a black square of 10 mm, 10 mm from the top-left corner.
    QString sheet(const char* name, double widthMm, double heightMm, int dpi)
    {
        QImage image(toPixels(widthMm, dpi), toPixels(heightMm, dpi), QImage::Format_RGB32);
        image.fill(Qt::white);
        const int side = toPixels(20, dpi) - toPixels(10, dpi);
        QPainter(&image).fillRect(toPixels(10, dpi), toPixels(10, dpi), side, side, Qt::black);
        return save(name, image, dpi);
    }
    QString save(const char* name, QImage image, int dpi)
    {
        image.setDotsPerMeterX(qRound(dpi / 0.0254));
        image.setDotsPerMeterY(qRound(dpi / 0.0254));
        const QString path = m_folder.filePath(name);
        return image.save(path, nullptr, 95) ? path : QString();
    }
    QString write(const char* name, const QByteArray& bytes)
    {
        QFile file(m_folder.filePath(name));
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
        return file.fileName();
    }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestScannerPage)
#include "tst_scannerpage.moc"
