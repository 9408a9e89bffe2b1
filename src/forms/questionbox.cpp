// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/questionbox.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace questionbox {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(questionbox)
};

} // namespace

bool ask(QWidget* parent, const QString& question)
{
    QMessageBox box(QMessageBox::Question, Texts::tr("提示"), question, QMessageBox::Yes | QMessageBox::No,
                    parent);
    box.setTextFormat(Qt::PlainText);
    box.button(QMessageBox::Yes)->setText(Texts::tr("是(&Y)"));
    box.button(QMessageBox::No)->setText(Texts::tr("否(&N)"));
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

void inform(QWidget* parent, const QString& message)
{
    QMessageBox box(QMessageBox::Information, Texts::tr("提示"), message, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.button(QMessageBox::Ok)->setText(Texts::tr("确定(&O)"));
    box.exec();
}

} // namespace questionbox
