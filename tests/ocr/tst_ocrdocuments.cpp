// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "drawntext.h"
#include "ocr/textdocument.h"
#include "ocr/textprobe.h"
#include "ocr/worddocument.h"

#include <QPainter>
#include <QProcess>
#include <QtTest>

namespace {

const QString kFirst = QString("图书馆今天上午开始整理旧文件");
const QString kSecond = QString("远处的山坡上孩子赶着羊群");

QString contentOf(const QString& file)
{
    return QFile::exists(file) ? QString::fromUtf8(fileContent(file)) : "(no file)";
}

QImage paperAt(int width, int height, int dpi = 300)
{
    QImage page = drawntext::paper(width, height);
    page.setDotsPerMeterX(qRound(dpi / 0.0254));
    page.setDotsPerMeterY(qRound(dpi / 0.0254));
    return page;
}

int runCommand(const QStringList& arguments, QString* errors = nullptr, QString* output = nullptr)
{
    QProcess process;
    process.start(qEnvironmentVariable("OCRDOC"), arguments);
    if (!process.waitForFinished(60000))
        return -1;
    if (errors)
        *errors = QString::fromUtf8(process.readAllStandardError());
    if (output)
        *output = QString::fromUtf8(process.readAllStandardOutput());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
}

} // namespace

