// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/functionpanel.h"

#include <QLabel>
#include <QVBoxLayout>

FunctionPanel::FunctionPanel(const QString& title, const QString& description, QWidget* parent) : QWidget(parent)
{
    auto* layout = new QVBoxLayout(this);
    auto* heading = new QLabel(title, this);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    layout->addWidget(heading);
    auto* line = new QLabel(description, this);
    line->setWordWrap(true);
    layout->addWidget(line);
    layout->addStretch(1);
}
