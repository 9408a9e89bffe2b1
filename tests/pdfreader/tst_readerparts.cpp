// SPDX-License-Identifier: GPL-3.0-or-later
#include "document.h"
#include "errorlog.h"
#include "pagelayout.h"
#include "pagetext.h"
#include "pdffile.h"
#include "printing.h"
#include "rendercache.h"
#include "searchhits.h"
#include "textsearch.h"
#include "textselection.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace reader;

class TstReaderParts : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { gatherErrors(); }
    // Recognised text: every character in a box of its own, with gaps that are none; a real blank is as wide
    // as a character.
    void textIsFoundAsItIsRead()
    {
        PdfFile file;
        QList<PdfFile::Text> letters;
        const QStringList lines = {"关于召开年度工作", "会议的通知　请各单"};
        for (int line = 0; line < lines.size(); ++line)
            for (int i = 0; i < lines[line].size(); ++i)
                if (lines[line][i] != QChar(0x3000))
                    letters << PdfFile::Text{50.0 + i * 15, 100.0 + line * 20, lines[line].mid(i, 1), 12};
        letters << PdfFile::Text{50, 300, "Annual", 10} << PdfFile::Text{113, 300, "Report", 10};
        file.addTextPage(letters);
        const PageTextPtr text = read(file);
        QVERIFY(text);
        QCOMPARE(text->text(), QString("关于召开年度工作\n会议的通知 请各单\nAnnual Report\n"));
        const auto found = findAll(text->text(), "工作会议"); // over the end of the line
        QCOMPARE(found.size(), 1);
        const QVector<QRectF> areas = text->areas(found[0]);
        QCOMPARE(areas.size(), 2);
        QVERIFY2(std::abs(areas[0].left() - 140) < 1 && std::abs(areas[0].right() - 167) < 1,
                 qPrintable(QString::number(areas[0].left())));
        QVERIFY(std::abs(areas[1].left() - 50) < 1 && areas[1].top() > areas[0].bottom());
        QVERIFY(areas[0].top() > 85 && areas[0].bottom() < 106);
        QCOMPARE(findAll(text->text(), "annual report").size(), 1);
    }

    void selectionFollowsTheLines()
    {
        PdfFile file;
        file.addTextPage({{50, 100, "第一行文字", 12},
                          {50, 120, "第二行，文字", 12},
                          {50, 140, "第三行", 12},
                          {50, 700, "𠮷end", 12}});
        const PageTextPtr text = read(file);
        QVERIFY(text);
        TextSelection selection;
        selection.start(0, text, {75, 96}); // after 第一
        QVERIFY(selection.isEmpty());
        selection.extend({87, 136}); // after 第三行, which ends at 86
        QCOMPARE(selection.text(), QString("行文字\n第二行，文字\n第三行"));
        QCOMPARE(selection.areas().size(), 3);
        selection.extend({0, -20}); // upwards, out of the page
        QCOMPARE(selection.text(), QString("第一"));
        selection.extend({500, 2000});
        QVERIFY(selection.text().endsWith("end"));
        selection.select(0, text, text->wordAt({65, 116}));
        QCOMPARE(selection.text(), QString("第二行"));
        QVERIFY(text->wordAt({300, 300}).isEmpty());
        selection.selectAll(0, text);
        QVERIFY(selection.text().startsWith("第一行文字\n") && selection.text().endsWith("end"));
        QCOMPARE(PageText().boundaryAt({10, 10}), 0);
    }

    void aTurnedPageHasItsTextInPlace()
    {
        PdfFile file;
        file.addTextPage({{100, 200, "横页", 20}}, {600, 800}, "/Rotate 90");
        const PageTextPtr text = read(file);
        QCOMPARE(findAll(text->text(), "横页").size(), 1);
        const QRectF area = text->areas({0, 2}).value(0);
        QVERIFY2(QRectF(590, 95, 40, 50).contains(area.center()),
                 qPrintable(QString("%1 %2").arg(area.center().x()).arg(area.center().y())));
    }

    void searchFolds()
    {
        const struct
        {
            QString text, wanted;
            QStringList found;
        } cases[] = {
            {"ABC ａｂｃ aBc", "abc", {"ABC", "ａｂｃ", "aBc"}},
            {"oﬃce ⽂件", "office", {"oﬃce"}},
            {"⽂件文件", "文件", {"⽂件", "文件"}},
            {"to day today to\nday", "to  day", {"to day", "to\nday"}}, // blanks of Latin count
            {"中 文\n字 abc", "文字abc", {"文\n字 abc"}},
            {"哈哈哈哈哈", "哈哈", {"哈哈", "哈哈"}},
            {"a𠮷b𠮷", "𠮷", {"𠮷", "𠮷"}},
            {"a b", " \n", {}},
        };
        for (const auto& one : cases) {
            QStringList found;
            for (const TextRange& range : findAll(one.text, one.wanted))
                found << one.text.mid(range.begin, range.end - range.begin);
            QCOMPARE(found, one.found);
        }
    }

    void hitsGoRound()
    {
        SearchHits hits;
        hits.startAt(0);
        QVERIFY(!hits.step(true) && hits.number() == 0 && hits.current() == nullptr);
        hits.add({{7, {}}, {7, {}}}); // found first: the search begins at the page that is shown
        hits.startAt(5);
        QCOMPARE(hits.number(), 1);
        hits.add({{2, {}}});
        QCOMPARE(hits.number(), 2);
        QVERIFY(hits.step(true) && hits.isCurrent(7, 1));
        QVERIFY(hits.step(true) && hits.isCurrent(2, 0));
        QVERIFY(hits.step(false) && hits.isCurrent(7, 1));
        QCOMPARE(hits.number(), 3);
        QCOMPARE(hits.onPage(7).size(), 2);
        hits.startAt(8);
        QVERIFY(hits.isCurrent(2, 0));
    }

    void pagesStandBelowEachOther()
    {
        PageLayout layout;
        layout.setPages({{600, 800}, {300, 400}, {1200, 800}});
        layout.arrange({ZoomMode::Factor, 2}, {500, 700}, 72, 0);
        QCOMPARE(layout.page(0), QRect(610, 10, 1200, 1600)); // in the middle of the widest
        QCOMPARE(layout.page(1).top(), 1620);
        QCOMPARE(layout.size(), QSize(2420, 10 + 1600 + 10 + 800 + 10 + 1600 + 10));
        const PagePlace place = layout.placeAt({910, 1820});
        QVERIFY(place.page == 1 && place.part == QPointF(0, 0.25));
        layout.arrange({ZoomMode::Width, 1}, {620, 700}, 144, 0);
        QCOMPARE(layout.page(2).width(), 600);
        QCOMPARE(layout.factor(), 0.25);
        QCOMPARE(layout.pointAt(place), layout.page(1).topLeft() + QPoint(0, 50));
        layout.arrange({ZoomMode::Page, 1}, {620, 420}, 72, 1);
        QCOMPARE(layout.page(1).size(), QSize(300, 400));
        QCOMPARE(layout.pagesIn(0, 100), qMakePair(0, 0));
        QCOMPARE(layout.pagesIn(810, 820), qMakePair(1, 1)); // the gap belongs to the page below
        QCOMPARE(layout.pagesIn(800, 5000), qMakePair(0, 2));
        QCOMPARE(layout.mainPage(790, 1200), 1);
        layout.arrange({ZoomMode::Factor, 1}, {100, 100}, 0.01, 0);
        QVERIFY(!layout.page(1).isEmpty());
        for (double factor = 0.1, last = 0; factor != last;) {
            last = factor;
            factor = zoomStep(factor, true);
            QVERIFY(factor == last ? factor == kMostZoom : zoomStep(factor, false) == last);
        }
        QCOMPARE(zoomStep(1.03, false), 1.0);
    }

    void tilesCoverWhatIsSeen()
    {
        QCOMPARE(tilesOf(3, {2000, 3000}, {0, 0, 10, 10}),
                 (QVector<TileKey>{{3, {2000, 3000}, {0, 0, 2000, 3000}}}));
        const QRect seen(1900, 3900, 1000, 800);
        QRegion covered;
        for (const TileKey& tile : tilesOf(0, {6000, 8000}, seen)) {
            QVERIFY(tile.bytes() <= 2048 * 2048 * 4 && !tile.isWhole());
            QVERIFY((covered & tile.area).isEmpty());
            covered += tile.area;
        }
        QVERIFY((QRegion(seen) - covered).isEmpty());
        QVERIFY(tilesOf(0, {6000, 8000}, {0, -500, 100, 400}).isEmpty());
    }

    void theCacheKeepsItsBound()
    {
        RenderCache cache;
        const QSize size(1200, 1700); // 8 MB
        for (int page = 0; page < 100; ++page) {
            QImage image(size, QImage::Format_RGB32);
            cache.insert({page, size, QRect({}, size)}, {image, page == 3 ? "damaged" : ""});
            QVERIFY(cache.bytes() <= RenderCache::kLeastBound);
        }
        QVERIFY(cache.bytes() > RenderCache::kLeastBound / 2);
        QVERIFY(cache.find({99, size, QRect({}, size)}) != nullptr &&
                cache.find({0, size, QRect({}, size)}) == nullptr);
        QVERIFY(cache.standIn(98) != nullptr && cache.standIn(0) == nullptr);
        QCOMPARE(cache.faultOf(3), QString("damaged")); // known although its picture is gone
        cache.setSeen(400LL << 20);
        QVERIFY(cache.bound() > 400LL << 20);
    }

    void printingPlacesPages()
    {
        QCOMPARE(placeOnPaper({100, 200}, {400, 400}, true), QRect(100, 0, 200, 400));
        QCOMPARE(placeOnPaper({100, 200}, {400, 400}, false), QRect(150, 100, 100, 200));
        QPrinter printer;
        printer.setOutputFileName(m_folder.filePath("none.pdf"));
        QCOMPARE(pagesToPrint(printer, 3, 1), (QVector<int>{0, 1, 2}));
        printer.setPrintRange(QPrinter::CurrentPage);
        QCOMPARE(pagesToPrint(printer, 3, 1), (QVector<int>{1}));
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 9);
        printer.setPageOrder(QPrinter::LastPageFirst);
        QCOMPARE(pagesToPrint(printer, 3, 0), (QVector<int>{2, 1}));
        printer.setCopyCount(2);
        printer.setCollateCopies(true);
        QVERIFY(!printer.supportsMultipleCopies());
        QCOMPARE(pagesToPrint(printer, 3, 0), (QVector<int>{2, 1, 2, 1}));
        printer.setCollateCopies(false);
        QCOMPARE(pagesToPrint(printer, 3, 0), (QVector<int>{2, 2, 1, 1}));
    }

    void aPrintedFileHasItsPages()
    {
        PdfFile file;
        file.addColourPage(Qt::red);
        file.addColourPage(Qt::green, {842, 595});
        file.addColourPage(Qt::blue);
        const QString source = m_folder.filePath("colours.pdf"), target = m_folder.filePath("printed.pdf");
        Document document;
        QVERIFY(file.save(source) && document.open(source, {}) == OpenResult::Opened);
        PrintOrder order{std::make_shared<QPrinter>(QPrinter::HighResolution), {1, 2}, true};
        order.printer->setOutputFileName(target);
        order.printer->setPageSize(QPageSize(QPageSize::A4));
        order.printer->setOutputFileName(target);
        PrintRun run(order);
        while (run.step(document))
            QVERIFY(run.done() <= 2);
        QCOMPARE(run.problem(), QString());
        Document printed;
        QVERIFY(printed.open(target, {}) == OpenResult::Opened);
        QCOMPARE(printed.info().pages.size(), 2);
        QVERIFY(printed.info().pages[0].width() > 800 && printed.info().pages[1].width() < 600);
        for (int page = 0; page < 2; ++page) {
            const QColor colour = printed.page(page)->renderToImage(36, 36).pixelColor(100, 100);
            const QColor wanted = page == 0 ? Qt::green : Qt::blue;
            QVERIFY(std::abs(colour.green() - wanted.green()) < 8 &&
                    std::abs(colour.blue() - wanted.blue()) < 8 && colour.red() < 8);
        }
    }

private:
    PageTextPtr read(const PdfFile& file)
    {
        const QString name = m_folder.filePath("read.pdf");
        Document document;
        if (!file.save(name) || document.open(name, {}) != OpenResult::Opened)
            return nullptr;
        return PageText::read(*document.page(0));
    }

    QTemporaryDir m_folder;
};

QTEST_MAIN(TstReaderParts)
#include "tst_readerparts.moc"
