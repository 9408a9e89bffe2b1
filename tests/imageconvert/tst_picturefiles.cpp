// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawnpages.h"
#include "imageconvert/imageconvertfunction.h"
#include "imageconvert/picturereader.h"
#include "imageconvert/picturewriter.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>
#include <functional>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace imageconvert;

// Files in and out: every kind, its resolution, and everything that can be wrong with it.
class PictureFilesTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

    std::string path(const QString& name) const
    {
        return QFile::encodeName(m_folder.filePath(name)).toStdString();
    }
    void put(const QString& name, const QByteArray& bytes) const
    {
        QFile file(m_folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), qint64(bytes.size()));
    }
    QByteArray get(const QString& name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static bool same(const cv::Mat& a, const cv::Mat& b)
    {
        return a.size() == b.size() && a.type() == b.type() && cv::norm(a, b, cv::NORM_INF) == 0;
    }
    // The reason why the file is refused; empty when it is read.
    QString refusal(const QString& name) const
    {
        try {
            readPicture(path(name));
        } catch (const PictureError& error) {
            return QString::fromLocal8Bit(error.what());
        }
        return QString();
    }
    // The samples of the picture in a file of these bytes, row by row.
    QByteArray values(const QByteArray& bytes) const
    {
        put("v.pnm", bytes);
        const cv::Mat pixels = readPicture(path("v.pnm")).pixels;
        QByteArray out;
        for (int y = 0; y < pixels.rows; ++y)
            out.append(reinterpret_cast<const char*>(pixels.ptr(y)), pixels.cols * pixels.channels());
        return out;
    }
    static cv::Mat sample(int channels)
    {
        const cv::Mat page = drawn::page({{203, 151}, {250, 249, 246}, 6});
        if (channels == 3)
            return page;
        cv::Mat grey;
        cv::cvtColor(page, grey, cv::COLOR_RGB2GRAY);
        if (channels == 1)
            return grey;
        return grey < 128;
    }
    // What `body` returns under such a limit; -1 when a signal killed it.
    static int inChild(__rlimit_resource resource, rlim_t most, const std::function<int()>& body)
    {
        const pid_t child = fork();
        if (child == 0) {
            const rlimit limit{most, most};
            setrlimit(resource, &limit);
            _exit(body());
        }
        int status = -1;
        return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private slots:
    void writtenFilesComeBack_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<int>("channels"); // 0: two levels
        for (const char* type : {"jpg", "tif", "png", "bmp"})
            for (int channels : {0, 1, 3})
                QTest::addRow("%s-%d", type, channels) << QString(type) << channels;
    }
    void writtenFilesComeBack()
    {
        QFETCH(QString, type);
        QFETCH(int, channels);
        const cv::Mat pixels = sample(channels);
        for (double dpi : {100.0, 300.0, 600.0}) {
            const QString name = QStringLiteral("back.") + type;
            writePicture(pixels, path(name), type.toStdString(), dpi, {});
            const ReadResult read = readPicture(path(name));
            QVERIFY2(std::abs(read.dpi - dpi) < 0.1, qPrintable(QString::number(read.dpi)));
            if (type == "jpg") {
                QCOMPARE(read.pixels.size(), pixels.size());
                QVERIFY(drawn::meanDifference(read.pixels, pixels) < (channels == 0 ? 12 : 5));
            } else {
                QVERIFY(same(read.pixels, pixels));
            }
            // A reader that is not ours agrees.
            QCOMPARE(cv::imread(path(name)).size(), pixels.size());
        }
        QCOMPARE(QDir(m_folder.path()).entryList({".page*"}, QDir::Files | QDir::Hidden).size(), 0);
    }

    void twoLevelPicturesAreOneBitFiles()
    {
        const cv::Mat bits = sample(0);
        for (const char* type : {"tif", "png", "bmp"}) {
            writePicture(bits, path("bits"), type, 300, {});
            const qint64 size = get("bits").size();
            QVERIFY2(size < 28 * 151 + 1000, qPrintable(QString::number(size))); // 28 bytes a row
        }
        // TIFF: group 4 unless asked otherwise; a grey picture cannot have it.
        SaveOptions options;
        const auto compression = [&](const cv::Mat& pixels, SaveOptions::Tiff tiff) {
            options.tiff = tiff;
            writePicture(pixels, path("c.tif"), "tif", 300, options);
            const QByteArray bytes = get("c.tif");
            const int tag = bytes.indexOf(QByteArray::fromHex("030103000100")); // compression, short, one
            return tag < 0 ? -1
                           : static_cast<int>(static_cast<uchar>(bytes[tag + 8]) |
                                              static_cast<uchar>(bytes[tag + 9]) << 8);
        };
        QCOMPARE(compression(bits, SaveOptions::Tiff::Default), 4);
        QCOMPARE(compression(bits, SaveOptions::Tiff::Lzw), 5);
        QCOMPARE(compression(sample(1), SaveOptions::Tiff::Group4), 5);
        QCOMPARE(compression(sample(3), SaveOptions::Tiff::None), 1);
    }

    void pnmOfEveryKind()
    {
        const cv::Mat colour = sample(3), grey = sample(1);
        drawn::writePnm(m_folder.filePath("a.pnm"), colour);
        QVERIFY(same(readPicture(path("a.pnm")).pixels, colour));
        drawn::writePnm(m_folder.filePath("a.pnm"), grey, "\n\n"); // the scanner's own grey pages
        QVERIFY(same(readPicture(path("a.pnm")).pixels, grey));
        drawn::writePnm(m_folder.filePath("a.pnm"), grey, "\n# a comment 5 6\n");
        QVERIFY(same(readPicture(path("a.pnm")).pixels, grey));
        QCOMPARE(values(QByteArray("P4\n10 1\n") + char(0x55) + char(0x40)),
                 QByteArray("\xff\0\xff\0\xff\0\xff\0\xff\0", 10));
        QCOMPARE(values(QByteArray("P5 2 1 65535\n") + QByteArray("\xff\xff\x80\x00", 4)),
                 QByteArray("\xff\x80", 2));
        QCOMPARE(values(QByteArray("P5 3 1 15\n") + QByteArray("\x00\x0f\x05", 3)),
                 QByteArray("\x00\xff\x55", 3));
        QCOMPARE(values("P1 3 1 101"), QByteArray("\0\xff\0", 3));
        QCOMPARE(values("P2 2 1 100 0 100 "), QByteArray("\0\xff", 2));
        QCOMPARE(values("P3 1 1 255 1 2 3 "), QByteArray("\1\2\3", 3));
    }

    void deepTransparentAndPalettePictures()
    {
        cv::Mat deep(4, 5, CV_16UC1, cv::Scalar(0x8080));
        cv::imwrite(path("deep.png"), deep);
        QCOMPARE(int(readPicture(path("deep.png")).pixels.at<uchar>(1, 1)), 0x80);
        cv::imwrite(path("deep.tif"), deep);
        QVERIFY(std::abs(readPicture(path("deep.tif")).pixels.at<uchar>(1, 1) - 0x80) <= 1);
        cv::Mat clear(4, 5, CV_8UC4, cv::Scalar(10, 20, 30, 0));
        cv::imwrite(path("clear.png"), clear);
        QCOMPARE(readPicture(path("clear.png")).pixels.at<cv::Vec3b>(0, 0), cv::Vec3b(255, 255, 255));
        put("dot.gif",
            QByteArray::fromHex("47494638396101000100800000ff000000000021f90400000000002c0000000001000100"
                                "000202440100 3b"));
        const cv::Mat gif = readPicture(path("dot.gif")).pixels;
        QCOMPARE(gif.at<cv::Vec3b>(0, 0), cv::Vec3b(255, 0, 0));
    }

    // As cameras and phones store them; a reader that is not ours tells how they are meant to be seen.
    void orientationInTheFile()
    {
        cv::Mat pixels(48, 80, CV_8UC3, cv::Scalar::all(230));
        pixels(cv::Rect(0, 0, 32, 16)).setTo(cv::Scalar(200, 20, 20));
        writePicture(pixels, path("o.jpg"), "jpg", 300, {});
        writePicture(pixels, path("o.tif"), "tif", 300, {});
        const QByteArray jpeg = get("o.jpg"), tiff = get("o.tif");
        const QByteArray tag = QByteArray::fromHex("12010300010000000100");
        QVERIFY(tiff.contains(tag));
        for (char way = 1; way <= 8; ++way) {
            const QByteArray little =
                QByteArray::fromHex("45786966000049492a000800000001001201030001000000") + way +
                QByteArray(7, '\0');
            const QByteArray big = QByteArray::fromHex("4578696600004d4d002a000000080001011200030000000100") +
                                   way + QByteArray(6, '\0');
            cv::Mat seen;
            for (const QByteArray& exif : {little, big}) {
                QByteArray segment = QByteArray::fromHex("ffe100") + char(exif.size() + 2) + exif;
                put("way.jpg", QByteArray(jpeg).insert(2, segment));
                seen = readPicture(path("way.jpg")).pixels;
                cv::Mat expected;
                cv::cvtColor(cv::imread(path("way.jpg")), expected, cv::COLOR_BGR2RGB);
                QCOMPARE(seen.size(), expected.size());
                QVERIFY2(drawn::meanDifference(seen, expected) < 2, qPrintable(QString::number(way)));
                // Cut off anywhere it is no orientation and no crash.
                for (int length = 0; length < exif.size() - 1; ++length) {
                    segment = QByteArray::fromHex("ffe100") + char(length + 2) + exif.left(length);
                    put("way.jpg", QByteArray(jpeg).insert(2, segment));
                    QVERIFY(!readPicture(path("way.jpg")).pixels.empty());
                }
            }
            QByteArray turned = tiff;
            put("way.tif", turned.replace(turned.indexOf(tag) + 8, 1, &way, 1));
            const cv::Mat read = readPicture(path("way.tif")).pixels;
            QCOMPARE(read.size(), seen.size());
            QVERIFY2(drawn::meanDifference(read, seen) < 2, qPrintable(QString::number(way)));
        }
    }

    // 20000 x 20000 pixels in a process that may not have them.
    void noMemory()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the address sanitizer's own memory is beyond any limit");
#endif
        QFile file(m_folder.filePath("large.pnm"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QByteArray header = "P5\n\n20000 20000\n255\n";
        QVERIFY(file.write(header) == header.size() && file.resize(header.size() + 400000000ll)); // sparse
        file.close();
        QCOMPARE(inChild(RLIMIT_AS, 600u << 20,
                         [this] {
                             ImageConvertFunction library;
                             const bool refused = !library.getImage(path("large.pnm").c_str());
                             return !refused                                                       ? 1
                                    : library.lastError().contains("large.pnm: not enough memory") ? 0
                                                                                                   : 2;
                         }),
                 0);
    }

    // 3 x 2 pixels by numbers of 4 bits, top row first, of three colours: numbers 0 1 2 / 2 1 7, where 7 has
    // none.
    void bmpWithColourTable()
    {
        const QByteArray head = "424d4a00000000000000420000002800000003000000feffffff01000400"
                                "00000000080000000000000000000000";
        const QByteArray rows = "0120000021700000";
        const auto read = [&](const char* table) {
            return values(QByteArray::fromHex(head + "0300000000000000" + table + rows)).toHex();
        };
        QCOMPARE(read("000000008080800020202000"), QByteArray("008020208000")); // grey: one channel
        QCOMPARE(read("0000ff0000ff0000ff000000"), QByteArray("ff000000ff000000ff"
                                                              "0000ff00ff00000000")); // red first
    }

    void cutOffFiles()
    {
        for (const char* type : {"jpg", "tif", "png", "bmp", "pnm"}) {
            if (type == QLatin1String("pnm"))
                drawn::writePnm(m_folder.filePath("whole"), sample(3));
            else
                writePicture(sample(3), path("whole"), type, 300, {});
            const QByteArray whole = get("whole");
            for (int length = 0; length < whole.size() - 16; length += length < 80 ? 1 : whole.size() / 23) {
                put("cut", whole.left(length));
                QVERIFY2(!refusal("cut").isEmpty(), qPrintable(QString(type) + QString::number(length)));
            }
            // Any byte of the header wrong: read or refused, nothing else.
            for (int at = 0; at < std::min(whole.size(), 120); ++at)
                for (char wrong : {'\0', '\x7f', '\xff'}) {
                    put("damaged", QByteArray(whole).replace(at, 1, &wrong, 1));
                    refusal("damaged");
                }
        }
    }

    void lyingHeaders()
    {
        const QByteArray hugeBmp = QByteArray("BM").leftJustified(14, '\0') +
                                   QByteArray::fromHex("28000000ffff0000ffff000001001800");
        const QByteArray hugePng =
            QByteArray::fromHex("89504e470d0a1a0a0000000d494844527fffffff7fffffff0802000000");
        const QByteArray body(100, 'x');
        for (const QByteArray& bytes :
             {QByteArray(), QByteArray("this is not a picture at all"),
              QByteArray("push graphic-context\nimage over 0,0 0,0 'label:x'\n"),
              "P6\n60000 60000\n255\n" + body, QByteArray("P6\n99999999999999999999 3\n255\n"),
              "P5\n20000 20000\n255\n" + body, QByteArray("P5\n0 10\n255\n"), "P5\n-5 10\n255\n" + body,
              "P5\n5 10\n0\n" + body, hugeBmp.leftJustified(200, '\0'), hugePng.leftJustified(200, '\0')}) {
            put("lie", bytes);
            ImageConvertFunction library;
            QVERIFY2(!library.getImage(path("lie").c_str()), bytes.constData());
            QVERIFY2(library.lastError().contains("lie"), qPrintable(library.lastError()));
        }
    }

    // Over the file-size limit: false, the old file whole, no leftovers; the process survives the signal.
    void fullDisk_data()
    {
        writtenFilesComeBack_data();
    }
    void fullDisk()
    {
        QFETCH(QString, type);
        QFETCH(int, channels);
        QDir(m_folder.path()).mkdir("full");
        put("full/page." + type, "the old file");
        cv::Mat noisy(700, 900, channels == 3 ? CV_8UC3 : CV_8UC1);
        cv::randu(noisy, 0, 256);
        if (channels == 0)
            noisy = noisy < 128;
        drawn::writePnm(m_folder.filePath("noisy.pnm"), noisy);
        QCOMPARE(inChild(RLIMIT_FSIZE, 20000,
                         [&] {
                             ImageConvertFunction library;
                             MagickWand* wand = library.getImage(path("noisy.pnm").c_str());
                             const bool saved = library.saveImage(wand, m_folder.filePath("full/"), "page",
                                                                  type.toLatin1().constData(), 300);
                             return !wand ? 1 : saved ? 2 : !library.lastErrorIsDiskFull() ? 3 : 0;
                         }),
                 0);
        QCOMPARE(get("full/page." + type), QByteArray("the old file"));
        QCOMPARE(QDir(m_folder.filePath("full")).entryList(QDir::Files | QDir::Hidden),
                 QStringList{"page." + type});
        QDir(m_folder.filePath("full")).removeRecursively();
    }

    void unwritablePlaces()
    {
        ImageConvertFunction library;
        drawn::writePnm(m_folder.filePath("p.pnm"), sample(1));
        MagickWand* wand = library.getImage(path("p.pnm").c_str());
        QVERIFY(wand);
        QVERIFY(!library.saveImage(wand, m_folder.filePath("missing/"), "page", "jpg", 300));
        QVERIFY(library.lastError().contains("missing") && !library.lastErrorIsDiskFull());
        QVERIFY(!library.saveImage(wand, m_folder.path() + '/', "page", "xyz", 300));
        QVERIFY(!library.saveImage(wand, m_folder.path() + '/', "", "jpg", 300));
        QVERIFY(library.saveImage(wand, m_folder.path() + '/', "第一页 a'b", "jpg", 300));
        QVERIFY(QFile::exists(m_folder.filePath("第一页 a'b.jpg")));
    }
};

QTEST_GUILESS_MAIN(PictureFilesTest)
#include "tst_picturefiles.moc"
