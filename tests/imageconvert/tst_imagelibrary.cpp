// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawnpages.h"
#include "imageconvert/imageconvertfunction.h"
#include "imageconvert/launcher.h"
#include "imageconvert/picturereader.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>
#include <functional>
#include <limits>
#include <opencv2/imgproc.hpp>

using imageconvert::commandFor;
using imageconvert::readPicture;

// The library as its callers see it: handles, chains, pieces, joined pages, follow-up applications.
class ImageLibraryTest : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    QByteArray m_page;  // upright A4 page at 150 dpi
    QByteArray m_small; // A5 sheet, tilted on a dark bed

    QByteArray file(const QString& name) const { return QFile::encodeName(m_folder.filePath(name)); }
    cv::Mat saved(ImageConvertFunction& library, MagickWand* wand)
    {
        if (!library.saveImage(wand, m_folder.path() + '/', "saved", "bmp", 150))
            return {};
        return readPicture(file("saved.bmp").toStdString()).pixels;
    }
    using Operation = std::function<MagickWand*(ImageConvertFunction&, MagickWand*)>;
    static constexpr size_t kGentle = 3; // the first of them only cut, straighten or judge
    static std::vector<Operation> allOperations()
    {
        using L = ImageConvertFunction;
        return {[](L& l, MagickWand* w) { return l.imageAutoCrop(w); },
                [](L& l, MagickWand* w) { return l.imageDeskew(w); },
                [](L& l, MagickWand* w) { return l.AutoDeleteBlankPage(w, 20, 0.81) ? w : w; },
                [](L& l, MagickWand* w) { return l.imageGamma(w, 1.2); },
                [](L& l, MagickWand* w) { return l.imageLightAndContrast(w, 15, 35); },
                [](L& l, MagickWand* w) { return l.AutoDeleteNoise(w, 3); },
                [](L& l, MagickWand* w) { return l.imageBlur(w, 2); },
                [](L& l, MagickWand* w) { return l.imageSharpen(w, 2); },
                [](L& l, MagickWand* w) { return l.imageRotate(w, 90); },
                [](L& l, MagickWand* w) { return l.imageRotate(w, 7); },
                [](L& l, MagickWand* w) { return l.imageAutoDense(w); },
                [](L& l, MagickWand* w) { return l.imageDelBackground(w, 10); },
                [](L& l, MagickWand* w) { return l.imageCharacterEnhance(w, 10); },
                [](L& l, MagickWand* w) { return l.imageRedFile(w); },
                [](L& l, MagickWand* w) { return l.imageResolution(w, 75, 75, 600); },
                [](L& l, MagickWand* w) { return l.imageUserPS(w, 10, 15, 1, 100); },
                [](L& l, MagickWand* w) { return l.imageInBorder(w, 255, 0, 0, 50, 50, 300); },
                [](L& l, MagickWand* w) { return l.imageOutBorder(w, 0, 0, 0, 2, 3, 100); },
                [](L& l, MagickWand* w) { return l.imageRGBtoGray(w); },
                [](L& l, MagickWand* w) { return l.AutoDeleteNoise(l.imageRGBtoWB(w, 130), 5); },
                [](L& l, MagickWand* w) { return l.imageCompress(w, "tif", "lzw"); }};
    }