class TestOcrDocuments : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(!drawn("first.png", {kFirst}).isEmpty());
        QVERIFY(!drawn("second.png", {kSecond, kFirst}).isEmpty());
        QVERIFY(!save("blank.png", paperAt(2480, 3508)).isEmpty());
        QVERIFY(putFile(path("damaged.png"), "\x89PNG\r\n\x1a\n and nothing more"));
    }

    void textOfTheLastPageWithTextRemains()
    {
        const OcrResult result =
            TextDocument(job("three"))
                .ocrProcess({path("first.png"), path("second.png"), path("damaged.png"), path("blank.png")});
        QVERIFY(result.saved);
        QCOMPARE(contentOf(path("three.txt")), kSecond + '\n' + kFirst + '\n');
        QCOMPARE(result.unread, QStringList{path("damaged.png")});
        QCOMPARE(result.pages.size(), 4);
        QCOMPARE(result.pages[1].boxes, 2);
        QVERIFY(result.pages[1].confidence > 80 && result.pages[1].confidence <= 100);
        QVERIFY(QFile::exists(path("first.png")));
        QVERIFY(!QFile::exists(path("three.txt.part")));
    }

    void pagesWithoutTextGiveAnEmptyText()
    {
        QVERIFY(putFile(path("empty.txt"), "old"));
        const OcrResult result = TextDocument(job("empty")).ocrProcess({path("blank.png")});
        QVERIFY(result.saved);
        QCOMPARE(result.notices, QStringList{"未识别到文字"});
        QCOMPARE(contentOf(path("empty.txt")), QString());
        const OcrResult none = TextDocument(job("none")).ocrProcess({path("damaged.png")});
        QVERIFY(!none.saved && !none.problem.isEmpty());
        QVERIFY(!QFile::exists(path("none.txt")));
    }

    void strangePagesAreRead_data()
    {
        QTest::addColumn<QImage>("page");
        QTest::addColumn<int>("leastBoxes");
        QImage noise = paperAt(800, 600), rules = paperAt(2480, 3508), many = rules, edge = rules;
        for (int y = 0; y < noise.height(); ++y)
            for (int x = 0; x < noise.width(); ++x)
                noise.setPixel(x, y, qRgb(x * y, x ^ y, x + y));
        QPainter painter(&rules);
        painter.setPen(QPen(Qt::black, 3));
        for (int i = 1; i < 20; ++i) {
            painter.drawLine(100, i * 170, 2400, i * 170);
            painter.drawLine(i * 120, 170, i * 120, 19 * 170);
        }
        painter.end();
        painter.begin(&many);
        painter.setFont(drawntext::font(44));
        for (int i = 0; i < 80; ++i)
            painter.drawText(150 + 560 * (i % 4), 200 + 160 * (i / 4), QString("第%1号").arg(i));
        painter.end();
        painter.begin(&edge);
        painter.setFont(drawntext::font(60));
        painter.drawText(2480 - 8 * 60, 60, QString("图书馆今天上午开"));
        painter.drawText(0, 3507, QString("图书馆今天上午开"));
        painter.end();
        QTest::newRow("photograph") << noise << 0;
        QTest::newRow("rules only") << rules << 0;
        QTest::newRow("eighty boxes") << many << 80;
        QTest::newRow("at the very edge") << edge << 0;
        QTest::newRow("one pixel") << paperAt(1, 1) << 0;
        QTest::newRow("thread") << paperAt(9000, 3) << 0;
        QTest::newRow("huge") << paperAt(6000, 5000, 1200) << 0;
    }

    void strangePagesAreRead()
    {
        QFETCH(QImage, page);
        QFETCH(int, leastBoxes);
        const QString file = save("strange.png", page);
        const OcrResult result = WordDocument(job("strange")).xmltowordpages({file});
        QVERIFY2(result.saved, qPrintable(result.problem));
        QCOMPARE(result.pages.size(), 1);
        QVERIFY(result.pages[0].problems.isEmpty());
        QVERIFY(result.pages[0].boxes >= leastBoxes);
        QDomDocument document;
        QVERIFY(document.setContent(contentOf(path("strange.doc"))));
        QVERIFY(document.elementsByTagName(QString("v:shape")).size() >= leastBoxes / 2);
    }

    void wordDocumentOfAllPages()
    {
        const QString inverted = drawn("inverted.png", {kFirst}, true);
        const OcrResult result =
            WordDocument(job("pages"))
                .xmltowordpages({path("first.png"), path("damaged.png"), path("second.png"), inverted});
        QVERIFY(result.saved);
        QCOMPARE(result.unread, QStringList{path("damaged.png")});
        QDomDocument document;
        QVERIFY(document.setContent(contentOf(path("pages.doc"))));
        QCOMPARE(document.elementsByTagName(QString("w:br")).size(), 3);
        const QDomNodeList texts = document.elementsByTagName(QString("w:t"));
        QVERIFY(texts.size() >= 3);
        QCOMPARE(texts.at(0).toElement().text(), kFirst);
        QCOMPARE(texts.at(1).toElement().text(), kSecond);
        QVERIFY(contentOf(path("pages.doc")).contains("\n    <w:docPr>")); // indented by four
    }

    void withoutModelNothingIsLost()
    {
        QTemporaryDir empty;
        QVERIFY(putFile(path("model.doc"), "old"));
        qputenv("TESSDATA_PREFIX", empty.path().toLocal8Bit());
        const OcrResult word = WordDocument(job("model")).xmltowordpages({path("first.png")});
        const OcrResult text = TextDocument(job("model")).ocrProcess({path("first.png")});
        qunsetenv("TESSDATA_PREFIX");
        QVERIFY(!word.saved && !text.saved);
        QVERIFY(word.problem.contains("中文识别模型"));
        QCOMPARE(text.problem, word.problem);
        QCOMPARE(contentOf(path("model.doc")), QString("old"));
        QVERIFY(!QFile::exists(path("model.txt")));
    }

    void documentThatCannotBeWritten()
    {
        for (const char* name : {"taken.txt", "taken.doc"})
            QVERIFY(QDir(m_folder.path()).mkpath(QString(name) + QString("/inside")));
        const OcrResult text = TextDocument(job("taken")).ocrProcess({path("first.png")});
        const OcrResult word = WordDocument(job("taken")).xmltowordpages({path("first.png")});
        QVERIFY(!text.saved && text.problem.contains(path("taken.txt") + QString("：路径中有同名文件")));
        QVERIFY(!word.saved && word.problem.contains(path("taken.doc")));
        QCOMPARE(writePageLines(path("no/such/folder.txt"), {{0, kFirst}}), -1);
        QCOMPARE(QDir(m_folder.path()).entryList({QString("taken*")}, QDir::Files), QStringList());
    }

    void cancelledBetweenPages()
    {
        for (const QString& kind : {QString("txt"), QString("doc")}) {
            OcrJob stopped = job("stopped");
            bool stop = false;
            int pages = 0;
            stopped.progress = [&](const QString&) { ++pages; };
            stopped.run = [&](const std::function<void()>& work) {
                work();
                stop = true;
            };
            stopped.cancelled = [&] { return stop; };
            const QStringList files{path("first.png"), path("second.png")};
            const OcrResult result = kind == "txt" ? TextDocument(stopped).ocrProcess(files)
                                                   : WordDocument(stopped).xmltowordpages(files);
            QVERIFY(result.cancelled);
            QCOMPARE(pages, 1);
            QCOMPARE(QFile::exists(path(QString("stopped.") + kind)), kind == "txt");
        }
        QCOMPARE(contentOf(path("stopped.txt")), kFirst + '\n');
    }

    void blanksAndFullStops()
    {
        QCOMPARE(cleanedText(QString("co o")), QString("c。。"));
        QCOMPARE(cleanedText(QString("O　o\tx\n")), QString("O　。\tx\n")); // only blanks go
        QVERIFY(outtofile(path("lines.txt"), QString("甲")));
        QVERIFY(outtofile(path("lines.txt"), QString("乙")));
        QCOMPARE(contentOf(path("lines.txt")), QString("甲\n乙\n"));
        QCOMPARE(writePageLines(path("lines.txt"), {{0, QString(" ")}}), 0);
        QCOMPARE(writePageLines(path("lines.txt"), {{3, QString("丁")}, {0, QString("丙")}}), 2);
        QCOMPARE(contentOf(path("lines.txt")), QString("丙\n丁\n"));
    }

    void probeStreamsTextInOrder()
    {
        const QString scratch = path("scratch.txt");
        const auto probe = [&](const QString& picture) {
            std::ofstream out(QFile::encodeName(scratch).toStdString(), std::ios::trunc);
            handleTxtOcrTest(picture, out);
            out.close();
            return contentOf(scratch).remove(' ').split('\n', Qt::SkipEmptyParts);
        };
        QCOMPARE(probe(path("second.png")), (QStringList{kSecond, kFirst}));
        QCOMPARE(probe(path("missing.png")), QStringList());
        QCOMPARE(probe(path("damaged.png")), QStringList());
        QCOMPARE(probe(path("blank.png")), QStringList());
    }

    void commandWritesDocumentAndReport()
    {
        QImage page = paperAt(1700, 1500);
        drawntext::fillLines(page, drawntext::story(), 54, 150);
        const QString turned = save("turned.png", page.transformed(QTransform().rotate(180)));
        QString errors, report;
        QCOMPARE(runCommand({"--txt", "--orient", "--out", path("cmd.txt"), "--report", "-",
                             path("second.png"), turned},
                            &errors, &report),
                 0);
        QVERIFY(contentOf(path("cmd.txt")).startsWith(drawntext::story().left(10)));
        const QStringList lines = report.split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), 2);
        const QJsonObject last = QJsonDocument::fromJson(lines[1].toUtf8()).object();
        QCOMPARE(last["page"].toInt(), 2);
        QCOMPARE(last["file"].toString(), turned);
        QVERIFY(last["boxes"].toInt() > 8);
        QVERIFY(last["confidence"].toDouble() > 80 && last["seconds"].toDouble() > 0);

        QCOMPARE(
            runCommand({"--doc", "--out", path("cmd.doc"), path("first.png"), path("damaged.png")}, &errors),
            1);
        QVERIFY(errors.contains(path("damaged.png")));
        QVERIFY(contentOf(path("cmd.doc")).contains(kFirst));
    }

    void commandRefusesWrongUse()
    {
        const QString page = path("first.png");
        for (const QStringList& arguments :
             {QStringList{}, QStringList{"--txt", page}, QStringList{"--out", path("a.txt"), page},
              QStringList{"--txt", "--doc", "--out", path("a.txt"), page},
              QStringList{"--txt", "--out", path("a.doc"), page},
              QStringList{"--txt", "--out", path("no/a.txt"), page},
              QStringList{"--txt", "--out", path("a.txt")},
              QStringList{"--pdf", "--paper", "9", "--out", path("a.pdf"), page}}) {
            QString errors;
            QCOMPARE(runCommand(arguments, &errors), 2);
            QVERIFY(errors.contains("ocrdoc: "));
        }
        QString help;
        QCOMPARE(runCommand({"--help"}, nullptr, &help), 0);
        QVERIFY(help.contains("--report"));
    }

private:
    QString save(const QString& name, const QImage& page) const
    {
        return page.save(path(name)) ? path(name) : QString();
    }

    QString drawn(const QString& name, const QStringList& lines, bool inverted = false) const
    {
        QImage page = paperAt(1400, 200 + 120 * lines.size());
        QPainter painter(&page);
        painter.setFont(drawntext::font(54));
        for (int i = 0; i < lines.size(); ++i)
            painter.drawText(200, 180 + 120 * i, lines[i]);
        painter.end();
        if (inverted)
            page.invertPixels();
        return save(name, page);
    }

    OcrJob job(const QString& name) const
    {
        OcrJob job;
        job.folder = m_folder.path() + '/';
        job.name = name;
        return job;
    }

    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};

QTEST_MAIN(TestOcrDocuments)
#include "tst_ocrdocuments.moc"
