// SPDX-License-Identifier: GPL-3.0-or-later
#include "page.h"
#include "picture.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

using namespace vscan;

namespace {

constexpr int bedMost = 60;

// A delivered page, readable by pixel.
struct Delivered
{
    StartReply shape;
    QByteArray bytes;
    int grey(int x, int y) const
    {
        const int samples = shape.colour ? 3 : 1;
        if (shape.depth == 1)
            return bytes[y * shape.bytesPerLine + x / 8] & 0x80 >> x % 8 ? 0 : 255;
        return static_cast<uchar>(bytes[y * shape.bytesPerLine + x * samples]);
    }
};

} // namespace

class TestScannerPage : public QObject
{
    Q_OBJECT
private slots:
    void readsEveryKindOfPicture();
    void readsTheResolution();
    void placesTheSheet();
    void keepsTheWholePicture();
    void scalesSeamlessly();
    void turns();
    void fillsTheEdge();
    void convertsColours();
    void refusesDamagedPictures();

private:
    // A white sheet with a black square of 10 mm, 10 mm from the top-left corner.
    QString sheet(const char* name, double widthMm, double heightMm, int dpi);
    QString write(const char* name, const QByteArray& bytes);
    Delivered deliver(const QString& picture, const Settings& settings, double defaultDpi = 300);
    static Settings settings(int resolution, Paper paper, ColourMode mode = ColourMode::Grey);

    QTemporaryDir m_folder;
};

QString TestScannerPage::sheet(const char* name, double widthMm, double heightMm, int dpi)
{
    QImage image(toPixels(widthMm, dpi), toPixels(heightMm, dpi), QImage::Format_RGB888);
    image.fill(Qt::white);
    for (int y = toPixels(10, dpi); y < toPixels(20, dpi); ++y) {
        for (int x = toPixels(10, dpi); x < toPixels(20, dpi); ++x)
            image.setPixelColor(x, y, Qt::black);
    }
    image.setDotsPerMeterX(qRound(dpi / 0.0254));
    image.setDotsPerMeterY(qRound(dpi / 0.0254));
    const QString path = m_folder.filePath(name);
    return image.save(path) ? path : QString();
}

QString TestScannerPage::write(const char* name, const QByteArray& bytes)
{
    QFile file(m_folder.filePath(name));
    file.open(QIODevice::WriteOnly);
    file.write(bytes);
    return file.fileName();
}

Delivered TestScannerPage::deliver(const QString& picture, const Settings& settings, double defaultDpi)
{
    Delivered page;
    Fd data;
    std::string error;
    if (!renderPage({picture.toStdString(), {}}, settings, defaultDpi, data, page.shape, error)) {
        qWarning("%s", error.c_str());
        return page;
    }
    page.bytes.resize(page.shape.bytesPerLine * page.shape.height + 1);
    page.bytes.resize(
        static_cast<int>(pread(data.get(), page.bytes.data(), static_cast<size_t>(page.bytes.size()), 0)));
    return page;
}

Settings TestScannerPage::settings(int resolution, Paper paper, ColourMode mode)
{
    Settings settings;
    settings.set(OptResolution, resolution);
    settings.set(OptPaperSize, static_cast<int>(paper));
    settings.set(OptColourMode, static_cast<int>(mode));
    return settings;
}

