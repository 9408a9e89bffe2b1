// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"
#include "config/freshroot.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms-dialogs/driving.h"
#include "forms/beforeafter.h"
#include "forms/compressset.h"
#include "forms/functioncontrols.h"
#include "forms/functiondialogs.h"
#include "forms/imgmendpanel.h"
#include "forms/noiseset.h"
#include "forms/outputset.h"
#include "forms/papersizeset.h"
#include "forms/rotateset.h"
#include "forms/wholesetpanel.h"
#include "imaging/pagepipeline.h"
#include "mainform.h"

#include <QDoubleSpinBox>
#include <QImage>
#include <QPainter>
#include <QSignalSpy>

namespace {

constexpr int kDpi = 300;

// A scan of 1240 x 1748 pixels (A6 at 300 dpi): strokes, a grey patch and single specks.
QString drawScan()
{
    QImage page(1240, 1748, QImage::Format_RGB888);
    page.fill(QColor(250, 248, 240));
    QPainter painter(&page);
    for (int row = 0; row < 20; ++row)
        for (int word = 0; word < 8; ++word)
            painter.fillRect(120 + word * 120, 150 + row * 70, 90, 12, QColor(30, 30, 30));
    painter.fillRect(120, 1580, 400, 60, QColor(205, 205, 205));
    for (int speck = 0; speck < 10; ++speck)
        painter.fillRect(700 + speck * 40, 1600, 3, 3, Qt::black);
    painter.end();
    const QString file = paths::tempFolder() + "zarnqwd200-0001.pnm";
    page.save(file, "PPM");
    return file;
}

int blackIn(const QImage& image, const QRect& place)
{
    int count = 0;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x)
            count += qGray(image.pixel(x, y)) < 128 ? 1 : 0;
    return count;
}

void spin(QWidget& dialog, const char* name, const QString& number)
{
    auto* box = control<QDoubleSpinBox>(dialog, name);
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, number);
    QTest::keyClick(box, Qt::Key_Tab);
}

QString stored(const QString& key)
{
    return openMainSettings()->value(key).toString();
}

} // namespace

// The settings dialogs, from the button on the scan page to the key in the file and to the page that the
// pipeline makes of it.
class TestSettingDialogs : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<MainForm> m_form;

    QWidget* window() { return &m_form->window; }
    const ScanPageControls& controls() { return m_form->scan->c; }

    // The files that a scan gives under the present settings.
    QStringList scan()
    {
        const PageOptions options = m_form->function->pageOptions(false);
        QDir().mkpath(options.folder);
        ImageConvertFunction library;
        int number = 0;
        PagePipeline pipeline(library, [&number] { return QString("page%1").arg(++number); });
        const PageResult result = pipeline.processPage(drawScan(), options);
        if (!result.problems.isEmpty())
            qFatal("%s", qPrintable(result.problems.join('\n')));
        return result.files;
    }

