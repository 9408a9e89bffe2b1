// SPDX-License-Identifier: GPL-3.0-or-later
#include "outlinepane.h"
#include "pageview.h"
#include "passworddialog.h"
#include "pdffile.h"
#include "readerwindow.h"
#include "searchbar.h"

#include <QBuffer>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QProcess>
#include <QProgressDialog>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

using namespace reader;

// The whole window with its worker, under the offscreen platform.
class TstReaderWindow : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, path("config")); }

    void init()
    {
        m_window = std::make_unique<ReaderWindow>();
        m_window->resize(900, 700);
        m_window->show();
    }

    void cleanup() { m_window.reset(); }
    void filesThatDoNotOpen_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("reason");
        const QByteArray whole = textFile(2).bytes();
        QTest::newRow("missing") << QByteArray() << "文件不存在";
        QTest::newRow("empty") << QByteArray("") << "文件是空的";
        QTest::newRow("not a PDF") << QByteArray("hello") << "这不是 PDF 文件";
        QTest::newRow("header only") << QByteArray("%PDF-1.5\n") << "文件已损坏";
        QTest::newRow("no pages") << QByteArray(whole)
                                         .replace("/Type /Pages", "/Type /Wages")
                                         .replace("/Kids", "/Nids")
                                         .replace("/Count", "/Mount")
                                  << "文件已损坏";
    }

    void filesThatDoNotOpen()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, reason);
        const QString name = QString("坏%1.pdf").arg(QTest::currentDataTag());
        QVERIFY(bytes.isNull() || put(name, bytes));
        m_window->open(path(name));
        QTRY_VERIFY2(shows(reason), QTest::currentDataTag());
        QVERIFY(shows(QString("“%1”").arg(name)));
        open(textFile(1), "good.pdf"); // and goes on
    }

    void aPasswordIsAskedThreeTimes()
    {
        QVERIFY(textFile(2).save(path("plain.pdf")));
        QCOMPARE(QProcess::execute("qpdf", {path("plain.pdf"), "--encrypt", "密码", "owner", "256", "--",
                                            path("locked.pdf")}),
                 0);
        const auto answer = [this](const QString& password) {
            QTRY_VERIFY(part<PasswordDialog>() &&
                        part<PasswordDialog>()->findChild<QLineEdit*>()->isEnabled());
            QTest::keyClicks(part<PasswordDialog>()->findChild<QLineEdit*>(), password);
            QTest::keyClick(part<PasswordDialog>()->findChild<QLineEdit*>(), Qt::Key_Return);
        };
        m_window->open(path("locked.pdf"));
        answer("a");
        QTRY_VERIFY(shows("密码不正确，还可以再试 2 次"));
        answer("b");
        QTRY_VERIFY(shows("密码不正确，还可以再试 1 次"));
        part<PasswordDialog>()->findChild<QLineEdit*>()->setText("密码");
        QTest::keyClick(part<PasswordDialog>()->findChild<QLineEdit*>(), Qt::Key_Return);
        QTRY_COMPARE(m_window->view().pageCount(), 2);
        QTRY_VERIFY(!part<PasswordDialog>());

        m_window->open(path("locked.pdf"));
        for (const char* wrong : {"a", "b", "c"})
            answer(wrong);
        QTRY_VERIFY(shows("三次密码都不正确"));
        QTRY_VERIFY(!part<PasswordDialog>());
        m_window->open(path("locked.pdf"));
        QTRY_VERIFY(part<PasswordDialog>());
        QTest::keyClick(part<PasswordDialog>(), Qt::Key_Escape);
        QTRY_VERIFY(shows("没有输入密码"));
    }

    void pagesOutlineAndZoom()
    {
        PdfFile file;
        const QList<QColor> colours{Qt::red, Qt::green, Qt::blue, Qt::cyan, Qt::magenta};
        for (const QColor& colour : colours)
            file.addColourPage(colour);
        file.setOutline("第一章", 2, "第一节", 3);
        open(textFile(1), "plain.pdf");
        auto* tabs = part<QTabWidget>();
        QCOMPARE(tabs->count(), 1); // no outline, no tab
        open(file, "colours.pdf");
        QCOMPARE(tabs->count(), 2);
        tabs->setCurrentIndex(1);
        PageView& view = m_window->view();
        auto* outline = part<OutlinePane>();
        QCOMPARE(outline->topLevelItem(0)->text(0), QString("第一章"));
        emit outline->itemActivated(outline->topLevelItem(0)->child(0), 0);
        QCOMPARE(view.currentPage(), 3);
        QTRY_VERIFY(view.viewportPoint(3, {0, 421}).y() <= 12); // the middle of the page stands at the top

        auto* field = part<QSpinBox>();
        QCOMPARE(field->text(), QString("4"));
        for (int page = 0; page < colours.size(); ++page) {
            field->setValue(page + 1);
            QCOMPARE(field->text(), QString::number(page + 1));
            QCOMPARE(view.currentPage(), page);
            QTRY_COMPARE(seenColour(page), colours[page]);
        }
        view.goTo(1);
        QTest::keyClick(&view, Qt::Key_0, Qt::ControlModifier); // the page fits
        QCOMPARE(view.currentPage(), 1);
        QTest::keyClick(&view, Qt::Key_PageDown);
        QTest::keyClick(&view, Qt::Key_Space);
        QCOMPARE(view.currentPage(), 3);
        QTest::keyClick(&view, Qt::Key_Space, Qt::ShiftModifier);
        QTest::keyClick(&view, Qt::Key_PageUp);
        QVERIFY(view.viewportPoint(1, {0, 0}).y() >= 0 &&
                view.viewportPoint(1, {0, 842}).y() <= view.viewport()->height());
        part<QComboBox>()->setEditText("700%"); // larger than one picture may be
        QTest::keyClick(part<QComboBox>(), Qt::Key_Return);
        QCOMPARE(view.zoomFactor(), 7.0);
        view.goTo(2);
        QTRY_COMPARE(view.viewport()->grab().toImage().pixelColor(view.viewport()->rect().center()),
                     QColor(Qt::blue));
        const QPoint fixed(100, 150);
        QWheelEvent wheel(fixed, view.viewport()->mapToGlobal(fixed), {}, {0, -120}, Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        const double before = view.zoomFactor();
        const QPointF far = QPointF(fixed - view.viewportPoint(2, {0, 0})) / before;
        QCoreApplication::sendEvent(view.viewport(), &wheel);
        const QPointF now = QPointF(fixed - view.viewportPoint(2, {0, 0})) / view.zoomFactor();
        QVERIFY(view.zoomFactor() < before);
        QVERIFY2((far - now).manhattanLength() < 2, "the place below the pointer stays");
    }

    void searchAndSelection()
    {
        open(textFile(40), "text.pdf");
        PageView& view = m_window->view();
        view.goTo(30);
        QTest::keyClick(&view, Qt::Key_F, Qt::ControlModifier);
        auto* bar = part<SearchBar>();
        auto* wanted = bar->findChild<QLineEdit*>();
        QTRY_VERIFY(wanted->isVisible());
        wanted->setText("会议"); // over the end of a line
        QTest::keyClick(wanted, Qt::Key_Return);
        QTRY_VERIFY(shows("第 31 处，共 40 处"));
        QCOMPARE(view.currentPage(), 30); // the next one from where one was
        for (int i = 0; i < 10; ++i)
            QTest::keyClick(wanted, Qt::Key_Return);
        QVERIFY(shows("第 1 处，共 40 处"));
        QCOMPARE(view.currentPage(), 0);
        QTest::keyClick(wanted, Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(view.currentPage(), 39);
        const auto mark = [&](const QPointF& points) {
            return view.viewport()->grab().toImage().pixelColor(view.viewportPoint(39, points));
        };
        QTRY_VERIFY(mark({115, 98}).blue() < 120 && mark({70, 118}).blue() < 120); // both lines
        QVERIFY(mark({150, 98}).blue() > 200);
        wanted->setText("没有的词");
        QTRY_VERIFY(shows("没有找到"));
        QTest::keyClick(wanted, Qt::Key_Escape);
        QVERIFY(!bar->isVisible() && view.hasFocus());

        view.goTo(4);
        QTRY_VERIFY((view.selectAllOnPage(), view.hasSelection()));
        QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QString("关于召开会\n议的通知\n第5页"));
        QWidget* port = view.viewport();
        QTest::mousePress(port, Qt::LeftButton, {}, view.viewportPoint(4, {85, 97}));
        QMouseEvent move(QEvent::MouseMove, view.viewportPoint(4, {97, 117}), Qt::NoButton, Qt::LeftButton,
                         {});
        QCoreApplication::sendEvent(port, &move); // Qt Test would move the real pointer
        QTest::mouseRelease(port, Qt::LeftButton, {}, view.viewportPoint(4, {97, 117}));
        view.copy();
        QCOMPARE(QGuiApplication::clipboard()->text(), QString("召开会\n议的通"));
    }

    void damagedPagesTellSo()
    {
        QImage picture(400, 560, QImage::Format_RGB32);
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                picture.setPixel(x, y, qRgb(x * y, x ^ y, x + y));
        QBuffer jpeg;
        picture.save(&jpeg, "JPG");
        const QByteArray zipped = qCompress(QByteArray(400 * 560 * 3, 'x') + jpeg.data()).mid(4);
        PdfFile file;
        file.addImagePage("DCTDecode", jpeg.data(), picture.size());
        file.addImagePage("DCTDecode", jpeg.data().mid(1000), picture.size());
        file.addImagePage("FlateDecode", zipped.left(500), picture.size());
        file.addColourPage(Qt::green);
        file.addBadPage();
        open(file, "hurt.pdf");
        PageView& view = m_window->view();
        QCOMPARE(view.pageCount(), 5);
        const QStringList faults{"", "第 2 页有损坏", "第 3 页有损坏", "", "第 5 页已损坏，无法显示"};
        for (int page = 0; page < 5; ++page) {
            view.goTo(page);
            QTRY_VERIFY(view.cache().standIn(page) != nullptr);
            QVERIFY2(faults[page].isEmpty() ? view.cache().faultOf(page).isEmpty()
                                            : view.cache().faultOf(page).startsWith(faults[page]),
                     qPrintable(QString("%1: %2").arg(page + 1).arg(view.cache().faultOf(page))));
        }
        QByteArray broken = textFile(3).bytes();
        broken.replace("startxref\n", "startxref\n7"); // the index is not where it should be
        QVERIFY(put("cut.pdf", broken));
        m_window->open(path("cut.pdf"));
        QTRY_VERIFY(shows("文件有损坏，已尽量修复"));
        QCOMPARE(view.pageCount(), 3);
    }

    void manyLargePagesStayInBounds()
    {
        PdfFile file;
        for (int page = 0; page < 60; ++page)
            file.addColourPage(QColor::fromHsv(page * 6, 255, 255));
        open(file, "many.pdf");
        PageView& view = m_window->view();
        view.setZoom({ZoomMode::Factor, 2}); // 14 MB a page
        for (int page = 0; page < 60; page += 3) {
            view.goTo(page);
            QTRY_VERIFY(view.cache().standIn(page) != nullptr);
            QVERIFY(view.cache().bytes() <= RenderCache::kLeastBound &&
                    view.cache().bound() == RenderCache::kLeastBound);
        }
        QVERIFY(view.cache().bytes() > RenderCache::kLeastBound / 2);
    }

    void aChangedFileIsOffered()
    {
        open(textFile(3), "changing.pdf");
        m_window->view().goTo(1);
        QVERIFY(textFile(5).save(path("next.pdf")));
        QVERIFY(QFile::remove(path("changing.pdf")) && QFile::rename(path("next.pdf"), path("changing.pdf")));
        QTRY_VERIFY(shows("文件已被更改"));
        QCOMPARE(m_window->view().pageCount(), 3);
        for (auto* button : m_window->findChildren<QPushButton*>())
            if (button->isVisible() && button->text() == "重新载入")
                button->click();
        QTRY_COMPARE(m_window->view().pageCount(), 5);
        QCOMPARE(m_window->view().currentPage(), 1);
        QVERIFY(QFile::remove(path("changing.pdf")));
        QTRY_VERIFY(shows("文件已被移走或删除"));
    }

    void printingRunsBesideTheView()
    {
        open(textFile(3), "text.pdf");
        const auto print = [this](const QString& target, const QVector<int>& pages) {
            PrintOrder order{std::make_shared<QPrinter>(QPrinter::HighResolution), pages, true};
            order.printer->setOutputFileName(target);
            m_window->printTo(order);
            QVERIFY(part<QProgressDialog>());
            QTRY_VERIFY(!part<QProgressDialog>());
        };
        print(path("out.pdf"), {0, 2});
        QVERIFY(QFile::exists(path("out.pdf")) && !part<QMessageBox>());
        print("/nowhere/out.pdf", {0});
        QTRY_VERIFY(part<QMessageBox>());
        QVERIFY(part<QMessageBox>()->text().contains("/nowhere/out.pdf"));
        part<QMessageBox>()->close();
        PrintOrder endless{std::make_shared<QPrinter>(), QVector<int>(500, 1), true};
        endless.printer->setOutputFileName(path("never.pdf"));
        m_window->printTo(endless);
        part<QProgressDialog>()->findChild<QPushButton*>()->click();
        QTRY_VERIFY(!part<QProgressDialog>());
        QVERIFY(QDir(m_folder.path()).entryList({"never*"}).isEmpty());
    }

    void settingsAreRemembered()
    {
        m_window->view().setZoom({ZoomMode::Factor, 1.75});
        m_window->resize(777, 555);
        m_window->close();
        init();
        QVERIFY(m_window->view().zoom().mode == ZoomMode::Factor && m_window->view().zoom().factor == 1.75);
        const ReaderWindow again;
        QCOMPARE(again.size(), QSize(777, 555));
        QVERIFY(QFile::exists(path("config/qwd200/pdfReader.ini")));
    }

private:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    bool put(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }
    void open(const PdfFile& file, const QString& name)
    {
        QVERIFY(file.save(path(name)));
        m_window->open(path(name));
        QTRY_VERIFY(m_window->view().pageCount() > 0);
    }

    // in a label that is seen
    bool shows(const QString& text) const
    {
        const auto labels = m_window->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
            return label->isVisible() && label->text().contains(text);
        });
    }

    QColor seenColour(int page) const
    {
        const QPoint place = m_window->view().viewportPoint(page, {100, 100});
        return m_window->view().viewport()->grab().toImage().pixelColor(place);
    }

    template <class Widget>
    Widget* part() const
    {
        return m_window->findChild<Widget*>();
    }
    static PdfFile textFile(int pages)
    {
        PdfFile file;
        for (int page = 0; page < pages; ++page)
            file.addTextPage({{60, 100, "关于召开会", 12},
                              {60, 120, "议的通知", 12},
                              {60, 300, QString("第%1页").arg(page + 1), 12}});
        return file;
    }

    QTemporaryDir m_folder;
    std::unique_ptr<ReaderWindow> m_window;
};

QTEST_MAIN(TstReaderWindow)
#include "tst_readerwindow.moc"
