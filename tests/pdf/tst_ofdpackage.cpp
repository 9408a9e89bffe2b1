// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/freshroot.h"
#include "config/ofdparts.h"
#include "pdf/ofdpackage.h"
#include "pdf/ofdunits.h"
#include "pdf/scriptedpages.h"
#include "pdf/searchableofd.h"

#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

class TstOfdPackage : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(QDir().mkpath(installRoot()));
        m_picture = m_parts.filePath("page.png");
        QVERIFY(QImage(248, 351, QImage::Format_Grayscale8).save(m_picture));
    }

    void init()
    {
        m_reader = ScriptedPages();
        QDir(m_folder.path()).removeRecursively();
        QVERIFY(QDir().mkpath(m_folder.path()));
        setPacker("rm -rf \"" + m_parts.path().toUtf8() + "/Doc_0\"; cp -r \"$1/OFD.xml\" \"$1/Doc_0\" \"" +
                  m_parts.path().toUtf8() + "\" && echo \"$#\" > \"$1/$2\"");
    }

    void millimetres()
    {
        QCOMPARE(getOFDLeft(1240, 210), QString("105"));
        QCOMPARE(getOFDWidth(1000, 210), QString("101")); // 101.6
        QCOMPARE(getOFDHeight(100, 297), QString("8"));
        QCOMPARE(getOFDTop(3508, 297), QString("297"));
        QCOMPARE(getOFDTop(-20, 297), QString("-1")); // towards zero
        QCOMPARE(getOFDLeft(1, 210), QString("0"));
        QCOMPARE(getOFDHeight(3508, 3000000), QString("3e+06")); // six digits, whatever that gives
        // 181 / 2480 * 2480 is a little less than 181 in single precision; six digits mend that.
        QCOMPARE(getOFDLeft(2480, 181), QString("181"));

        QCOMPARE(ofdPageBox(0, {2480, 3508}), QSize(210, 297));
        QCOMPARE(ofdPageBox(0, {100, 100}), QSize(297, 210));
        QCOMPARE(ofdPageBox(1, {3, 2}), QSize(279, 215));
        QCOMPARE(ofdPageBox(2, {2, 3}), QSize(148, 209));
        QCOMPARE(ofdPageBox(3, {2, 3}), QSize(181, 257));
        QCOMPARE(ofdPageBox(4, {2, 3}), QSize(215, 355));
        QCOMPARE(ofdPageBox(5, {1234, 567}), QSize(1234, 567));
        QCOMPARE(ofdPageBox(-1, {1234, 567}), QSize(1234, 567));
    }

    void partsOfASmallDocument()
    {
        PageText page = scriptedPage({"标题,a&b", "if x<%1 %7"});
        page.lines[0].box = {1240, 100, 1000, 100};
        page.lines[1].box = {248, 320, 500, 60};
        page.lines.push_back(scriptedLine(2, {0, 400, 10, 10}, "?", 64));
        m_reader.pages = {{m_picture, page}, {"empty", scriptedPage({})}};
        const DocumentResult result = write({m_picture, "empty", m_picture});
        QVERIFY2(result.saved, qPrintable(result.problem));
        QCOMPARE(inFolder(), QStringList("文 $(件);'1.ofd"));
        QCOMPARE(result.file, m_folder.filePath("文 $(件);'1.ofd"));

        QCOMPARE(part("OFD.xml"),
                 expected("OFD.xml").replace("%1", QDate::currentDate().toString("yyyy-MM-dd")));
        QCOMPARE(part("Doc_0/DocumentRes.xml"), expected("DocumentRes.xml"));
        QCOMPARE(part("Doc_0/Document.xml"), expected("Document.xml"));
        const QString lines = expected("Content.xml");
        QCOMPARE(part("Doc_0/Pages/Page_0/Content.xml"), lines);
        QCOMPARE(part("Doc_0/Pages/Page_2/Content.xml"),
                 QString(lines).replace("Layer ID=\"2\"", "Layer ID=\"10\""));
        QCOMPARE(part("Doc_0/Pages/Page_1/Content.xml"),
                 QString(lines)
                     .remove(QRegularExpression(" *<ofd:TextObject.*</ofd:TextObject>\n",
                                                QRegularExpression::DotMatchesEverythingOption))
                     .replace("Layer ID=\"2\"", "Layer ID=\"6\""));
        QVERIFY(QFileInfo(m_parts.filePath("Doc_0/Res")).isDir());
    }

    void boxHeights()
    {
        const auto heights = [this](const QVector<int>& tops) {
            PageText page = scriptedPage({});
            for (int i = 0; i < tops.size(); ++i)
                page.lines.push_back(scriptedLine(i, {0, tops[i], 100, 100}, "文"));
            m_reader.pages = {{m_picture, page}};
            write({m_picture});
            QStringList found;
            for (const QString& line : part("Doc_0/Pages/Page_0/Content.xml").split('\n')) {
                if (line.contains("Boundary"))
                    found.append(line.section('"', 3, 3).section(' ', 3));
            }
            return found;
        };
        QCOMPARE(heights({50}), QStringList({"10.4"}));
        QCOMPARE(heights({0, 120, 360}), QStringList({"10", "20", "20"}));
        // Two columns: the last line of the first has the next one above it.
        QCOMPARE(heights({100, 220, 100, 340}), QStringList({"10", "10", "20", "20"}));
        // Nothing to go by above or below.
        QCOMPARE(heights({200, 100, 100}), QStringList({"10.4", "10.4", "10.4"}));
    }

    void advances()
    {
        PageText page = scriptedPage({"一\U00020BB7a", "好", "一二三四五六七八九十"}, {4960, 7016});
        page.lines[0].symbols = {{100, 200}, {200, 300}, {300, 350}};
        // 100 pixels each; the engine errs about the fourth, and from the sixth on there is a gap of 60.
        for (int i = 0; i < 10; ++i)
            page.lines[2].symbols.push_back({100 * i + (i > 4 ? 60 : 0), 100 * i + 100 + (i > 4 ? 60 : 0)});
        page.lines[2].symbols[3] = {370, 480};
        QMap<int, zarnOFDLINERET> lines = ofdTextLines(page, 210);
        QCOMPARE(lines[0].deltaX, QString("4.23 4.23")); // of 4960 pixels
        QCOMPARE(lines[1].deltaX, QString());
        double sum = 0;
        for (const QString& advance : lines[2].deltaX.split(' ')) {
            sum += advance.toDouble();
            QVERIFY2(advance.toDouble() > 4.2, qPrintable(lines[2].deltaX));
        }
        QCOMPARE(lines[2].deltaX.count(' '), 8);
        QVERIFY2(std::abs(sum - 960 * 210 / 4960.0) < 1.0, qPrintable(lines[2].deltaX));
        page.lines[0].symbols.pop_back(); // out of step with the text: not used
        page.lines[0].box.width = 1000;
        QCOMPARE(ofdTextLines(page, 210)[0].deltaX, QString("16.94 16.94"));
    }

    // Whatever a page's size and direction, its lines are told in one frame, numbered without gaps.
    void pagesInTheFrame()
    {
        PageText page = scriptedPage({"?", "甲", "乙"}, {3508, 2480});
        page.lines[0].confidence = 10;
        page.lines[1].box = {1754, 1240, 3508 / 4, 248};
        const QMap<int, zarnOFDLINERET> lines = ofdTextLines(page, 297);
        QCOMPARE(lines.keys(), QList<int>({0, 1}));
        QCOMPARE(lines[0].text, QString("甲"));
        QCOMPARE(QRect(lines[0].left, lines[0].top, lines[0].width, lines[0].height),
                 QRect(1240, 1754, 620, 351));
    }

    void onlyOwnLeftoversAreRemoved()
    {
        m_reader.pages = {{m_picture, scriptedPage({"文"})}};
        const QDir folder(m_folder.path());
        const QString stale = folder.filePath("Doc_0/Pages/Page_7/Content.xml");
        QVERIFY(folder.mkpath("Doc_0/Pages/Page_7") && putFile(stale, ""));
        DocumentResult result = write({m_picture});
        QVERIFY2(!result.saved && result.problem.contains("Doc_0"), qPrintable(result.problem));
        QVERIFY(QFile::exists(stale) && m_reader.asked.isEmpty());
        QCOMPARE(inFolder(), QStringList("Doc_0"));

        QVERIFY(putFile(folder.filePath(ofdparts::kMark), ""));
        result = write({m_picture});
        QVERIFY2(result.saved, qPrintable(result.problem));
        QVERIFY(!QFile::exists(m_parts.filePath("Doc_0/Pages/Page_7")));
        QCOMPARE(inFolder().size(), 1);

        QVERIFY(putFile(folder.filePath("OFD.xml"), "mine") && !write({m_picture}).saved);
        QCOMPARE(fileContent(folder.filePath("OFD.xml")), QByteArray("mine"));
    }

    void failuresAreTold()
    {
        m_reader.pages = {{m_picture, scriptedPage({"文"})}};
        DocumentResult result = write({"bad", m_picture});
        QVERIFY(result.saved);
        QCOMPARE(result.unread, QStringList("bad"));
        QVERIFY(!write({"bad"}).saved);
        QCOMPARE(inFolder().size(), 1); // the document of before

        setPacker("echo 出错 >&2; exit 1");
        result = write({m_picture});
        QVERIFY2(!result.saved && result.problem.contains("出错"), qPrintable(result.problem));
        setPacker("exit 4");
        result = write({m_picture});
        QVERIFY2(!result.saved && result.problem.contains("磁盘空间不足"), qPrintable(result.problem));
        setPacker("exit 3"); // packed, parts remain
        QVERIFY(write({m_picture}).saved);
        QCOMPARE(inFolder().size(), 1);
        QVERIFY(QFile::remove(paths::ofdPacker()));
        result = write({m_picture});
        QVERIFY2(!result.saved && result.problem.contains(paths::ofdPacker()), qPrintable(result.problem));
        QCOMPARE(inFolder().size(), 1);

        DocumentJob job{m_folder.path(), "x", "", 0, {}, [this] { return m_reader.asked.size() > 3; }};
        m_reader.asked.clear();
        result = SearchableOfd(m_reader, job).ofdOcrProcess(QVector<QString>(9, m_picture).toList());
        QVERIFY(result.cancelled && result.problem.isEmpty() && !result.saved);
        QCOMPARE(m_reader.asked.size(), 4);
        QCOMPARE(inFolder().size(), 1);
        QVERIFY(QDir(m_folder.path()).removeRecursively());
        result = write({m_picture});
        QVERIFY2(result.problem.contains(m_folder.path()), qPrintable(result.problem));
    }

private:
    DocumentResult write(const QStringList& pages)
    {
        const DocumentJob job{m_folder.path(), "文 $(件);'1", "", 0, {}, {}};
        return SearchableOfd(m_reader, job).ofdOcrProcess(pages);
    }

    void setPacker(const QByteArray& script)
    {
        QFile::remove(paths::ofdPacker());
        QVERIFY(putFile(paths::ofdPacker(), "#!/bin/sh\n" + script + "\n"));
        QFile::setPermissions(paths::ofdPacker(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QString part(const QString& name) const { return fileContent(m_parts.filePath(name)); }
    static QString expected(const QString& name) { return fileContent(QFINDTESTDATA("expected/" + name)); }
    QStringList inFolder() const
    {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QTemporaryDir m_folder;
    QTemporaryDir m_parts; // where the packer of the tests puts what it is to pack
    QString m_picture;
    ScriptedPages m_reader;
};

QTEST_MAIN(TstOfdPackage)
#include "tst_ofdpackage.moc"