private slots:
    void init()
    {
        QVERIFY(freshRoot());
        QVERIFY(ensureFactorySettings());
        openMainSettings()->setValue("wholeSet/ofALaterVersion", "x");
        m_form = std::make_unique<MainForm>();
        const ScanPageControls& c = controls();
        c.fileType->setCurrentIndex(2); // PNG: pixels as they are
        for (QCheckBox* box : {c.autoCut, c.autoRight, c.autoCrowed, c.imgMend})
            box->setChecked(false);
        for (QSlider* slider : {c.lightness, c.contrast})
            slider->setValue(0);
        c.gamma->setValue(100);
        c.frontRotation->setEnabled(true);
        open(*window());
    }

    void cleanup()
    {
        QCOMPARE(stored("wholeSet/ofALaterVersion"), QString("x")); // nobody's key is lost
        m_form.reset();
    }

    void border()
    {
        inModal<imgmendpanel>([](imgmendpanel& dialog) {
            click(dialog, "imgMendOut");
            spin(dialog, "imgMendUp", "4");
            QVERIFY(!control<QWidget>(dialog, "imgMendLeft")->isEnabled());
            click(dialog, "imgMendLeftState");
            spin(dialog, "imgMendLeft", "2.5");
            inModal<QDialog>([](QDialog& colors) { // hue, saturation, value, red, green, blue, alpha
                const QList<QSpinBox*> boxes = colors.findChildren<QSpinBox*>();
                for (int i : {3, 4, 5})
                    boxes.at(i)->setValue(10 * i);
                QTest::keyClick(&colors, Qt::Key_Return);
            });
            click(dialog, "imgMendcolor");
            press(dialog, QDialogButtonBox::Ok);
        });
        QVERIFY(editBorder(window()));
        controls().imgMend->click();
        const QImage page(scan().value(0));
        QCOMPARE(page.size(), QSize(1240 + 2 * 30, 1748 + 2 * 47)); // 2.5 and 4 mm at 300 dpi
        QCOMPARE(page.pixelColor(5, 900), QColor(30, 40, 50));
        QCOMPARE(page.pixelColor(35, 55), QColor(250, 248, 240));
    }

    void thresholdAndNoise()
    {
        controls().colorMode->setCurrentIndex(0);
        controls().fileType->setCurrentIndex(2);
        const QRect patch(150, 1590, 300, 40), specks(690, 1590, 420, 30);
        QImage page(scan().value(0));
        const int patchBefore = blackIn(page, patch), specksBefore = blackIn(page, specks);
        QVERIFY(specksBefore > 40);
        inModal<NoiseSet>([](NoiseSet& dialog) {
            pick(dialog, "thresholdMode", "自定义");
            pick(dialog, "noiseMode", "自定义");
            pick(dialog, "noiseThreshold", "1 级：不超过 5 点");
            auto* slider = control<QSlider>(dialog, "WBThreshold");
            slider->setFocus();
            QTest::keyClick(slider, Qt::Key_End);
            for (int step = 0; step < 2; ++step)
                QTest::keyClick(slider, Qt::Key_PageDown);
            press(dialog, QDialogButtonBox::Ok);
        });
        QVERIFY(editNoise(*m_form->function, window()));
        page.load(scan().value(0));
        QCOMPARE(blackIn(page, specks), 0);
        QVERIFY2(blackIn(page, patch) > patchBefore, qPrintable(QString::number(patchBefore)));
    }

    // The preview shows what the pipeline does, soon after the slider has moved.
    void thresholdPreview()
    {
        QVERIFY(keepLastPage(drawScan(), kDpi));
        NoiseSet dialog("Scan_OCR_DeNoise", {1, 0});
        auto* preview = dialog.findChild<BeforeAfter*>();
        QSignalSpy shown(preview, &BeforeAfter::shown);
        open(dialog);
        QTRY_VERIFY(!shown.isEmpty());
        QCOMPARE(preview->before().size(), kDetailSize);
        auto* slider = control<QSlider>(dialog, "WBThreshold");
        for (int value : {40, 90}) {
            shown.clear();
            slider->setValue(value);
            QVERIFY(shown.wait());
        }
        slider->setValue(130);
        ImageConvertFunction library;
        ImageHandle image(library, library.getImage(qPrintable(lastPage().detail)));
        library.setSourceDpi(image.get(), kDpi);
        image.reset(library.imageRGBtoWB(image.get(), 130));
        QVERIFY(library.writeImage(image.get(), paths::tempFolder() + "expected.png"));
        QTRY_COMPARE(preview->after().convertToFormat(QImage::Format_RGB32),
                     QImage(paths::tempFolder() + "expected.png").convertToFormat(QImage::Format_RGB32));
    }

    void paperSize()
    {
        auto* paper = controls().paperSize;
        paper->setCurrentIndex(paper->count() - 1);
        inModal<PaperSizeSet>([](PaperSizeSet& dialog) {
            auto* result = control<QLabel>(dialog, "resultLabel");
            spin(dialog, "width", "210");
            spin(dialog, "height", "250");
            QVERIFY(result->text().contains("不裁切"));
            spin(dialog, "width", "300");
            QVERIFY(result->text().contains("210.0 × 250.0"));
            spin(dialog, "width", "60.5");
            spin(dialog, "height", "80");
            click(dialog, "middle");
            press(dialog, QDialogButtonBox::Ok);
        });
        QVERIFY(editPaperSize(*m_form->function, window()));
        const QImage page(scan().value(0));
        QVERIFY(qAbs(page.width() - 715) <= 1 && qAbs(page.height() - 945) <= 1);
    }

    void outputImages()
    {
        inModal<OutputSet>([](OutputSet& dialog) {
            QVERIFY(!control<QWidget>(dialog, "fGrayDpi")->isEnabled());
            click(dialog, "outMutiImg");
            pick(dialog, "fGrayDpi", "100 dpi");
            pick(dialog, "fWBDpi", "200 dpi");
            press(dialog, QDialogButtonBox::Ok);
        });
        QVERIFY(editOutput(*m_form->function, window()));
        const QStringList files = scan();
        QCOMPARE(files.size(), 3);
        QVERIFY(qAbs(QImage(files.at(1)).width() - 413) <= 1);
        QVERIFY(qAbs(QImage(files.at(2)).width() - 827) <= 1);
    }

    void compression()
    {
        controls().fileType->setCurrentIndex(0);
        const qint64 before = QFileInfo(scan().value(0)).size();
        QVERIFY(keepLastPage(drawScan(), kDpi));
        inModal<CompressSet>([](CompressSet& dialog) {
            auto* slider = control<QSlider>(dialog, "colorJpg");
            slider->setFocus();
            QTest::keyClick(slider, Qt::Key_Home);
            for (int step = 0; step < 4; ++step)
                QTest::keyClick(slider, Qt::Key_Right);
            click(dialog, "sameCompress");
            QVERIFY(!control<QWidget>(dialog, "grayJpg")->isEnabled());
            press(dialog, QDialogButtonBox::Ok);
        });
        QVERIFY(editCompression(window()));
        const qint64 after = QFileInfo(scan().value(0)).size();
        QVERIFY2(after < before * 2 / 3, qPrintable(QString("%1 %2").arg(before).arg(after)));
        // what the dialog foretells
        const Effect effect = [](ImageConvertFunction& library, MagickWand* image) {
            return library.imageCompress(image, "jpg", "5");
        };
        const QString detail = paths::tempFolder() + "detail.jpg";
        QVERIFY(renderEffect(lastPage().detail, kDpi, effect, detail));
        const qint64 foretold =
            estimatedBytes(lastPage(), QFileInfo(detail).size(), effect, "jpg", paths::tempFolder());
        QVERIFY2(foretold > after / 2 && foretold < after * 2,
                 qPrintable(QString("%1 %2").arg(foretold).arg(after)));
    }

    void rotation()
    {
        m_form->scan->logic.setAutoRotateState();
        const auto turn = [this](const char* first, const char* second) {
            inModal<RotateSet>([=](RotateSet& dialog) {
                click(dialog, "fixedButton");
                click(dialog, first);
                if (second)
                    click(dialog, second);
                press(dialog, QDialogButtonBox::Ok);
            });
            QVERIFY(editRotation(*m_form->function, window()));
        };
        turn("frontTurn1", nullptr);
        const QImage page(scan().value(0));
        QCOMPARE(page.size(), QSize(1748, 1240));
        QVERIFY(blackIn(page, QRect(1590, 100, 30, 1040)) > 40); // the specks, turned left, at the right
        controls().source->setCurrentIndex(3);
        turn("frontTurn2", "backTurn3");
        QCOMPARE(stored("Scan_Front_Rotate/singleRotate"), QString("1"));
        QCOMPARE(stored("Scan_Front_Rotate/doubleRotate"), QString("2"));
        QCOMPARE(stored("Scan_Back_Rotate/doubleRotate"), QString("3"));
        // What was used for one-sided scans is offered for them again.
        m_form->scan->logic.setAutoRotateState();
        controls().source->setCurrentIndex(1);
        inModal<RotateSet>([](RotateSet& dialog) {
            QCOMPARE(dialog.choice().front, 1);
            press(dialog, QDialogButtonBox::Cancel);
        });
        QVERIFY(!editRotation(*m_form->function, window()));
    }

    void onlyScannedSidesAreOffered()
    {
        for (const ScanSides sides : {ScanSides::Front, ScanSides::Back}) {
            RotateSet dialog({false, 1, 2}, sides);
            open(dialog);
            QCOMPARE(control<QWidget>(dialog, "frontGroup")->isVisible(), sides == ScanSides::Front);
            QCOMPARE(control<QWidget>(dialog, "backGroup")->isVisible(), sides == ScanSides::Back);
            QCOMPARE(dialog.choice().front, 1);
            QCOMPARE(dialog.choice().back, 2);
        }
    }

    void badValues()
    {
        QVERIFY(putFile(paths::mainSettings(),
                        "[wholeSet]\nimgMendUp=-4\nimgMendLeft=wide\nimgMendIn=maybe\nimgMendcolorRed=300\n"
                        "fGrayDpi=9\ndelBlank=16\nsplitCount=0\nofALaterVersion=x\n[Scan_DeNoise]"
                        "\nWBThreshold=999\nnoiseThreshold=-2\n"
                        "noiseMode=7\n[Scan_Scan_PaperSize]\nwidth=-1\nheight=huge\n"
                        "[File_Compress]\ncolorJpg=lots\ngrayJpg=0\nsameCompress=8\n"));
        for (const char* named : {"imgMendUp", "imgMendIn", "WBThreshold", "colorJpg"})
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(named));
        const imgmendpanel border;
        QCOMPARE(control<QDoubleSpinBox>(border, "imgMendUp")->value(), 1.0);
        QVERIFY(control<QRadioButton>(border, "imgMendIn")->isChecked());
        const NoiseSet noise("Scan_DeNoise", {});
        QCOMPARE(control<QSlider>(noise, "WBThreshold")->value(), 130);
        QCOMPARE(control<QComboBox>(noise, "noiseThreshold")->currentIndex(), 1);
        QCOMPARE(control<QComboBox>(noise, "noiseMode")->currentIndex(), 2); // the last item
        const PaperSizeSet paper("Scan_Scan_PaperSize");
        QCOMPARE(control<QDoubleSpinBox>(paper, "width")->value(), 210.0);
        QCOMPARE(control<QDoubleSpinBox>(paper, "height")->value(), 297.0);
        const wholesetpanel whole;
        QCOMPARE(control<QSlider>(whole, "delBlank")->value(), 8);
        QCOMPARE(control<QSpinBox>(whole, "splitCount")->value(), 2);
        const OutputSet output({});
        QCOMPARE(control<QComboBox>(output, "fGrayDpi")->currentIndex(), 3);
        const CompressSet compression;
        QCOMPARE(control<QSlider>(compression, "colorJpg")->value(), 85);
        QCOMPARE(control<QSlider>(compression, "grayJpg")->value(), 85);
        QVERIFY(!control<QCheckBox>(compression, "sameCompress")->isChecked());
    }
};

QTEST_MAIN(TestSettingDialogs)
#include "tst_settingdialogs.moc"
