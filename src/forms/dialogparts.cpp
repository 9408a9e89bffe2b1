// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/dialogparts.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <algorithm>

namespace dialogparts {

void addAccessKey(QWidget* control, const QKeySequence& key)
{
    auto* shortcut = new QShortcut(key, control->window());
    QObject::connect(shortcut, &QShortcut::activated, control, [control] {
        if (!control->isEnabled())
            return;
        control->setFocus(Qt::ShortcutFocusReason);
        if (auto* button = qobject_cast<QAbstractButton*>(control))
            button->click();
    });
    const QString name = key.toString(QKeySequence::NativeText);
    const QString tip = control->toolTip();
    control->setToolTip(tip.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(tip, name));
}

void useChineseButtons(QDialogButtonBox* box)
{
    if (QPushButton* ok = box->button(QDialogButtonBox::Ok))
        ok->setText(QCoreApplication::translate("dialogparts", "确定(&O)"));
    if (QPushButton* cancel = box->button(QDialogButtonBox::Cancel))
        cancel->setText(QCoreApplication::translate("dialogparts", "取消(&C)"));
    if (QPushButton* apply = box->button(QDialogButtonBox::Apply))
        apply->setText(QCoreApplication::translate("dialogparts", "应用(&A)"));
    if (QPushButton* defaults = box->button(QDialogButtonBox::RestoreDefaults))
        defaults->setText(QCoreApplication::translate("dialogparts", "默认值(&D)"));
}

bool hasControlCharacters(const QString& text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
}

QString prefixProblem(const QString& prefix)
{
    // File names end at 255 bytes; the stamp, the counter, a suffix and the extension need the rest.
    constexpr int mostBytes = 180;
    if (prefix.contains(QLatin1Char('/')))
        return QCoreApplication::translate("dialogparts", "前缀中不能有“/”。");
    if (hasControlCharacters(prefix))
        return QCoreApplication::translate("dialogparts", "前缀中不能有控制字符。");
    if (prefix.startsWith(QLatin1Char('.')))
        return QCoreApplication::translate("dialogparts", "前缀不能以“.”开头，否则文件会被隐藏。");
    if (prefix.toUtf8().size() > mostBytes)
        return QCoreApplication::translate("dialogparts", "前缀太长。");
    return QString();
}

QString cannotStore()
{
    return QCoreApplication::translate("dialogparts", "设置无法保存，请检查磁盘空间和权限。");
}

void styleHelp(QLabel* label)
{
    label->setWordWrap(true);
    QPalette palette = label->palette();
    QColor color = palette.color(QPalette::WindowText);
    color.setAlphaF(0.72);
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::WindowText, color);
    label->setPalette(palette);
}

void showMessage(QLabel* label, const QString& text)
{
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    label->setText(text.isEmpty() ? QString() : QStringLiteral("⚠ ") + text);
    label->setVisible(!text.isEmpty());
}

void refuse(QLabel* label, const QString& text, QWidget* field)
{
    showMessage(label, text);
    field->setFocus(Qt::OtherFocusReason);
    if (auto* edit = qobject_cast<QLineEdit*>(field))
        edit->selectAll();
}

QString chooseFolder(QWidget* parent, const QString& wanted)
{
    QString start = wanted;
    while (!QFileInfo(start).isDir() && start.length() > 1)
        start = QFileInfo(start).path();
    return QFileDialog::getExistingDirectory(
        parent, QCoreApplication::translate("dialogparts", "选择保存文件夹"), start);
}

} // namespace dialogparts
