// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/factory.h"
#include "config/freshroot.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms-dialogs/driving.h"
#include "forms/compressset.h"
#include "forms/copyfaxproperty.h"
#include "forms/filenameset.h"
#include "forms/functiondialogs.h"
#include "forms/functionform.h"
#include "forms/panels.h"
#include "forms/wholesetpanel.h"
#include "mainform.h"
#include "ocr/ocrpanel.h"
#include "pdf/pdfpanel.h"
#include "recordinghost.h"

#include <QAbstractSpinBox>
#include <QTabWidget>

namespace {

// What a user can set in a window, in the order of creation.
QVector<QWidget*> inputs(const QWidget& window)
{
    QVector<QWidget*> all;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* button = qobject_cast<QAbstractButton*>(widget);
        const bool part = widget->objectName().startsWith("qt_") || widget->parent()->inherits("QComboBox");
        const bool input = (button && button->isCheckable()) || widget->inherits("QComboBox") ||
                           widget->inherits("QSlider") || widget->inherits("QAbstractSpinBox") ||
                           widget->inherits("QLineEdit");
        // the order of a list of files and what fills other fields are no settings; starting at login is
        // none of these files'
        const QStringList others{"sortComboBox", "usualSize", "autostart"};
        if (input && !part && widget->isVisible() && !others.contains(widget->objectName()))
            all << widget;
    }
    return all;
}

QStringList state(const QWidget& window)
{
    QStringList all;
    for (const QWidget* input : inputs(window))
        all << input->objectName() + '=' + valueOf(*input);
    return all;
}

void moveByKey(QWidget* input)
{
    input->setFocus();
    auto* edit = qobject_cast<QLineEdit*>(input);
    if (auto* combo = qobject_cast<QComboBox*>(input)) {
        if (!combo->isEditable()) {
            QTest::keyClick(combo, combo->currentIndex() > 0 ? Qt::Key_Up : Qt::Key_Down);
            return;
        }
        edit = combo->lineEdit();
    }
    if (edit) {
        if (!edit->text().startsWith('/')) // a folder gets another name, the rest another content
            edit->clear();
        QTest::keyClicks(edit, "77");
    } else if (input->inherits("QAbstractButton")) {
        QTest::keyClick(input, Qt::Key_Space);
    } else {
        const bool atEnd = input->property("value") == input->property("maximum");
        QTest::keyClick(input, atEnd ? Qt::Key_Down : Qt::Key_Up);
    }
}

bool isChosenRadio(const QWidget* input)
{
    return qobject_cast<const QRadioButton*>(input) && input->property("checked").toBool();
}

QByteArray files()
{
    return fileContent(paths::mainSettings()) + fileContent(paths::pathSettings());
}

} // namespace

Q_DECLARE_METATYPE(std::function<bool()>)

// Whatever can be set in a panel or a dialog is stored, comes back, and has a word of help. A control of a
// later version is found by itself.
class TestEveryControl : public QObject
{
    Q_OBJECT

private:
    using Open = std::function<bool()>;

    std::unique_ptr<MainForm> m_form;
    RecordingHost m_host;

    void storePage(PageUnderTest& page, const char* group)
    {
        const auto file = openMainSettings();
        {
            const GroupScope scope(*file, group);
            page.settings.write(*file);
        }
        QVERIFY(saveSettings(*file));
    }

    // A duplex scan in black and white and one in colour can use everything between them.
    void moveEverything(QWidget& shown, const ScanPageControls& c, const std::function<void()>& store)
    {
        QSet<QWidget*> done;
        QByteArray before;
        const auto prepare = [&](int colorMode) {
            c.source->setCurrentIndex(3);
            c.combine->setChecked(true);
            c.resolution->setCurrentIndex(c.resolution->count() - 1);
            c.colorMode->setCurrentIndex(colorMode);
            store();
            before = files();
        };
        for (const int colorMode : {0, 2}) {
            prepare(colorMode);
            for (QWidget* input : inputs(shown)) {
                if (done.contains(input) || !input->isEnabled() || isChosenRadio(input))
                    continue;
                const QString name = shown.metaObject()->className() + ('/' + input->objectName());
                moveByKey(input);
                store();
                QVERIFY2(files() != before, qPrintable(name + " is not stored"));
                QVERIFY2(!input->toolTip().isEmpty(), qPrintable(name + " has no help"));
                before = files();
                if (QVector<const QWidget*>{c.source, c.combine, c.resolution, c.colorMode}.contains(input))
                    prepare(colorMode); // others depend on it
                done << input;
            }
        }
        for (QWidget* input : inputs(shown))
            QVERIFY2(done.contains(input) || input->inherits("QRadioButton"),
                     qPrintable(input->objectName()));
        QVERIFY(done.size() > 30);
    }

    template <typename Panel>
    void movePanel(const QString& group, const std::function<std::unique_ptr<Panel>()>& make,
                   const std::function<void(Panel&)>& store, const std::function<void(Panel&)>& setDefaults)
    {
        const auto show = [](Panel& panel) {
            if (auto* tabs = panel.template findChild<QTabWidget*>())
                tabs->setCurrentIndex(1);
            open(panel);
        };
        const std::unique_ptr<Panel> panel = make();
        show(*panel);
        const QStringList factory = state(*panel);
        openMainSettings()->remove(group);
        moveEverything(*panel, panel->functionControls().controls, [&] { store(*panel); });
        const std::unique_ptr<Panel> again = make();
        show(*again);
        QCOMPARE(state(*again), state(*panel));
        setDefaults(*again);
        QCOMPARE(state(*again), factory);
        for (const Setting& setting : table(group).settings) {
            const QByteArray key = setting.key;
            if (key == "dateAndtime")
                break; // from here on the dialogs' keys
            QVERIFY2(openMainSettings()->contains(group + '/' + key) || key == "fileName" ||
                         key == "saveFile",
                     setting.key);
        }
    }