private slots:
    void initTestCase()
    {
        const cv::Mat page = drawn::page();
        drawn::writePnm(m_folder.filePath("page.pnm"), page);
        drawn::writePnm(m_folder.filePath("small.pnm"),
                        drawn::onBed(drawn::page({{880, 1240}, {250, 249, 246}, 16}), 3, page.size(),
                                     cv::Scalar::all(40)));
        m_page = file("page.pnm");
        m_small = file("small.pnm");
    }

    void saveOptionsAndThresholdAreTheUsersWish()
    {
        ImageConvertFunction library;
        const auto sizeAs = [&](const char* type, const char* value) {
            ImageHandle page(library, library.getImage(m_page.constData()));
            page.reset(library.imageCompress(page.get(), type, value));
            if (!library.saveImage(page.get(), m_folder.path() + '/', "sized", type, 150))
                return qint64(-1);
            return QFileInfo(m_folder.filePath(QStringLiteral("sized.") + type)).size();
        };
        QVERIFY(sizeAs("jpg", "20") < sizeAs("jpg", "85") && sizeAs("jpg", "85") < sizeAs("jpg", "98"));
        QCOMPARE(sizeAs("jpg", "300"), sizeAs("jpg", "85")); // no quality: the default stays
        QVERIFY(sizeAs("png", "9") < sizeAs("png", "0"));
        const auto black = [&](int threshold) {
            ImageHandle page(library, library.getImage(m_page.constData()));
            page.reset(library.imageRGBtoWB(page.get(), threshold));
            return drawn::darkShare(imageconvert::toGrey(saved(library, page.get())), 128);
        };
        QVERIFY(black(60) <= black(130) && black(130) < black(220));
        QVERIFY(black(130) > 0.01);
    }

    void nullAndUnknownHandlesAreHarmless()
    {
        ImageConvertFunction library, other;
        MagickWand* freed = library.getImage(m_page.constData());
        library.destroyImage(freed);
        auto* wild = reinterpret_cast<MagickWand*>(quintptr(0x1234567));
        for (MagickWand* wand : {static_cast<MagickWand*>(nullptr), freed, wild}) {
            for (const Operation& operation : allOperations()) {
                QCOMPARE(operation(library, wand), wand);
                QVERIFY(!library.lastError().isEmpty());
            }
            QVERIFY(!library.AutoDeleteBlankPage(wand, 20, 0.81));
            QVERIFY(!library.saveImage(wand, m_folder.path() + '/', "no", "jpg", 300));
            QCOMPARE(library.width(wand), 0);
            library.destroyImage(wand);
        }
        MagickWand* next = library.getImage(m_page.constData());
        QVERIFY(next != freed); // a stale handle never becomes another page
        QVERIFY(!library.getImage(nullptr) && !library.getImage("") &&
                !library.getImage(m_folder.path().toLocal8Bit().constData()));
        QVERIFY(library.width(next) == 1240 && library.lastError().contains(m_folder.path()));
    }

    void everyOperationInARow()
    {
        ImageConvertFunction library;
        MagickWand* wand = library.getImage(m_small.constData());
        for (const Operation& operation : allOperations()) {
            wand = operation(library, wand);
            QVERIFY2(library.lastError().isEmpty(), qPrintable(library.lastError()));
        }
        QVERIFY(!saved(library, wand).empty());
    }

    // Pictures that no scanner delivers come out as ones that can be saved; the gentle operations keep their
    // size.
    void oddPictures_data()
    {
        QTest::addColumn<QSize>("size");
        for (const QSize& size :
             {QSize(1, 1), QSize(1, 300), QSize(3000, 1), QSize(2, 2), QSize(40, 17), QSize(300, 300)})
            QTest::addRow("%dx%d", size.width(), size.height()) << size;
    }
    void oddPictures()
    {
        QFETCH(QSize, size);
        ImageConvertFunction library;
        const std::vector<Operation> operations = allOperations();
        const int type[] = {CV_8UC1, CV_8UC3};
        for (int kind = 0; kind < 8; ++kind) {
            cv::Mat pixels(size.height(), size.width(), type[kind % 2], cv::Scalar::all(kind / 2 % 2 * 255));
            if (kind >= 4)
                cv::randu(pixels, 0, 256);
            if (kind >= 6)
                pixels = pixels < 128;
            drawn::writePnm(m_folder.filePath("odd.pnm"), pixels);
            for (size_t i = 0; i < operations.size(); ++i) {
                ImageHandle page(library, library.getImage(file("odd.pnm").constData()));
                QVERIFY(page.get());
                page.reset(operations[i](library, page.get()));
                QVERIFY2(library.lastError().isEmpty(), qPrintable(library.lastError()));
                const QSize result(library.width(page.get()), library.height(page.get()));
                QVERIFY(i < kGentle ? result == size : !result.isEmpty());
                for (const char* kindOfFile : {"jpg", "tif", "png", "bmp"})
                    QVERIFY2(library.saveImage(page.get(), m_folder.path() + '/', "odd", kindOfFile, 300),
                             qPrintable(library.lastError()));
            }
        }
    }

    // What cannot be done leaves the page as it was and says so.
    void badParametersChangeNothing()
    {
        ImageConvertFunction library;
        MagickWand* wand = library.getImage(m_page.constData());
        const cv::Mat before = saved(library, wand);
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const Operation bad[] = {[](auto& l, auto* w) { return l.imageResolution(w, 0, 0, 300); },
                                 [](auto& l, auto* w) { return l.imageResolution(w, 9600, 9600, 1); },
                                 [](auto& l, auto* w) { return l.imageUserPS(w, 1e12, 5, 1, 300); },
                                 [=](auto& l, auto* w) { return l.imageRotate(w, nan); }};
        for (const Operation& operation : bad) {
            QCOMPARE(operation(library, wand), wand);
            QVERIFY2(library.lastError().contains(m_page), qPrintable(library.lastError()));
        }
        library.imageGamma(wand, nan);
        library.imageInBorder(wand, 1, 2, 3, -5, nan, 300);
        library.imageAutoCrop(wand);
        library.AutoDeleteNoise(wand, 3);
        QCOMPARE(cv::norm(saved(library, wand), before, cv::NORM_INF), 0.0);
    }

    // Tone changes are kept back until pixels are needed; the page must look as if they were not.
    void toneBeforeAndAfterGeometry()
    {
        ImageConvertFunction library;
        MagickWand* early = library.getImage(m_page.constData());
        library.imageRotate(library.imageLightAndContrast(library.imageGamma(early, 1.4), 10, 20), 90);
        MagickWand* late = library.getImage(m_page.constData());
        library.imageLightAndContrast(library.imageGamma(library.imageRotate(late, 90), 1.4), 10, 20);
        const cv::Mat first = saved(library, early), second = saved(library, late);
        QCOMPARE(cv::norm(first, second, cv::NORM_INF), 0.0);
        QCOMPARE(cv::norm(saved(library, early), first, cv::NORM_INF), 0.0); // saving changes nothing
    }

    void cropStillWorksOnLightenedPages()
    {
        cv::Mat page = drawn::page({{880, 1240}, {252, 252, 252}, 16});
        drawn::writePnm(m_folder.filePath("light.pnm"),
                        drawn::onBed(page, 0, {1240, 1754}, cv::Scalar::all(236)));
        ImageConvertFunction library;
        MagickWand* wand = library.getImage(file("light.pnm").constData());
        library.imageAutoCrop(library.imageLightAndContrast(library.imageGamma(wand, 1.2), 15, 35));
        QVERIFY(std::abs(library.width(wand) - 880) < 8 && std::abs(library.height(wand) - 1240) < 8);
    }

    void piecesOfAPage()
    {
        QDir folder(m_folder.path());
        folder.mkdir("pieces");
        folder.cd("pieces");
        const QByteArray out = QFile::encodeName(folder.path());
        QFile old(folder.filePath("crop999.bmp"));
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.close();
        ImageConvertFunction library;
        QCOMPARE(library.imageCrop(m_page.constData(), out.constData(), 12, 1), 12);
        const QStringList names = folder.entryList({"crop*.bmp"}, QDir::Files, QDir::Name);
        QCOMPARE(names.size(), 12);
        QCOMPARE(names.first(), QString("crop01.bmp"));
        const cv::Mat page = readPicture(m_page.toStdString()).pixels;
        int x = 0; // in name order the pieces lie side by side
        for (const QString& name : names) {
            const cv::Mat piece = readPicture(QFile::encodeName(folder.filePath(name)).toStdString()).pixels;
            QCOMPARE(cv::norm(piece, page(cv::Rect(x, 0, piece.cols, page.rows)), cv::NORM_INF), 0.0);
            x += piece.cols;
        }
        QCOMPARE(x, page.cols);
        QCOMPARE(library.imageCrop(m_page.constData(), out.constData(), 2, 0), 2);
        QCOMPARE(folder.entryList({"crop*.bmp"}), (QStringList{"crop1.bmp", "crop2.bmp"}));
        QCOMPARE(library.imageCrop(file("none.pnm").constData(), out.constData(), 2, 0), 0);
        QVERIFY(!library.lastError().isEmpty());
        QVERIFY(folder.entryList({"crop*.bmp"}).isEmpty());
        QCOMPARE(library.imageCrop(m_page.constData(), "/nowhere", 2, 0), 0);
    }

    void joinedPages()
    {
        ImageConvertFunction library;
        MagickWand* former = library.getImage(m_page.constData());
        MagickWand* beside = library.imageAppend(former, m_page.constData(), m_small.constData(), 0);
        QCOMPARE(library.width(former), 0); // freed
        QCOMPARE(library.width(beside), 2480);
        QCOMPARE(library.height(library.imageAppend(nullptr, m_page.constData(), m_small.constData(), 1)),
                 3508);
        QVERIFY(!library.imageAppend(nullptr, m_page.constData(), file("none.pnm").constData(), 0));
        QVERIFY(library.lastError().contains("none.pnm"));
    }

    void commandLines()
    {
        const QString f = "/tmp/a b/第1页.jpg";
        const QList<QPair<QString, QStringList>> lines{
            // program and arguments; empty: refused
            {"", {"xdg-open", f}},
            {"gimp", {"gimp", f}},
            {"gimp -n %f --fast", {"gimp", "-n", f, "--fast"}},
            {"eog %U", {"eog", "file:///tmp/a%20b/%E7%AC%AC1%E9%A1%B5.jpg"}},
            {"\"/opt/my viewer/run\" \"a \\\"b\\\" \\$HOME\" %f", {"/opt/my viewer/run", "a \"b\" $HOME", f}},
            {"eog ; rm -rf * | cat $(id) `id`",
             {"eog", ";", "rm", "-rf", "*", "|", "cat", "$(id)", "`id`", f}},
            {"app %i %c %k %m %f", {"app", f}},
            {"app 100%% --in=%f", {"app", "100%", "--in=" + f}},
            {"app \"\" %f", {"app", "", f}},
            {"app \"abc", {}},
            {"app a\nb", {}}};
        for (const auto& [line, expected] : lines) {
            const auto command = commandFor(line, f);
            QVERIFY2(command.error.isEmpty() != expected.isEmpty(), qPrintable(line));
            if (!expected.isEmpty())
                QCOMPARE(QStringList{command.program} + command.arguments, expected);
        }
    }

    void applicationGetsTheFile()
    {
        QFile script(m_folder.filePath("my viewer.sh"));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\nprintf '%s' \"$1\" > \"$2.part\" && mv \"$2.part\" \"$2\"\n");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        const QString told = m_folder.filePath("told");
        const QByteArray line = QString("\"%1\" %f \"%2\"").arg(script.fileName(), told).toUtf8();
        ImageConvertFunction library;
        const QString folder = m_folder.path() + '/';
        QVERIFY2(library.imageStartExe(folder, "page", "pnm", line.constData()),
                 qPrintable(library.lastError()));
        QTRY_VERIFY(QFile::exists(told));
        QFile answer(told);
        QVERIFY(answer.open(QIODevice::ReadOnly));
        QCOMPARE(answer.readAll(), m_page);
        QVERIFY(!library.imageStartExe(folder, "page", "pnm", "no-such-program-here"));
        QVERIFY(library.lastError().contains("no-such-program-here"));
        QVERIFY(!library.imageStartExe(folder, "missing", "jpg", line.constData()));
    }
};

QTEST_GUILESS_MAIN(ImageLibraryTest)
#include "tst_imagelibrary.moc"
