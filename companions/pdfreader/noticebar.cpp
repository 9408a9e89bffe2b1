// SPDX-License-Identifier: GPL-3.0-or-later
#include "noticebar.h"

#include <QHBoxLayout>

namespace reader {

NoticeBar::NoticeBar(QWidget* parent)
    : QWidget(parent), m_text(new QLabel(this)), m_action(new QPushButton(this))
{
    auto* close = new QPushButton(tr("忽略"), this);
    close->setAutoDefault(false);
    m_text->setWordWrap(true);
    m_text->setAccessibleName(tr("通知"));
    m_text->setTextFormat(Qt::PlainText);
    setAutoFillBackground(true);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, colours.color(QPalette::ToolTipBase));
    colours.setColor(QPalette::WindowText, colours.color(QPalette::ToolTipText));
    setPalette(colours);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    row->addWidget(m_text, 1);
    row->addWidget(m_action);
    row->addWidget(close);
    connect(close, &QPushButton::clicked, this, &QWidget::hide);
    connect(m_action, &QPushButton::clicked, this, [this] {
        hide();
        emit actionChosen();
    });
}

void NoticeBar::tell(const QString& text, const QString& action)
{
    m_text->setText(text);
    m_action->setText(action);
    m_action->setVisible(!action.isEmpty());
    show();
}

} // namespace reader