    // Moves one control after the other, each seen again when the dialog is opened the next time.
    void moveDialog(const Open& openDialog)
    {
        QStringList done, shown, factory;
        QByteArray before;
        for (bool more = true; more;) {
            inModal<QDialog>([&](QDialog& dialog) {
                if (factory.isEmpty())
                    factory = state(dialog);
                else
                    QCOMPARE(state(dialog), shown);
                more = false;
                QVector<QWidget*> all = inputs(dialog);
                std::reverse(all.begin(), all.end()); // what switches others off comes after them
                for (QWidget* input : qAsConst(all)) {
                    if (more || done.contains(input->objectName()) || !input->isEnabled() ||
                        isChosenRadio(input))
                        continue;
                    more = true;
                    QVERIFY2(!input->objectName().isEmpty() && !input->toolTip().isEmpty(),
                             qPrintable(input->objectName()));
                    moveByKey(input);
                    done << input->objectName();
                }
                shown = state(dialog);
                press(dialog, QDialogButtonBox::Ok);
            });
            before = files();
            QVERIFY(openDialog());
            storePage(*m_form->scan, "Scan_Scan");
            QVERIFY2(!more || files() != before, qPrintable(done.constLast()));
        }
        inModal<QDialog>([&](QDialog& dialog) {
            for (const QWidget* input : inputs(dialog))
                QVERIFY2(done.contains(input->objectName()) || isChosenRadio(input),
                         qPrintable(input->objectName() + " cannot be reached"));
            press(dialog, QDialogButtonBox::RestoreDefaults);
            QCOMPARE(state(dialog), factory);
            press(dialog, QDialogButtonBox::Cancel);
        });
        QVERIFY(!openDialog());
        QVERIFY(!done.isEmpty());
    }

private slots:
    void init()
    {
        QVERIFY(freshRoot());
        QVERIFY(ensureFactorySettings());
        for (const char* list : {"Scan_app", "File_app", "Scan_PDF_app"})
            for (const char* number : {"0", "1"})
                openMainSettings()->setValue(QString("%1/%2").arg(list, number), QString("app ") + number);
        m_form = std::make_unique<MainForm>();
        for (const auto* page : {m_form->scan.get(), m_form->file.get()})
            page->c.application->addItems({"app 0", "app 1"});
        open(m_form->window);
    }

    void pages()
    {
        for (PageUnderTest* page : {m_form->scan.get(), m_form->file.get()}) {
            const bool scan = page == m_form->scan.get();
            const char* group = scan ? "Scan_Scan" : "File_Scan";
            m_form->ui.functionStack->setCurrentWidget(page->page);
            {
                const auto file = openMainSettings();
                const GroupScope scope(*file, group);
                page->settings.read(*file);
            }
            for (QCheckBox* box : {page->c.autoCut, page->c.imgMend})
                box->setChecked(false); // on in a new file, not among the defaults
            const QStringList factory = state(*page->page);
            moveEverything(*page->page, page->c, [&] { storePage(*page, group); });
            page->logic.setRotation(ScanPageLogic::Side::Front, 2);
            page->logic.setDefaults();
            QCOMPARE(state(*page->page), factory);
            QCOMPARE(page->logic.rotation(ScanPageLogic::Side::Front), 0);
        }
    }

    void pdf()
    {
        movePanel<pdfpanel>(
            "Scan_PDF", [&] { return std::make_unique<pdfpanel>("Scan", m_host); },
            [](pdfpanel& panel) { QVERIFY(panel.scanWriteIni()); },
            [](pdfpanel& panel) { panel.setDefaultValue(); });
    }
    void ocr()
    {
        movePanel<ocrpanel>(
            "File_OCR", [&] { return std::make_unique<ocrpanel>("File", m_host); },
            [](ocrpanel& panel) { QVERIFY(panel.fileWriteIni()); },
            [](ocrpanel& panel) { panel.ocrSetDefaultValue(); });
    }
    void folderPanel()
    {
        movePanel<FolderPanel>(
            "Scan_Copy", [] { return std::make_unique<copyPanel>("Scan"); },
            [](FolderPanel& panel) { QVERIFY(panel.writeIni()); },
            [](FolderPanel& panel) { panel.setDefaultValue(); });
    }

    void dialogs_data()
    {
        QTest::addColumn<Open>("open");
        const auto row = [](const char* name, const Open& open) { QTest::newRow(name) << open; };
        QWidget* window = nullptr;
        row("border", [=] { return editBorder(window); });
        row("noise", [=] { return editNoise(*m_form->function, window); });
        row("paper", [=] { return editPaperSize(*m_form->function, window); });
        row("output", [=] { return editOutput(*m_form->function, window); });
        row("compression", [=] { return editCompression(window); });
        row("save rules", [=] { return editSaveRules(*m_form->function, window); });
        row("turns", [=] { return editRotation(*m_form->function, window); });
        row("turns of both sides", [=] {
            m_form->scan->c.source->setCurrentIndex(3);
            return editRotation(*m_form->function, window);
        });
        row("names", [] { return fileNameSet("Scan_PDF").exec() == QDialog::Accepted; });
        row("whole", [] { return wholesetpanel().exec() == QDialog::Accepted; });
        row("copies", [] { return copyfaxproperty("Scan_Copy_Print").exec() == QDialog::Accepted; });
    }
    void dialogs()
    {
        QFETCH(Open, open);
        moveDialog(open);
    }
};

QTEST_MAIN(TestEveryControl)
#include "tst_everycontrol.moc"
