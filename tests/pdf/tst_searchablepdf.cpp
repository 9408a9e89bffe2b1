// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "drawntext.h"
#include "pdf/scriptedpages.h"
#include "pdf/searchablepdf.h"

#include <QPainter>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

class TstSearchablePdf : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        QVERIFY(QDir().mkpath(installRoot()) && QDir().mkpath(paths::tempFolder()) &&
                QDir().mkpath(paths::tempTextFolder()));
        m_reader = ScriptedPages();
    }

    // Characters that share a glyph with a radical (and the radicals themselves), ligatures, dashes,
    // characters beyond 16 bits and without any glyph, accents of their own.
    void everyCharacterIsFoundAsItWasDrawn()
    {
        const QStringList first = {"文人民一二三⼀⼆⼤大 ⽂文",
                                   "为人民服务 2024年5月1日",
                                   "一",
                                   "office ffi ﬁ fl AVATAR",
                                   "“引文”——、。《书》：；？！…… （1）",
                                   "3.14% a+b=c @#$&*_~ “ok”",
                                   "龘𠮷\U0001F600\uE123x",
                                   "n\u0303o\u0304 e\u0301\u0323x"};
        const QStringList second = {"⽂件", "文件", "第二页 second page", "⼤"};
        m_reader.pages = {{"a", scriptedPage(first)}, {"b", scriptedPage({})}, {"c", scriptedPage(second)}};
        const QString file = write({"a", "b", "c"});
        QVERIFY2(m_result.saved, qPrintable(m_result.problem));
        QCOMPARE(drawnLines(file), first + second);
        QVERIFY(run("qpdf", {"--check", file}).contains("No syntax or stream encoding errors"));
        const QString about = run("pdfinfo", {file});
        QVERIFY2(about.contains(QRegularExpression("Title: +文件 1\n")), qPrintable(about));
        QVERIFY2(about.contains(QRegularExpression("Creator: +ZARN-QWD200Vintrel\n")), qPrintable(about));
        QVERIFY(run("pdfinfo", {"-meta", file}).contains(">文件 1<"));
        QVERIFY(run("pdfimages", {"-list", file}).count('\n') <= 2); // the heading only
        QVERIFY(QFile::remove(file));
    }

    void pagesHaveTheirPaper()
    {
        m_reader.pages = {{"a", scriptedPage({"文"})}};
        const double papers[][2] = {{210, 297}, {216, 279}, {148, 210}, {182, 257}, {216, 356}};
        for (int paper = 0; paper <= 5; ++paper) {
            const QString info = run("pdfinfo", {write({"a", "a"}, paper)});
            const QRegularExpressionMatch found =
                QRegularExpression("Page size: +([\\d.]+) x ([\\d.]+) pts").match(info);
            QVERIFY2(found.hasMatch() && info.contains(QRegularExpression("Pages: +2\n")), qPrintable(info));
            for (int side = 0; side < 2 && paper < 5; ++side) // a custom one: whatever is usual
                QVERIFY2(std::abs(found.captured(1 + side).toDouble() * 25.4 / 72 - papers[paper][side]) <
                             0.6,
                         qPrintable(info));
        }
    }

    // Left edges and baselines of the scan's lines, to a pixel; landscape pages shrunk to the paper's width;
    // a line that is wider in the document's font than the sheet has room for still lies on it.
    void textStandsWhereItStood()
    {
        PageText upright = scriptedPage({"文字", QString("很长的一行").repeated(14)});
        upright.lines[1].box.x = 1201;
        m_reader.pages = {{"a", upright}, {"b", scriptedPage({"横向"}, {3508, 2480})}};
        const QString file = write({"a", "b"});
        const QString words = run("pdftotext", {"-bbox", file, "-"});
        const QRegularExpression word(
            "xMin=\"([\\d.]+)\" yMin=\"([\\d.]+)\" xMax=\"([\\d.]+)\" yMax=\"([\\d.]+)\"");
        QVector<QVector<double>> boxes; // pixels at 300 dpi
        for (auto it = word.globalMatch(words); it.hasNext();) {
            const QRegularExpressionMatch match = it.next();
            boxes.append(QVector<double>());
            for (int i = 1; i <= 4; ++i)
                boxes.last().append(match.captured(i).toDouble() * 300 / 72);
        }
        QCOMPARE(boxes.size(), 3);
        QVERIFY(std::abs(boxes[0][0] - 200) < 1.5);
        QVERIFY(std::abs(boxes[1][0] - 1201) < 1.5);
        QVERIFY(boxes[1][2] < 2482);
        QVERIFY(std::abs(boxes[2][0] - 200 * 2480.0 / 3508) < 1.5);
        // The baseline of Chinese text lies a tenth of its ink above the lower edge, and inside poppler's
        // box.
        QVERIFY(boxes[0][1] < 340.5 && boxes[0][3] > 340.5);
        const QMap<int, zarnPDFLINERET> lines = pdfTextLines(upright, {2479, 3508});
        QCOMPARE(lines[0].baseline, 341);
        QCOMPARE(pdfTextLines(m_reader.pages["b"], {2479, 3508})[0].baseline, 241);
        for (int left = 0; left < 3600; ++left) {
            upright.lines[0].box.x = left;
            QCOMPARE(drawnLeft(pdfTextLines(upright, {3600, 3508})[0].x), left);
        }
    }

    void onlyTextThatCountsIsDrawn()
    {
        PageText page = scriptedPage({"甲,乙", "重复", "重复", "不确定", "确定", ",无", "两\n行", "重复"});
        page.lines[3].confidence = 64;
        page.lines[4].confidence = 65;
        m_reader.pages = {{"a", page}, {"b", scriptedPage({"重复"})}};
        QCOMPARE(drawnLines(write({"a", "b"})), QStringList({"甲", "重复", "确定", "两 行", "重复", "重复"}));
    }

    void faultsLoseNothing()
    {
        m_reader.pages = {{"good", scriptedPage({"好"})}};
        const QString file = write({"good", "/x/bad.jpg", "good"});
        QVERIFY(m_result.saved);
        QCOMPARE(m_result.unread, QStringList("/x/bad.jpg"));
        QVERIFY2(m_result.warning.contains("bad.jpg"), qPrintable(m_result.warning));
        QVERIFY(run("pdfinfo", {file}).contains(QRegularExpression("Pages: +3\n")));
        const QByteArray before = fileContent(file);
        const auto untouched = [&] {
            return !m_result.saved && fileContent(file) == before &&
                   QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden).size() == 3 &&
                   QDir(paths::tempFolder()).entryList({"searchable*"}).isEmpty();
        };
        write({"bad1", "bad2"});
        QVERIFY(!m_result.problem.isEmpty() && untouched());

        m_reader.pages["none"].problem = "没有模型";
        write({"good", "none", "good"});
        QCOMPARE(m_result.problem, QString("没有模型"));
        QVERIFY(untouched());

        DocumentJob job{m_folder.path() + "/", "文件 1", "pdf", 0, {}, {}};
        const QString left = paths::tempTextFolder() + "1.txt";
        QVERIFY(putFile(left, ""));
        QStringList told;
        job.progress = [&](const QString& text) { told.append(text); };
        job.cancelled = [&] { return told.size() == 2; };
        m_result = SearchablePdf(m_reader, job).pdfOcrProcess({"good", "good", "good"});
        QCOMPARE(told, QStringList({"正在识别第1张图像", "正在识别第2张图像"}));
        QVERIFY(m_result.cancelled && m_result.problem.isEmpty() && untouched());
        QVERIFY(!QFile::exists(left));

        job.folder = m_folder.path() + "/gone";
        job.cancelled = nullptr;
        m_result = SearchablePdf(m_reader, job).pdfOcrProcess({"good"});
        QVERIFY2(m_result.problem.contains("gone"), qPrintable(m_result.problem));
        QVERIFY(untouched());
    }

    // The whole way from a picture at another resolution, with the real engine.
    void aDrawnPageIsRead()
    {
        QImage page = drawntext::paper(1240, 500);
        drawntext::fillLines(page, drawntext::story(), 34, 80);
        page.setDotsPerMeterX(7874); // 200 dpi
        page.setDotsPerMeterY(7874);
        const QString picture = m_folder.filePath("page.png");
        QVERIFY(page.save(picture));
        EnginePageReader reader;
        const PageText read = reader.read(picture, true, {});
        QCOMPARE(read.size, QSize(1860, 750));
        QVERIFY(read.lines.size() >= 4);
        QVERIFY(std::abs(read.lines[0].box.x - 120) < 15);

        DocumentJob job{m_folder.path(), "read", "pdf", 0, {}, {}};
        const QString file = SearchablePdf(reader, job).pdfOcrProcess({picture}).file;
        const QString found = drawnLines(file).join("");
        QVERIFY2(found.size() > 60, qPrintable(found));
        int right = 0;
        for (const QChar character : found)
            right += drawntext::story().contains(character) ? 1 : 0;
        QVERIFY2(right > found.size() * 0.95, qPrintable(found));
    }

private:
    QString write(const QStringList& pages, int paperIndex = 0)
    {
        const DocumentJob job{m_folder.path(), "文件 1", "pdf", paperIndex, {}, {}};
        m_result = SearchablePdf(m_reader, job).pdfOcrProcess(pages);
        return m_result.file;
    }

    static QString run(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        process.start(program, arguments);
        const bool good = process.waitForFinished() && process.exitCode() == 0;
        return good ? QString::fromUtf8(process.readAllStandardOutput())
                    : "failed: " + process.readAllStandardError();
    }

    static QStringList drawnLines(const QString& file)
    {
        return run("pdftotext", {"-raw", file, "-"}).remove('\f').split('\n', Qt::SkipEmptyParts);
    }

    QTemporaryDir m_folder;
    ScriptedPages m_reader;
    DocumentResult m_result;
};

QTEST_MAIN(TstSearchablePdf)
#include "tst_searchablepdf.moc"
