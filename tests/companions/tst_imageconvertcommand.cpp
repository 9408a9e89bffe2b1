// SPDX-License-Identifier: GPL-3.0-or-later
#include "drawntext.h"
#include "imageconvert/drawnpages.h"
#include "imageconvert/imageconvertfunction.h"
#include "imageconvert/picture.h"
#include "imageconvert/picturereader.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

struct Run
{
    int status;
    QStringList written;       // files in the output folder, sorted
    QList<QJsonObject> report; // one object a line
    QString messages;          // standard error
};

cv::Mat picture(const QString& path)
{
    return imageconvert::readPicture(QFile::encodeName(path).toStdString()).pixels;
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_ImageConvertCommand : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void operationsRunInTheOrderGiven()
    {
        const QString page = write(QStringLiteral("page.pnm"), drawn::page());
        for (const bool turnFirst : {true, false}) {
            const QStringList turn{"--rotate", "90"}, cut{"--paper", "20,10,1"};
            const Run run = convert((turnFirst ? turn + cut : cut + turn) +
                                    QStringList{"--type", "png", "--dpi", "150", page});
            QCOMPARE(run.status, 0);
            QCOMPARE(run.written, QStringList("page.png"));
            const cv::Size size = picture(out("page.png")).size();
            QCOMPARE(size, turnFirst ? cv::Size(1181, 591) : cv::Size(591, 1181));
            QCOMPARE(run.report.value(0)["width"].toInt(), size.width);
            QCOMPARE(run.report.value(0)["height"].toInt(), size.height);
        }
    }

    // Wherever they stand on the command line. Pieces keep the two levels and the resolution.
    void appendComesFirstAndSplitLast()
    {
        const QString dark = write(QStringLiteral("a.1.pnm"), cv::Mat(300, 200, CV_8UC3, cv::Scalar::all(0)));
        const QString light =
            write(QStringLiteral("b.pnm"), cv::Mat(300, 200, CV_8UC3, cv::Scalar::all(255)));
        const Run run = convert(
            {"--split", "2,1", "--wb", "130", "--append", "0", "--type", "tif", "--dpi", "200", dark, light});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.written, QStringList({"a.1-1.tif", "a.1-2.tif"}));
        QCOMPARE(run.report.size(), 2);
        QCOMPARE(run.report[1]["out"].toString(), out("a.1-2.tif"));
        ImageConvertFunction library;
        ImageHandle right(library, library.getImage(QFile::encodeName(out("a.1-2.tif")).constData()));
        QCOMPARE(library.dpi(right.get()), 200.0);
        QCOMPARE(library.width(right.get()), 200);
        const cv::Mat left = picture(out("a.1-1.tif"));
        QVERIFY(imageconvert::isTwoLevel(left));
        QVERIFY(cv::mean(left)[0] < cv::mean(picture(out("a.1-2.tif")))[0]);
    }

    void everyPageHasANameOfItsOwnAndNoInputIsOverwritten()
    {
        QDir(m_folder->path()).mkpath(QStringLiteral("other"));
        QDir(m_folder->path()).mkpath(QStringLiteral("out"));
        QStringList files;
        int side = 40;
        for (const char* name : {"out/p.png", "p.pnm", "other/p.bmp", "p_2.pnm"})
            files << write(QString::fromLatin1(name), cv::Mat(side += 10, 60, CV_8UC3, cv::Scalar::all(200)));
        const QByteArray before = bytesOf(files[0]);
        const QStringList expected{"p.png", "p_2.png", "p_2_2.png", "p_3.png", "p_4.png"};
        for (int again = 0; again < 2; ++again) { // a second run replaces what the first one wrote
            const Run run = convert(QStringList{"--gamma", "1.5", "--type", "png", "--jobs", "2"} + files);
            QCOMPARE(run.status, 0);
            QCOMPARE(run.written, expected);
            QCOMPARE(bytesOf(files[0]), before);
            QCOMPARE(picture(out("p_2.png")).rows, 50);
            QCOMPARE(picture(out("p_2_2.png")).rows, 80);
        }
    }

    void badAndBlankPagesAreReportedAndTheRestIsDone()
    {
        const QString bad = m_folder->filePath(QStringLiteral("bad.png"));
        QFile garbage(bad);
        QVERIFY(garbage.open(QIODevice::WriteOnly) && garbage.write("\x89PNG\r\n\x1a\nnothing") > 0);
        garbage.close();
        const QString blank =
            write(QStringLiteral("blank.pnm"), drawn::page({{620, 877}, {250, 250, 250}, 0}));
        const QString tilted =
            write(QStringLiteral("tilted.pnm"),
                  drawn::onBed(drawn::page({{500, 700}}), 3, {900, 1100}, cv::Scalar::all(40)));
        const Run run = convert({"--blank", "8", "--auto-crop", "--deskew", "--jobs", "2", "--dpi", "75", bad,
                                 blank, m_folder->filePath("none.jpg"), tilted});
        QCOMPARE(run.status, 1);
        QCOMPARE(run.written, QStringList("tilted.jpg"));
        QCOMPARE(run.report.size(), 4);
        for (int place : {0, 2}) {
            QVERIFY(!run.report[place]["error"].toString().isEmpty());
            QVERIFY(run.report[place]["out"].isNull());
            QVERIFY(run.messages.contains(run.report[place]["file"].toString()));
        }
        QVERIFY(run.report[1]["blank"].toBool() && run.report[1]["error"].isNull());
        QCOMPARE(run.report[3]["file"].toString(), tilted);
        QVERIFY(run.report[3]["blank"].isBool() && !run.report[3]["blank"].toBool());
        QVERIFY(run.report[3]["blank_score"].toDouble() > 0.81);
        QVERIFY(qAbs(run.report[3]["skew_deg"].toDouble() - 3) < 0.3);
        const QJsonArray crop = run.report[3]["crop"].toArray(); // the box around the tilted sheet
        QVERIFY(qAbs(crop[0].toInt() + crop[2].toInt() / 2 - 450) < 6);
        QVERIFY(qAbs(crop[2].toInt() - 536) < 8 && qAbs(crop[3].toInt() - 725) < 8);
        QVERIFY(run.report[3]["ms"].toObject().contains(QStringLiteral("auto-crop")));
    }

    void orientTurnsThePage()
    {
        QImage page = drawntext::paper(1240, 1754);
        drawntext::fillLines(page, drawntext::story(), 40, 120);
        page = page.transformed(QTransform().rotate(90)).convertToFormat(QImage::Format_RGB888);
        QVERIFY(page.save(m_folder->filePath(QStringLiteral("lying.png"))));
        const Run run = convert({"--orient", "--dpi", "150", m_folder->filePath("lying.png")});
        QCOMPARE(run.status, 0);
        QCOMPARE(run.report.value(0)["turn"].toInt(), 270);
        QVERIFY(run.report.value(0)["confidence"].toDouble() > 0.74);
        QCOMPARE(picture(out("lying.jpg")).size(), cv::Size(1240, 1754));
    }

    void wrongUseDoesNothing()
    {
        QList<QPair<QStringList, QString>> uses{{{"--gama", "1.1"}, "gama"},
                                                {{"--gamma", "strong"}, "strong"},
                                                {{"--blank", "16"}, "16"},
                                                {{"--blur", "1.5"}, "1.5"},
                                                {{"--in-border", "1,2,3,4"}, "R,G,B,TOP,LEFT"},
                                                {{"--type", "gif"}, "gif"},
                                                {{"--append", "0"}, "--append"},
                                                {{"--split", "2,1", "--split", "3,1"}, "--split"},
                                                {{"--report", "PAGE"}, "page.pnm"}};
        for (auto& [words, named] : uses) {
            const QString page =
                write(QStringLiteral("page.pnm"), cv::Mat(20, 20, CV_8UC3, cv::Scalar::all(200)));
            const QByteArray before = bytesOf(page);
            words.replaceInStrings(QStringLiteral("PAGE"), page);
            const Run run = convert(words + QStringList{page}, words.contains(QStringLiteral("--report")));
            QCOMPARE(run.status, 2);
            QVERIFY2(run.messages.contains(named), qPrintable(run.messages));
            QVERIFY(run.written.isEmpty());
            QCOMPARE(bytesOf(page), before);
        }
    }

