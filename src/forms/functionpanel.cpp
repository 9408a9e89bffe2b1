// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/functionpanel.h"

#include <QLabel>
#include <QVBoxLayout>

FunctionPanel::FunctionPanel(const QString& title, const QString& description, QWidget* parent)
    : QWidget(parent), m_layout(new QVBoxLayout(this))
{
    m_layout->setAlignment(Qt::AlignTop);
    auto* heading = new QLabel(title, this);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    m_layout->addWidget(heading);
    auto* line = new QLabel(description, this);
    line->setWordWrap(true);
    m_layout->addWidget(line);
}

void FunctionPanel::addContent(QWidget* content, int stretch)
{
    if (stretch > 0)
        m_layout->setAlignment({});
    m_layout->addWidget(content, stretch);
}
