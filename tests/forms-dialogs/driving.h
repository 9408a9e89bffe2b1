// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSet>
#include <QTimer>
#include <QtTest>
#include <functional>

// Working on a dialog as a user does: by keys and clicks on the controls that can be reached.

template <typename T>
T* control(const QWidget& dialog, const char* name)
{
    T* found = dialog.findChild<T*>(QLatin1String(name));
    if (!found)
        qFatal("no control %s", name);
    return found;
}

inline void click(QWidget& dialog, const char* name)
{
    auto* button = control<QAbstractButton>(dialog, name);
    if (!button->isEnabled())
        qFatal("%s is disabled", name);
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Space);
}

inline void type(QWidget& dialog, const char* name, const QString& text)
{
    auto* edit = control<QLineEdit>(dialog, name);
    edit->setFocus();
    edit->selectAll();
    if (text.isEmpty())
        QTest::keyClick(edit, Qt::Key_Delete);
    else if (text.toLatin1() == text.toUtf8())
        QTest::keyClicks(edit, text);
    else
        edit->insert(text); // what an input method does
}

inline void pick(QWidget& dialog, const char* name, const QString& item)
{
    auto* combo = control<QComboBox>(dialog, name);
    for (int tries = combo->count(); tries > 0 && combo->currentIndex() > 0; --tries)
        QTest::keyClick(combo, Qt::Key_Up);
    for (int tries = combo->count(); tries > 0 && combo->currentText() != item; --tries)
        QTest::keyClick(combo, Qt::Key_Down);
    QCOMPARE(combo->currentText(), item);
}

inline void press(QDialog& dialog, QDialogButtonBox::StandardButton which)
{
    QTest::mouseClick(control<QDialogButtonBox>(dialog, "buttonBox")->button(which), Qt::LeftButton);
}

inline QString message(const QDialog& dialog)
{
    const auto* label = control<QLabel>(dialog, "messageLabel");
    return label->isVisibleTo(&dialog) ? label->text() : QString();
}

inline void open(QWidget& window)
{
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

// Works on the modal dialog of type D that the next call opens.
template <typename D>
void inModal(const std::function<void(D&)>& work)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, work, tries = 0]() mutable {
        auto* dialog = qobject_cast<D*>(QApplication::activeModalWidget());
        if (!dialog && ++tries < 400)
            return;
        timer->deleteLater();
        timer->stop();
        if (!dialog)
            qFatal("no dialog opened");
        const QPointer<D> worked = dialog;
        work(*dialog);
        if (worked && worked->isVisible()) // a check has failed in there
            worked->close();
    });
    timer->start(5);
}

// What an input shows, as text to compare.
inline QString valueOf(const QWidget& input)
{
    const bool typed = input.inherits("QComboBox") && input.property("editable").toBool();
    for (const char* property : {typed ? "currentText" : "currentIndex", "value", "checked", "text"})
        if (input.metaObject()->indexOfProperty(property) >= 0)
            return input.property(property).toString();
    return {};
}

// 9 point at the 96 dpi of a usual screen, whatever the platform plugin counts as an inch.
inline void useUsualFont()
{
    QFont font(QStringLiteral("Noto Sans CJK SC"));
    font.setPixelSize(12);
    QApplication::setFont(font);
}

// The controls that the Tab key leads to, from the one that has the focus on.
inline QVector<QWidget*> tabOrder(QWidget& window)
{
    QVector<QWidget*> reached;
    for (int i = 0; i < 100; ++i) {
        QWidget* focused = QApplication::focusWidget();
        if (focused && !reached.contains(focused))
            reached << focused;
        QTest::keyClick(&window, Qt::Key_Tab);
    }
    return reached;
}

// Checks that every control that takes input is reached by the Tab key and has a name that a screen reader
// can say.
inline void checkReachable(QWidget& window)
{
    window.activateWindow(); // a dialog that has just opened has no focus yet
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTRY_COMPARE(QApplication::activeWindow(), &window);
    if (!QApplication::focusWidget())
        window.setFocus();
    const QVector<QWidget*> reached = tabOrder(window);
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        bool input = false;
        for (const char* type :
             {"QAbstractButton", "QLineEdit", "QComboBox", "QAbstractSpinBox", "QSlider", "QGraphicsView"})
            input = input || widget->inherits(type);
        const bool part = widget->objectName().startsWith(QLatin1String("qt_"));
        if (!input || part || !widget->isEnabled() || !widget->isVisible() || widget->window() != &window)
            continue;
        const QString name = QString("%1: %2 %3")
                                 .arg(window.metaObject()->className(), widget->objectName(),
                                      widget->metaObject()->className());
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
        QVERIFY2(face && !face->text(QAccessible::Name).isEmpty(),
                 qPrintable(name + " has no accessible name"));
        // the Tab key reaches one button of a radio group, the arrow keys the others
        QVERIFY2(reached.contains(widget) || reached.contains(widget->focusProxy()) ||
                     widget->inherits("QRadioButton"),
                 qPrintable(name + QString(" is not reached by Tab, but %1 others").arg(reached.size())));
    }
}
