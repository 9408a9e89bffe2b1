// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QTabWidget>
#include <QtTest>

// Everything that a window can say, for a search in it: each text with the class that says it.
inline QStringList saidTexts(const QObject& object)
{
    QStringList texts;
    const auto add = [&](const QString& text) {
        if (!text.isEmpty())
            texts << QString("%1 %2: %3").arg(object.metaObject()->className(), object.objectName(), text);
    };
    for (int i = 0; i < object.metaObject()->propertyCount(); ++i) {
        const QMetaProperty property = object.metaObject()->property(i);
        if (property.type() == QVariant::String && qstrcmp(property.name(), "styleSheet") != 0)
            add(property.read(&object).toString());
    }
    const auto addItems = [&add](const QAbstractItemModel* model) {
        for (int row = 0; model && row < model->rowCount(); ++row)
            for (const int role : {Qt::DisplayRole, Qt::ToolTipRole})
                add(model->index(row, 0).data(role).toString());
    };
    if (const auto* combo = qobject_cast<const QComboBox*>(&object))
        addItems(combo->model());
    if (const auto* tabs = qobject_cast<const QTabWidget*>(&object))
        for (int tab = 0; tab < tabs->count(); ++tab)
            add(tabs->tabText(tab) + tabs->tabToolTip(tab));
    if (const auto* header = qobject_cast<const QHeaderView*>(&object))
        for (int section = 0; header->model() && section < header->count(); ++section)
            add(header->model()->headerData(section, header->orientation()).toString());
    return texts;
}

// No Chinese in what a window shows, explains and tells a screen reader.
inline void checkEnglish(const QWidget& window)
{
    static const QRegularExpression chinese(
        QStringLiteral("[\\x{3001}-\\x{303f}\\x{3400}-\\x{9fff}\\x{ff00}-\\x{ffef}]"));
    QList<const QObject*> speakers{&window};
    for (const QObject* child : window.findChildren<QObject*>()) {
        const auto* widget = qobject_cast<const QWidget*>(child);
        if (qobject_cast<const QAction*>(child) || (widget && widget->isVisibleTo(&window)))
            speakers << child;
    }
    for (const QObject* speaker : speakers)
        for (const QString& text : saidTexts(*speaker))
            QVERIFY2(!text.contains(chinese), qPrintable(text));
}
