// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/englishtexts.h"
#include "app/windowfixture.h"
#include "language/language.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>

namespace {

// These start a job, another program, end the window or lead to another function instead of opening
// something.
bool isLeftAlone(const QAbstractButton* button)
{
    static const QStringList names{"scanButton",          "confirmPushButton", "cancelPushButton",
                                   "helpPushButton",      "applyPushButton",   "previewPushButton",
                                   "previewPushButton_5", "loadBtn",           "delBtn"};
    const bool opens = qobject_cast<const QPushButton*>(button) || qobject_cast<const QToolButton*>(button);
    return !opens || button->isCheckable() || names.contains(button->objectName()) ||
           qobject_cast<const QDialogButtonBox*>(button->parent());
}

// The toolkit's own dialogs are not ours to check.
bool isForeign(const QWidget* window)
{
    return qobject_cast<const QMessageBox*>(window) || qobject_cast<const QFileDialog*>(window) ||
           qobject_cast<const QColorDialog*>(window);
}

void checkLabels(const QWidget& window)
{
    const QStringList told{"nextCaption", "statusNameLabel"}; // what follows is no control
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        const bool caption = label->isVisible() && label->window() == &window &&
                             label->text().endsWith(QLatin1Char(':')) && !told.contains(label->objectName());
        QVERIFY2(!caption || label->buddy(),
                 qPrintable(QString(window.metaObject()->className()) + ": no buddy of " + label->text()));
    }
}

// No two things that are on show at once answer to one access key.
void checkAccessKeys(const QWidget& window)
{
    QMultiMap<QString, QString> keys;
    const auto add = [&keys](const QString& text) {
        const QString key = QKeySequence::mnemonic(text).toString();
        if (!key.isEmpty())
            keys.insert(key, text);
    };
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &window || widget->inherits("QLineEdit"))
            continue;
        add(widget->property("text").toString());
        add(widget->property("title").toString());
        if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
            for (int tab = 0; tab < tabs->count(); ++tab)
                add(tabs->tabText(tab));
    }
    for (const QString& key : keys.uniqueKeys())
        QVERIFY2(keys.count(key) == 1,
                 qPrintable(QString("%1: %2: %3")
                                .arg(window.metaObject()->className(), key, keys.values(key).join(", "))));
}

// Texts have the room that they need.
bool hasRoom(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        if (label->wordWrap())
            return label->height() >= label->heightForWidth(label->width());
        const bool elided = label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
        return (elided || label->width() >= label->sizeHint().width()) &&
               label->height() >= label->minimumSizeHint().height();
    }
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    if (!button || button->text().isEmpty())
        return true;
    const int text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width();
    return button->width() >= text + (button->isCheckable() ? 16 : 4); // the mark, the frame
}

void checkRoom(const QWidget& window)
{
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &window)
            continue;
        QVERIFY2(hasRoom(*widget), qPrintable(QString("%1: %2 has %3 x %4")
                                                  .arg(window.metaObject()->className(), widget->objectName())
                                                  .arg(widget->width())
                                                  .arg(widget->height())));
    }
}

// With QWD200_PICTURES=DIR every window leaves a picture there, one for each of its tabs, for someone to look
// at; QT_SCALE_FACTOR=2 and QWD200_DARK=1 show them on other desktops.
void keepPicture(QWidget& window, const QString& name)
{
    const QString folder = qEnvironmentVariable("QWD200_PICTURES");
    if (folder.isEmpty())
        return;
    QTest::qWait(500); // previews come from a worker
    QVERIFY(QDir().mkpath(folder) && window.grab().save(folder + '/' + name + ".png"));
}

void useDarkPalette()
{
    QPalette dark(QColor(53, 53, 53), QColor(53, 53, 53));
    dark.setColor(QPalette::Base, QColor(25, 25, 25));
    dark.setColor(QPalette::Highlight, QColor(61, 174, 233));
    dark.setColor(QPalette::Link, QColor(61, 174, 233));
    dark.setColor(QPalette::ToolTipBase, dark.base().color());
    dark.setColor(QPalette::ToolTipText, dark.text().color());
    QApplication::setPalette(dark);
}

// The tabs of what is on show; null: none.
QTabWidget* shownTabs(const QWidget& part)
{
    for (QTabWidget* tabs : part.findChildren<QTabWidget*>())
        if (tabs->isVisible())
            return tabs;
    return nullptr;
}

} // namespace

// Walks through the program as someone without a mouse would: both pages with every function, and whatever
// opens behind a button of theirs, and behind the buttons in there. Everything must have a name and be
// reached by the Tab key. What a later version adds is found by itself.
class TestEveryWindow : public WindowFixture
{
    Q_OBJECT

private:
    QStringList m_seen; // class name and content of the windows that were checked
    QSet<QAbstractButton*> m_pressed;

