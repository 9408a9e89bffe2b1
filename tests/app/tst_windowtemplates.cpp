// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/windowfixture.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "config/templatearchive.h"
#include "config/templates.h"
#include "forms/templatename.h"

#include <QCheckBox>
#include <QMenu>
#include <QMessageBox>
#include <QRadioButton>
#include <QSlider>

// Templates as the user works with them in the main window.
class WindowTemplatesTest : public WindowFixture
{
    Q_OBJECT

private:
    QComboBox* list() { return control<QComboBox>("templateComboBox"); }
    bool isMarked()
    {
        QTest::qWait(300); // the mark follows a moment after the change
        return !list()->accessibleDescription().isEmpty();
    }
    QStringList listed()
    {
        QStringList names;
        for (int i = 0; i < list()->count(); ++i)
            names << list()->itemText(i);
        return names;
    }
    void saveAs(const QString& name)
    {
        control<QPushButton>("saveBtn")->click();
        auto* dialog = m_window->findChild<TemplateName*>();
        QVERIFY(dialog && dialog->windowModality() == Qt::ApplicationModal);
        type(*dialog, "nameEdit", name);
        press(*dialog, QDialogButtonBox::Ok);
        QVERIFY(!dialog->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void answer(QMessageBox::StandardButton button, QString* text = nullptr)
    {
        inModal<QMessageBox>([button, text](QMessageBox& box) {
            if (text)
                *text = box.text();
            box.button(button)->click();
        });
    }
    void clickAndAnswer(const char* name, QMessageBox::StandardButton button, QString* text = nullptr)
    {
        answer(button, text);
        control<QPushButton>(name)->click();
    }

    // In an order of its own: the stack raises the page that it shows.
    QList<QWidget*> controls()
    {
        QList<QWidget*> all;
        const auto* stack = control<QStackedWidget>("functionStack");
        for (int i = 0; i < stack->count(); ++i)
            all += stack->widget(i)->findChildren<QWidget*>();
        return all;
    }
    // Every control of the stack's pages and panels with its place and state, in the order of creation.
    QStringList state()
    {
        QStringList all;
        for (const QWidget* widget : controls()) {
            const auto* button = qobject_cast<const QAbstractButton*>(widget);
            const bool turn = widget->objectName().contains("Rotation");
            if ((button && button->isCheckable()) || widget->inherits("QSlider") || turn ||
                (widget->inherits("QComboBox") && widget->objectName() != "sortComboBox"))
                all << QString("%1/%2=%3 %4")
                           .arg(all.size())
                           .arg(widget->objectName(), valueOf(*widget))
                           .arg(turn && widget->testAttribute(Qt::WA_ForceDisabled));
        }
        for (const char* name : {"templetBtncomboBox_3", "templetBtncomboBox"})
            all << control<QComboBox>(name)->currentText();
        all << QString::number(control<QRadioButton>("filePushButton")->isChecked());
        return all;
    }
    // Changes all that can be changed, in a way of its own for each `seed`.
    void changeEverything(int seed)
    {
        int n = seed;
        for (QWidget* widget : controls()) {
            ++n;
            if (widget->isHidden() && !widget->inherits("QSlider")) // a list behind the one that is shown
                continue;
            if (auto* slider = qobject_cast<QSlider*>(widget))
                slider->setValue(slider->minimum() + (n * 7) % (slider->maximum() - slider->minimum()));
            else if (auto* combo = qobject_cast<QComboBox*>(widget); combo && combo->isEditable())
                combo->setEditText(QStringLiteral("/home/folder%1").arg(n));
            else if (combo && combo->count() > 1)
                combo->setCurrentIndex((combo->currentIndex() + 1 + n % (combo->count() - 1)) %
                                       combo->count());
            else if (auto* box = qobject_cast<QCheckBox*>(widget); box && n % 3)
                box->click();
        }
    }

private slots:
    void everyControlOfEveryPanelComesBack()
    {
        QVERIFY(!isMarked());
        const QStringList factory = state();
        QVERIFY(factory.size() > 500);
        changeEverything(1);
        control<QComboBox>("templetBtncomboBox_3")->setCurrentIndex(2);
        control<QRadioButton>("filePushButton")->click();
        control<QComboBox>("templetBtncomboBox")->setCurrentIndex(4);
        QVERIFY(isMarked());
        const QStringList first = state();
        QVERIFY(first != factory);
        saveAs(QStringLiteral("合同"));
        QCOMPARE(list()->currentText(), QStringLiteral("合同"));
        QVERIFY(!isMarked());
        changeEverything(5);
        control<QRadioButton>("scanPushButton")->click();
        control<QComboBox>("templetBtncomboBox_3")->setCurrentIndex(1);
        QVERIFY(isMarked());
        saveAs("two");
        const QStringList second = state();
        QVERIFY(second != first);
        list()->setCurrentText(QStringLiteral("合同"));
        QVERIFY(isMarked());
        control<QPushButton>("loadBtn")->click();
        QCOMPARE(state(), first);
        QVERIFY(!isMarked());
        restart(); // the live files hold it
        QCOMPARE(state(), first);
        list()->setCurrentText("two");
        control<QPushButton>("loadBtn")->click();
        QCOMPARE(state(), second);
        list()->setCurrentText(defaultTemplate);
        control<QPushButton>("loadBtn")->click();
        QCOMPARE(state(), factory);
    }

    void pickingATemplateDoesNotMakeItTheCurrentOne()
    {
        saveAs("picked");
        list()->setCurrentText(defaultTemplate);
        const QByteArray before = fileContent(templateMainFile(defaultTemplate));
        control<QCheckBox>("redfileCheckBox_5")->click();
        control<QPushButton>("applyPushButton")->click();
        QCOMPARE(fileContent(templateMainFile(defaultTemplate)), before);
        QCOMPARE(openSettings(templateMainFile("picked"))->value("Scan_Scan/readFile").toBool(), true);
    }

    void namesAreCheckedAndExistingOnesAskedFor()
    {
        control<QPushButton>("saveBtn")->click();
        auto* dialog = m_window->findChild<TemplateName*>();
        QVERIFY(dialog);
        QSignalSpy sent(dialog, &TemplateName::sendAddTempleteMessage);
        for (const QString& bad : {QString(), QString("a b"), QString("a;touch x"), QString("../a"),
                                   QString(".a"), QString(65, 'a')}) {
            type(*dialog, "nameEdit", bad);
            press(*dialog, QDialogButtonBox::Ok);
            QVERIFY2(message(*dialog).contains(QStringLiteral("模板名称不能包含空格或特殊字符")),
                     qPrintable(bad));
        }
        m_window->newTemplate("a;rm x"); // past the dialog
        QVERIFY(status().contains(QStringLiteral("模板名称不能包含空格或特殊字符")));
        type(*dialog, "nameEdit", "my_scan");
        QVERIFY(message(*dialog).contains('_')); // a warning only
        type(*dialog, "nameEdit", defaultTemplate);
        answer(QMessageBox::No);
        press(*dialog, QDialogButtonBox::Ok);
        QVERIFY(dialog->isVisible() && sent.isEmpty());
        QCOMPARE(listed(), QStringList{defaultTemplate});
        answer(QMessageBox::Yes);
        press(*dialog, QDialogButtonBox::Ok);
        QCOMPARE(sent.size(), 1);
        QCOMPARE(listed(), (QStringList{defaultTemplate, defaultTemplate})); // both mean the same files
        QCOMPARE(list()->currentIndex(), 0);
    }

    void missingAndDamagedFilesAreAskedAbout()
    {
        m_window->newTemplate("my_scan");
        QCOMPARE(list()->currentText(), QStringLiteral("my_scan"));
        m_window->updateTemplete("my");
        QCOMPARE(list()->currentText(), QStringLiteral("my"));
        const QByteArray live = fileContent(paths::mainSettings());
        QString question;
        clickAndAnswer("loadBtn", QMessageBox::No, &question);
        QVERIFY(question.contains(QStringLiteral("不存在")));
        QCOMPARE(fileContent(paths::mainSettings()), live);
        clickAndAnswer("loadBtn", QMessageBox::Yes);
        QVERIFY(!QFile::exists(paths::mainSettings()));
        QCOMPARE(control<QSlider>("lightnessSlider_5")->value(), 0); // missing keys read as 0
        m_window->newTemplate("half");
        QVERIFY(putFile(templateMainFile("half"), "[Scan_Scan]\nlight"));
        clickAndAnswer("loadBtn", QMessageBox::No, &question);
        QVERIFY(question.contains(QStringLiteral("损坏")));
    }

    void deletingLoadsWhatIsLeft()
    {
        QString text;
        clickAndAnswer("delBtn", QMessageBox::Ok, &text);
        QCOMPARE(text, QStringLiteral("请勿删除默认模板"));
        QVERIFY(templateComplete(defaultTemplate));
        control<QSlider>("lightnessSlider_5")->setValue(-40);
        saveAs("gone");
        control<QPushButton>("delBtn")->click();
        QCOMPARE(listed(), QStringList{defaultTemplate});
        QVERIFY(!QFile::exists(templateMainFile("gone")) && !QFile::exists(templatePathFile("gone")));
        QCOMPARE(control<QSlider>("lightnessSlider_5")->value(), 15);
    }

    void theDefaultComesBackToFactoryState()
    {
        auto* lightness = control<QSlider>("lightnessSlider_5");
        lightness->setValue(-40);
        control<QPushButton>("applyPushButton")->click();
        const auto restore = [this](QMessageBox::StandardButton button) {
            answer(button);
            control<QPushButton>("templateMenuBtn")->menu()->actions().constLast()->trigger();
        };
        restore(QMessageBox::No);
        QCOMPARE(lightness->value(), -40);
        restore(QMessageBox::Yes);
        QCOMPARE(lightness->value(), 15);
        QVERIFY(!isMarked());
    }

    void theTemplateToStartWith()
    {
        control<QSlider>("lightnessSlider_5")->setValue(-40);
        saveAs("x-first"); // after the default in the listing
        for (const auto& [index, lightness] : {std::pair{0, 15}, std::pair{1, -40}, std::pair{99, -40}}) {
            m_window.reset();
            QVERIFY(loadTemplate(defaultTemplate));
            openMainSettings()->setValue("paraTemplete", index);
            restart();
            QCOMPARE(list()->currentIndex(), qMin(index, 1));
            QCOMPARE(control<QSlider>("lightnessSlider_5")->value(), lightness);
        }
        QVERIFY(QFile::remove(templatePathFile("x-first")) && putFile(templatePathFile("x-first"), ""));
        openMainSettings()->setValue("paraTemplete", 1); // damaged now: nothing is asked, the live files stay
        restart();
        QVERIFY(QFile::exists(paths::mainSettings()));
    }

    void importingAsksForProgramsAndName()
    {
        m_window->scanAddApp("tool", "/usr/bin/tool %f");
        control<QPushButton>("applyPushButton")->click();
        const QString file = installRoot() + "handed.zip";
        saveAs("handed");
        QVERIFY(TemplateArchive::ofTemplate("handed").write(file));
        control<QPushButton>("delBtn")->click();
        QString question;
        answer(QMessageBox::No, &question);
        QVERIFY(QMetaObject::invokeMethod(m_window.get(), "importTemplateFile", Q_ARG(QString, file)));
        QVERIFY(question.contains("/usr/bin/tool"));
        QVERIFY(!m_window->findChild<TemplateName*>());
        answer(QMessageBox::Yes);
        QVERIFY(QMetaObject::invokeMethod(m_window.get(), "importTemplateFile", Q_ARG(QString, file)));
        auto* dialog = m_window->findChild<TemplateName*>();
        QVERIFY(dialog);
        QCOMPARE(control<QLineEdit>(*dialog, "nameEdit")->text(), QStringLiteral("handed"));
        press(*dialog, QDialogButtonBox::Ok);
        QCOMPARE(listed(), (QStringList{defaultTemplate, "handed"}));
        QVERIFY(templateComplete("handed"));
        QVERIFY(putFile(file, "no zip"));
        QVERIFY(QMetaObject::invokeMethod(m_window.get(), "importTemplateFile", Q_ARG(QString, file)));
        QVERIFY(status().contains("handed.zip"));
    }

    void aReadOnlyOrMissingFolderIsTold()
    {
        QVERIFY(QDir(paths::templateFolder()).removeRecursively());
        m_window->newTemplate("again"); // the folder is made
        QVERIFY(templateComplete("again"));
        QVERIFY(QDir(paths::templateFolder()).removeRecursively());
        QString folder = paths::templateFolder();
        folder.chop(1);
        QVERIFY(putFile(folder, "in the way"));
        m_window->newTemplate("never");
        QVERIFY(status().contains(QStringLiteral("无法")));
        QVERIFY(!listed().contains("never"));
        control<QPushButton>("applyPushButton")->click();
        QVERIFY(QFile::exists(paths::mainSettings()));
    }

    void twoHundredTemplates()
    {
        const QByteArray main = fileContent(paths::mainSettings());
        const QByteArray path = fileContent(paths::pathSettings());
        for (int i = 0; i < 200; ++i)
            QVERIFY(putTemplate(QStringLiteral("t%1").arg(i), main, path));
        m_window->updateTemplete("t150");
        QCOMPARE(list()->count(), 201);
        QCOMPARE(list()->currentText(), QStringLiteral("t150"));
        QVERIFY(list()->width() < m_window->width() / 3);
        control<QPushButton>("loadBtn")->click();
        QVERIFY(status().contains("t150"));
    }
};

QTEST_MAIN(WindowTemplatesTest)
#include "tst_windowtemplates.moc"