void TestScannerPage::readsEveryKindOfPicture()
{
    const QByteArray greys("\x00\x80\xff\x10\x20\x30", 6);
    const Settings full = settings(300, Paper::Full);
    const QStringList files{write("p5.pnm", "P5\n3 2\n255\n" + greys),
                            write("p5gap.pnm", "P5\n\n3 2\n255\n" + greys),
                            write("p5note.pnm", "P5\n# scanner\n3 2\n255\n" + greys)};
    for (const QString& file : files) {
        const Delivered page = deliver(file, full);
        QCOMPARE(page.bytes, greys);
        QCOMPARE(page.shape.width, 3);
    }
    const QByteArray colours("\xff\x00\x00\x00\xff\x00\x00\x00\xff\x01\x02\x03", 12);
    QCOMPARE(
        deliver(write("p6.ppm", "P6\n2 2\n255\n" + colours), settings(300, Paper::Full, ColourMode::Colour))
            .bytes,
        colours);
    const QByteArray bits("\xa5\x80\x5a\x00", 4); // 9 pixels a row
    QCOMPARE(deliver(write("p4.pbm", "P4\n9 2\n" + bits), settings(300, Paper::Full, ColourMode::BlackWhite))
                 .bytes,
             bits);
    QCOMPARE(deliver(write("p5deep.pnm", QByteArray("P5\n1 2\n65535\n\x80\x00\xff\xff", 17)), full).bytes,
             QByteArray("\x7f\xff"));
    QImage photo(40, 30, QImage::Format_RGB888);
    photo.fill(QColor(200, 60, 20));
    photo.setDotsPerMeterX(11811);
    photo.setDotsPerMeterY(11811);
    QVERIFY(photo.save(m_folder.filePath("photo.jpg"), nullptr, 95));
    const Delivered jpeg =
        deliver(m_folder.filePath("photo.jpg"), settings(300, Paper::Full, ColourMode::Colour));
    QVERIFY(jpeg.shape.colour && jpeg.shape.width == 40 && qAbs(jpeg.grey(0, 0) - 200) < 4);
    QImage clear(4, 4, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    QVERIFY(clear.save(m_folder.filePath("clear.png")));
    QCOMPARE(deliver(m_folder.filePath("clear.png"), full).grey(1, 1), 255);
}

void TestScannerPage::readsTheResolution()
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

void TestScannerPage::placesTheSheet()
{
    // Smaller than the area: bed at the right and below; the square is where the paper has it.
    const Delivered small = deliver(sheet("small.png", 100, 150, 300), settings(300, Paper::A4));
    QCOMPARE(QSize(small.shape.width, small.shape.height), QSize(2480, 3508));
    QCOMPARE(small.bytes.size(), 2480 * 3508);
    QCOMPARE(small.grey(toPixels(99, 300), toPixels(149, 300)), 255);
    QVERIFY(small.grey(toPixels(101, 300), 5) < bedMost && small.grey(5, toPixels(151, 300)) < bedMost);
    QCOMPARE(small.grey(toPixels(15, 300), toPixels(15, 300)), 0);
    QCOMPARE(small.grey(toPixels(21, 300), toPixels(15, 300)), 255);
    // Larger: cut at the right and below, at true scale whatever the picture's resolution.
    const Delivered cut = deliver(sheet("large.png", 250, 300, 150), settings(200, Paper::A5));
    QCOMPARE(QSize(cut.shape.width, cut.shape.height), QSize(toPixels(148, 200), toPixels(210, 200)));
    QCOMPARE(cut.grey(cut.shape.width - 1, cut.shape.height - 1), 255);
    QCOMPARE(cut.grey(toPixels(11, 200), toPixels(11, 200)), 0);
    QCOMPARE(cut.grey(toPixels(9, 200), toPixels(9, 200)), 255);
    // 400 is delivered as 600 dpi; a picture without a resolution has the default one.
    const QString plain = write("plain.pnm", "P5\n100 50\n255\n" + QByteArray(5000, '\xff'));
    const Delivered fine = deliver(plain, settings(400, Paper::Full), 150);
    QCOMPARE(QSize(fine.shape.width, fine.shape.height), QSize(400, 200));
    // No picture at all: a white A4 sheet.
    QCOMPARE(deliver({}, settings(100, Paper::A4)).grey(820, 1165), 255);
}

void TestScannerPage::keepsTheWholePicture()
{
    const QString file = sheet("whole.png", 76.2, 152.4, 300);
    for (Paper paper : {Paper::Full, Paper::User}) {
        const Delivered page = deliver(file, settings(150, paper));
        QCOMPARE(QSize(page.shape.width, page.shape.height), QSize(450, 900));
        QCOMPARE(page.grey(page.shape.width - 1, page.shape.height - 1), 255);
    }
}

// A page enlarged band by band has the same rows as the ramp it came from: no step where bands meet.
void TestScannerPage::scalesSeamlessly()
{
    QByteArray ramp;
    for (int y = 0; y < 256; ++y)
        ramp += QByteArray(10, static_cast<char>(y));
    const Delivered page =
        deliver(write("ramp.pnm", "P5\n10 256\n255\n" + ramp), settings(1200, Paper::Full), 300);
    QCOMPARE(page.shape.height, 1024);
    for (int y = 1; y < page.shape.height; ++y) {
        const int step = page.grey(20, y) - page.grey(20, y - 1);
        QVERIFY2(step == 0 || step == 1, qPrintable(QString("row %1: step %2").arg(y).arg(step)));
    }
}

void TestScannerPage::turns()
{
    const QString file = sheet("turned.png", 100, 150, 100);
    struct Case
    {
        Rotation rotation;
        bool right, bottom;
    };
    for (const Case& c : {Case{Rotation::Left90, false, true}, Case{Rotation::Right90, true, false},
                          Case{Rotation::Half, true, true}}) {
        for (int resolution : {100, 200}) {
            Settings turned = settings(resolution, Paper::A4);
            turned.set(OptRotation, static_cast<int>(c.rotation));
            const Delivered page = deliver(file, turned);
            const QSize size(page.shape.width, page.shape.height);
            const QSize a4(toPixels(210, resolution), toPixels(297, resolution));
            QCOMPARE(size, c.rotation == Rotation::Half ? a4 : a4.transposed());
            const int near = toPixels(15, resolution); // the square is in the corner that was top-left
            QCOMPARE(page.grey(c.right ? size.width() - near : near, c.bottom ? size.height() - near : near),
                     0);
            const int edge = toPixels(5, resolution);
            QCOMPARE(page.grey(c.right ? size.width() - edge : edge, c.bottom ? size.height() - edge : edge),
                     255);
            QVERIFY(page.grey(c.right ? edge : size.width() - edge, c.bottom ? edge : size.height() - edge) <
                    bedMost);
        }
    }
}

void TestScannerPage::fillsTheEdge()
{
    Settings filled = settings(100, Paper::A4);
    const QString file = sheet("edge.png", 210, 297, 100);
    filled.set(OptEdgeFill, static_cast<int>(EdgeFill::Black));
    const Delivered page = deliver(file, filled);
    QCOMPARE(page.grey(3, 600), 0);
    QCOMPARE(page.grey(page.shape.width - 3, page.shape.height - 3), 0);
    QCOMPARE(page.grey(30, 600), 255);
}

void TestScannerPage::convertsColours()
{
    QImage image(20, 10, QImage::Format_RGB888);
    image.fill(QColor(250, 10, 10));
    image.setDotsPerMeterX(11811);
    image.setDotsPerMeterY(11811);
    const QString file = m_folder.filePath("red.png");
    QVERIFY(image.save(file));
    const Delivered colour = deliver(file, settings(300, Paper::Full, ColourMode::Colour));
    QVERIFY(colour.shape.colour && colour.shape.bytesPerLine == 60);
    QCOMPARE(colour.bytes.left(3), QByteArray("\xfa\x0a\x0a"));
    const int grey = deliver(file, settings(300, Paper::Full)).grey(0, 0);
    QVERIFY(grey > 60 && grey < 100);
    const Delivered bits = deliver(file, settings(300, Paper::Full, ColourMode::BlackWhite));
    QCOMPARE(bits.shape.bytesPerLine, 3);
    QCOMPARE(bits.bytes.left(3), QByteArray("\xff\xff\xf0")); // black is 1, the padding is not
}

void TestScannerPage::refusesDamagedPictures()
{
    Fd data;
    StartReply shape;
    std::string error;
    for (const QString& file :
         {write("empty.png", {}), write("text.jpg", "no picture"),
          write("huge.pnm", "P5\n900000 900000\n255\n"), m_folder.filePath("missing.png")}) {
        error.clear();
        QVERIFY(!renderPage({file.toStdString(), {}}, Settings(), 300, data, shape, error));
        QVERIFY(!error.empty());
    }
}

QTEST_GUILESS_MAIN(TestScannerPage)
#include "tst_scannerpage.moc"
