// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/documentfiles.h"
#include "imageconvert/drawnpages.h"
#include "imageconvert/imageconvertfunction.h"
#include "imageconvert/picture.h"
#include "imageconvert/picturereader.h"
#include "imageconvert/picturewriter.h"

#include <QFile>
#include <QtTest>
#include <opencv2/core/utility.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

using namespace imageconvert;

// What a user gets: PDF and OFD documents as independent readers see them.
class DocumentsTest : public QObject
{
    Q_OBJECT

    DocumentFiles m_files;
    ImageConvertFunction m_library;
    const cv::Mat m_page = drawn::page({{620, 877}, {250, 240, 220}, 18, 1, 0}); // A4 at 75 dpi

    std::string native(const QString& name) const
    {
        return QFile::encodeName(m_files.path(name)).toStdString();
    }
    void write(const QString& name, const cv::Mat& pixels, double dpi = 75) const
    {
        writePicture(pixels, native(name), name.section('.', -1).toStdString(), dpi, {});
    }
    QStringList paths(const QStringList& names) const
    {
        QStringList all;
        for (const QString& name : names)
            all.append(m_files.path(name));
        return all;
    }
    bool savePdf(const QStringList& names, const DocumentOptions& options = {})
    {
        return m_library.savePDF(paths(names), m_files.folder(), "d", "pdf", options);
    }
    bool saveOfd(const QStringList& names, int paperCode = 2, const DocumentOptions& options = {})
    {
        return m_library.saveOFD(paths(names), m_files.folder() + '/', "d", paperCode, options);
    }
    // A JPEG with an Exif segment behind its JFIF segment.
    static QByteArray withExif(const QByteArray& jpeg, int orientation)
    {
        const QByteArray before = QByteArray::fromHex("ffe10022"
                                                      "457869660000"
                                                      "49492a0008000000"
                                                      "0100"
                                                      "1201030001000000");
        return jpeg.left(20) + before + static_cast<char>(orientation) + QByteArray(7, 0) + jpeg.mid(20);
    }
    // True when the reader's picture shows the page, where it must be: a page moved by 2 % is another
    // picture.
    static bool shows(const cv::Mat& drawnPage, const cv::Mat& page)
    {
        cv::Mat expected, moved, seen;
        cv::resize(page, expected, drawnPage.size(), 0, 0, cv::INTER_AREA);
        const cv::Mat shift =
            (cv::Mat_<double>(2, 3) << 1, 0, 0.02 * expected.cols, 0, 1, 0.02 * expected.rows);
        cv::blur(expected, expected, {5, 5}); // readers differ in how they scale thin strokes
        cv::blur(drawnPage, seen, {5, 5});
        cv::warpAffine(expected, moved, shift, expected.size(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
        const double here = drawn::meanDifference(seen, expected);
        const bool good = here < 6 && here < 0.5 * drawn::meanDifference(seen, moved);
        if (!good)
            qWarning("difference %.1f, moved %.1f", here, drawn::meanDifference(seen, moved));
        return good;
    }
    cv::Mat grey() const { return toGrey(m_page); }
    cv::Mat bits() const { return grey() < 128; }

    // One page of every kind that the writers treat differently.
    QStringList kinds() const
    {
        write("colour.jpg", m_page);
        write("grey.jpg", grey());
        write("bits.png", bits());
        write("bits.tif", bits());
        write("grey.png", grey());
        write("colour.png", m_page);
        write("colour.tif", m_page);
        cv::Mat inOrder;
        cv::cvtColor(m_page, inOrder, cv::COLOR_RGB2BGRA);
        cv::imwrite(native("alpha.png"), inOrder);
        cv::cvtColor(m_page, inOrder, cv::COLOR_RGB2BGR);
        cv::imwrite(native("progressive.jpg"), inOrder, {cv::IMWRITE_JPEG_PROGRESSIVE, 1});
        drawn::writePnm(m_files.path("plain.pnm"), m_page);
        return {"colour.jpg", "grey.jpg",   "bits.png",        "bits.tif",  "grey.png",
                "colour.png", "colour.tif", "progressive.jpg", "alpha.png", "plain.pnm"};
    }

private slots:
    void initTestCase() { cv::setNumThreads(1); }

    void pdfHoldsThePagesAsTheyAre()
    {
        const QStringList pages = kinds();
        DocumentOptions options;
        options.sourceDpi = 75;
        QVERIFY2(savePdf(pages, options), qPrintable(m_library.lastError()));
        const QByteArray check = m_files.run("qpdf", {"--check", "d.pdf"});
        QVERIFY2(check.contains("No syntax or stream encoding errors"), check.constData());

        const QList<QByteArray> list =
            m_files.run("pdfimages", {"-list", "d.pdf"}).split('\n').mid(2, pages.size());
        const QByteArrayList encodings = {"jpeg",  "jpeg",  "ccitt", "ccitt", "image",
                                          "image", "image", "jpeg",  "image", "image"};
        for (int i = 0; i < pages.size(); ++i) {
            QVERIFY2(list[i].contains(' ' + encodings[i] + ' '), list[i].constData());
            QVERIFY2(list[i].simplified().contains(" 75 75 "), list[i].constData());
        }
        m_files.run("pdfimages", {"-png", "d.pdf", "i"});
        m_files.run("pdfimages", {"-j", "d.pdf", "j"});
        for (int i = 0; i < pages.size(); ++i) {
            const QString number = QStringLiteral("-%1.").arg(i, 3, 10, QLatin1Char('0'));
            if (encodings[i] == "jpeg")
                QCOMPARE(m_files.get("j" + number + "jpg"), m_files.get(pages[i]));
            else
                QVERIFY2(cv::norm(m_files.picture("i" + number + "png"), m_files.picture(pages[i]),
                                  cv::NORM_INF) == 0,
                         qPrintable(pages[i]));
        }
        const QList<cv::Mat> drawn = m_files.drawnPdf("d.pdf", 75);
        QCOMPARE(drawn.size(), pages.size());
        for (int i = 0; i < pages.size(); ++i)
            QVERIFY2(shows(drawn[i], m_files.picture(pages[i])), qPrintable(pages[i]));

        options.jpegQuality = 80; // what is neither JPEG nor two-level gets smaller on demand
        QVERIFY(savePdf(pages, options));
        QCOMPARE(m_files.run("pdfimages", {"-list", "d.pdf"}).count(" jpeg "), pages.size() - 2);
        QVERIFY(shows(m_files.drawnPdf("d.pdf", 75).last(), m_page));
    }

    void ofdHoldsThePagesAsTheyAre()
    {
        const QStringList pages = kinds();
        DocumentOptions options;
        options.sourceDpi = 75;
        QVERIFY2(saveOfd(pages, 2, options), qPrintable(m_library.lastError()));
        const QList<cv::Mat> drawn = m_files.drawnOfd("d.ofd", 75);
        QCOMPARE(drawn.size(), pages.size());
        for (int i = 0; i < pages.size(); ++i)
            QVERIFY2(shows(drawn[i], m_files.picture(pages[i])), qPrintable(pages[i]));
        for (int i : {0, 1, 2, 4, 5, 7, 8}) {
            const QString name = QStringLiteral("Doc_0/Res/Image_%1.%2").arg(i).arg(pages[i].section('.', 1));
            QCOMPARE(m_files.run("unzip", {"-p", "d.ofd", name}), m_files.get(pages[i]));
        }
        // A two-level page that must be converted stays two-level.
        m_files.put("three.png", m_files.run("unzip", {"-p", "d.ofd", "Doc_0/Res/Image_3.png"}));
        QCOMPARE(int(m_files.get("three.png")[24]), 1);
        const QByteArray entry = m_files.run("unzip", {"-p", "d.ofd", "OFD.xml"});
        QVERIFY(QRegularExpression("<ofd:DocID>[0-9a-f]{32}</ofd:DocID>").match(entry).hasMatch());
    }

    // One page each; sizes as readers see them, points in the PDF and millimetres in the OFD.
    void pageSizes()
    {
        const struct
        {
            const char* what;
            cv::Size pixels;
            double dpi; // 0: the file does not say, the caller says 50
            int paperCode;
            const char* points;
            const char* millimetres;
        } rows[] = {
            {"A4", {620, 877}, 75, 2, "595.276 x 841.89", "210 297"},
            {"A4 across, 1.9 mm short", {1162, 827}, 100, 2, "841.89 x 595.276", "297 210"},
            {"2.2 mm short is no A4", {818, 1169}, 100, 7, "588.96 x 841.68", "207.77 296.93"},
            {"A5", {437, 620}, 75, 4, "419.528 x 595.276", "148 209"},
            {"B5", {537, 759}, 75, 5, "515.906 x 728.504", "181 257"},
            {"Letter", {638, 825}, 75, 3, "612 x 792", "215 279"},
            {"Legal", {1050, 638}, 75, 6, "1008 x 612", "355 215"},
            {"a slip cut out of A4 keeps its shape", {200, 400}, 50, 2, "288 x 576", "101.6 203.2"},
            {"unknown resolution", {413, 585}, 0, 2, "595.276 x 841.89", "210 297"},
            {"two A4 side by side", {827, 585}, 50, 7, "1190.55 x 841.89", "420.12 297.18"},
        };
        QStringList pages;
        DocumentOptions options;
        options.sourceDpi = 50;
        for (const auto& row : rows) {
            const cv::Mat page(row.pixels, CV_8UC1, cv::Scalar(200));
            pages.append(QStringLiteral("size%1.%2").arg(pages.size()).arg(row.dpi > 0 ? "jpg" : "pnm"));
            row.dpi > 0 ? write(pages.last(), page, row.dpi)
                        : drawn::writePnm(m_files.path(pages.last()), page);
            QVERIFY(saveOfd({pages.last()}, row.paperCode, options));
            for (const char* part : {"Doc_0/Document.xml", "Doc_0/Pages/Page_0/Content.xml"}) {
                const QByteArray xml = m_files.run("unzip", {"-p", "d.ofd", part});
                QVERIFY2(xml.contains(QByteArray(">0 0 ") + row.millimetres + "<"),
                         (row.what + xml).constData());
            }
        }
        QVERIFY(savePdf(pages, options));
        const QList<QByteArray> info = m_files.run("pdfinfo", {"-l", "99", "d.pdf"}).split('\n');
        for (int i = 0; i < pages.size(); ++i) {
            const QByteArray line =
                "Page " + QByteArray::number(i + 1).rightJustified(4) + " size:  " + rows[i].points + " pts";
            QVERIFY2(std::any_of(info.begin(), info.end(),
                                 [&](const QByteArray& l) { return l.startsWith(line); }),
                     (rows[i].what + info.join('\n')).constData());
        }
    }

    // A camera's or another program's JPEG stands as every picture viewer shows it.
    void exifOrientationIsObeyed()
    {
        write("plain.jpg", m_page);
        QStringList pages;
        for (int orientation = 1; orientation <= 8; ++orientation) {
            pages.append(QStringLiteral("turned%1.jpg").arg(orientation));
            m_files.put(pages.last(), withExif(m_files.get("plain.jpg"), orientation));
        }
        QVERIFY2(savePdf(pages) && saveOfd(pages), qPrintable(m_library.lastError()));
        const QList<cv::Mat> pdf = m_files.drawnPdf("d.pdf", 75), ofd = m_files.drawnOfd("d.ofd", 75);
        QCOMPARE(pdf.size(), 8);
        QCOMPARE(ofd.size(), 8);
        for (int i = 0; i < 8; ++i) {
            const cv::Mat expected = m_files.picture(pages[i]); // OpenCV turns it
            QCOMPARE(pdf[i].cols > pdf[i].rows, i >= 4);
            QVERIFY2(shows(pdf[i], expected) && shows(ofd[i], expected), qPrintable(pages[i]));
        }
        m_files.run("pdfimages", {"-j", "d.pdf", "t"});
        QCOMPARE(m_files.get("t-005.jpg"), m_files.get(pages[5]));
    }

    void documentInformation()
    {
        write("a.jpg", m_page);
        const QString title = QString::fromUtf8("通知 <A&B> 𠮷") + QChar(1);
        DocumentOptions options;
        options.title = title;
        const QDateTime before = QDateTime::currentDateTime().addSecs(-1);
        QVERIFY(savePdf({"a.jpg"}, options) && saveOfd({"a.jpg"}, 2, options));
        const QString info = QString::fromUtf8(m_files.run("pdfinfo", {"-isodates", "d.pdf"}));
        QVERIFY2(info.contains(title.chopped(1)) && info.contains("ZARN-QWD200"), qPrintable(info));
        const QString date = QRegularExpression("CreationDate: +(\\S+)").match(info).captured(1);
        QVERIFY(QDateTime::fromString(date + (date.size() == 22 ? ":00" : ""), Qt::ISODate) >= before);
        QXmlStreamReader xmp(m_files.run("pdfinfo", {"-meta", "d.pdf"}));
        QString texts;
        while (!xmp.atEnd())
            if (xmp.readNext() == QXmlStreamReader::Characters)
                texts += xmp.text();
        QVERIFY2(!xmp.hasError(), qPrintable(xmp.errorString()));
        QVERIFY2(texts.contains(title.chopped(1)) && texts.contains(date.left(19)), qPrintable(texts));
        QVERIFY(m_files.run("unzip", {"-p", "d.ofd", "OFD.xml"}).contains("&lt;A&amp;B&gt; "));
    }

    void hugePages()
    {
        write("long.jpg", cv::Mat(300, 20000, CV_8UC1, cv::Scalar(128)), 30); // 16.9 m: beyond what PDF knows
        write("large.png", cv::Mat(2000, 20000, CV_8UC1, cv::Scalar(255)), 600);
        QVERIFY2(savePdf({"long.jpg", "large.png"}) && saveOfd({"long.jpg", "large.png"}),
                 qPrintable(m_library.lastError()));
        QVERIFY(m_files.run("qpdf", {"--check", "d.pdf"}).contains("No syntax"));
        const QByteArray info = m_files.run("pdfinfo", {"-l", "2", "d.pdf"});
        QVERIFY2(info.contains("14400 x 216 pts") && info.contains("2400 x 240 pts"), info.constData());
        QCOMPARE(m_files.drawnOfd("d.ofd", 20).size(), 2);
    }

    void writeImageKeepsTheResolution()
    {
        write("in.png", bits(), 240);
        MagickWand* wand = m_library.getImage(native("in.png").c_str());
        QVERIFY(m_library.writeImage(wand, m_files.path("out.tiff")));
        const ReadResult back = readPicture(native("out.tiff"));
        QVERIFY(cv::norm(back.pixels, bits(), cv::NORM_INF) == 0 && std::abs(back.dpi - 240) < 0.1);
        QVERIFY(!m_library.writeImage(wand, m_files.path("no-extension")));
        QVERIFY(!m_library.writeImage(nullptr, m_files.path("none.png")) && !m_library.lastError().isEmpty());
    }
};

QTEST_GUILESS_MAIN(DocumentsTest)
#include "tst_documents.moc"