private:
    QString out(const char* name) const
    {
        return m_folder->filePath(QStringLiteral("out/") + QLatin1String(name));
    }

    QString write(const QString& name, const cv::Mat& pixels)
    {
        const QString path = m_folder->filePath(name);
        if (name.endsWith(QLatin1String(".pnm"))) {
            drawn::writePnm(path, pixels);
            return path;
        }
        const QImage image(pixels.data, pixels.cols, pixels.rows, static_cast<int>(pixels.step),
                           QImage::Format_RGB888);
        return image.save(path) ? path : QString();
    }

    Run convert(QStringList words, bool ownReport = false)
    {
        const QString report = m_folder->filePath(QStringLiteral("report.jsonl"));
        words = QStringList{"--out", m_folder->filePath("out")} + words;
        if (!ownReport)
            words = QStringList{"--report", report} + words;
        QProcess process;
        process.start(qEnvironmentVariable("IMAGECONVERT"), words);
        process.waitForFinished(60000);
        Run run{process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QDir(m_folder->filePath("out")).entryList(QDir::Files, QDir::Name),
                {},
                {}};
        run.messages = QString::fromUtf8(process.readAllStandardError());
        for (const QByteArray& line : bytesOf(report).split('\n'))
            if (!line.isEmpty())
                run.report << QJsonDocument::fromJson(line).object();
        return run;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_MAIN(tst_ImageConvertCommand)
#include "tst_imageconvertcommand.moc"
