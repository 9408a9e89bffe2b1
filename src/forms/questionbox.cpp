// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/questionbox.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace questionbox {

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("questionbox", source);
}

} // namespace

bool ask(QWidget* parent, const QString& question)
{
    QMessageBox box(QMessageBox::Question, text("提示"), question, QMessageBox::Yes | QMessageBox::No,
                    parent);
    box.setTextFormat(Qt::PlainText);
    box.button(QMessageBox::Yes)->setText(text("是(&Y)"));
    box.button(QMessageBox::No)->setText(text("否(&N)"));
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void inform(QWidget* parent, const QString& message)
{
    QMessageBox box(QMessageBox::Information, text("提示"), message, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.button(QMessageBox::Ok)->setText(text("确定(&O)"));
    box.exec();
}

} // namespace questionbox