    // Checks what the window shows of itself, tab by tab and those within them, and all that opens behind it
    // there. `part`: where tabs are looked for.
    void check(QWidget& window, const QWidget& part, const QString& name)
    {
        if (QTabWidget* tabs = shownTabs(part)) {
            for (int page = 0; page < tabs->count(); ++page) {
                tabs->setCurrentIndex(page);
                check(window, *tabs->currentWidget(), name + QString("-%1").arg(page));
            }
            return;
        }
        checkReachable(window);
        checkLabels(window);
        checkAccessKeys(window);
        checkRoom(window);
        if (language::isEnglish())
            checkEnglish(window);
        keepPicture(window, name);
        openAllBehind(window);
    }

    void visit(QWidget* window)
    {
        // With more or less in it, it is another one: both sides of a sheet, a document's settings.
        int shown = 0;
        for (const QWidget* widget : window->findChildren<QWidget*>())
            shown += widget->isVisible() ? 1 : 0;
        const QString name = QString("%1 %2").arg(window->metaObject()->className()).arg(shown);
        if (!isForeign(window) && !m_seen.contains(name)) {
            m_seen << name;
            check(*window, *window, name);
        }
        if (auto* dialog = qobject_cast<QDialog*>(window))
            dialog->reject();
        else
            window->close();
    }

    // Presses a button; of a menu that opens, chooses the given entry. Returns the number of its entries.
    int pressAndVisit(QAbstractButton* button, int entry)
    {
        QWidget* const before = QApplication::activeModalWidget();
        int entries = 0;
        bool visiting = false;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            if (visiting)
                return;
            if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
                entries = menu->actions().size();
                QAction* action = menu->actions().value(entry);
                if (!action || action->isSeparator() || !action->isEnabled()) {
                    menu->close();
                    return;
                }
                menu->setActiveAction(action);
                // not from here: while this timer's slot runs, it does not fire for what the entry opens
                QTimer::singleShot(0, menu, [menu] {
                    if (menu->isVisible())
                        QTest::keyClick(menu, Qt::Key_Return);
                });
                return;
            }
            QWidget* now = QApplication::activeModalWidget();
            if (!now || now == before)
                return;
            visiting = true;
            visit(now);
            visiting = false;
        });
        timer.start(20);
        button->click();
        timer.stop();
        for (QWidget* now; (now = QApplication::activeModalWidget()) && now != before;)
            visit(now); // opened without waiting for it
        for (QWidget* other : QApplication::topLevelWidgets())
            if (other->isVisible() && other != m_window.get() && !other->isModal() && other->isWindow() &&
                other != button->window() && other->windowType() == Qt::Window)
                visit(other);
        return entries;
    }

    void openAllBehind(QWidget& window)
    {
        for (const QPointer<QAbstractButton> button : window.findChildren<QAbstractButton*>()) {
            if (!button || !button->isVisible() || !button->isEnabled() || isLeftAlone(button))
                continue;
            if (&window == m_window.get()) { // what all functions have is pressed once
                if (m_pressed.contains(button))
                    continue;
                m_pressed << button;
            }
            const int entries = pressAndVisit(button, 0);
            for (int entry = 1; entry < entries; ++entry)
                pressAndVisit(button, entry);
        }
    }

private slots:
    void initTestCase()
    {
        WindowFixture::initTestCase();
        language::set(*qobject_cast<QApplication*>(qApp), {});
        useUsualFont();
        if (qEnvironmentVariableIsSet("QWD200_DARK"))
            useDarkPalette();
    }

    void everyPageAndWhatOpensBehindIt()
    {
        for (const char* page : {"scanPushButton", "filePushButton"}) {
            click(*m_window, page);
            const bool scanPage = qstrcmp(page, "scanPushButton") == 0;
            auto* functions = control<QComboBox>(scanPage ? "templetBtncomboBox_3" : "templetBtncomboBox");
            for (int index = 0; index < functions->count(); ++index) {
                functions->setCurrentIndex(index);
                if (!scanPage) // both sides: nothing on the page is disabled
                    for (QRadioButton* side : m_window->findChildren<QRadioButton*>())
                        if (side->isVisible() && side->objectName().startsWith("double"))
                            side->click();
                check(*m_window, *m_window, QString("%1 %2").arg(page).arg(index));
            }
        }
        m_seen.sort();
        qInfo().noquote() << "windows:" << m_seen.join(", ");
        for (const char* known :
             {"imgmendpanel", "NoiseSet", "PaperSizeSet", "OutputSet", "CompressSet", "RotateSet", "saveSet",
              "fileNameSet", "wholesetpanel", "append", "copyfaxproperty"})
            QVERIFY2(!m_seen.filter(QRegularExpression(QString("^%1 ").arg(known))).isEmpty(), known);
    }
};

QTEST_MAIN(TestEveryWindow)
#include "tst_everywindow.moc"
