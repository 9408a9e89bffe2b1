// SPDX-License-Identifier: GPL-3.0-or-later
#include "searchbar.h"

#include <QHBoxLayout>
#include <QKeyEvent>

namespace reader {

SearchBar::SearchBar(QWidget* parent)
    : QWidget(parent), m_text(new QLineEdit(this)), m_state(new QLabel(this)),
      m_previous(button(tr("上一个"), tr("上一处（Shift+F3）"))),
      m_next(button(tr("下一个"), tr("下一处（F3）")))
{
    auto* label = new QLabel(tr("查找(&N)："), this);
    label->setBuddy(m_text);
    m_text->setAccessibleName(tr("要查找的文字"));
    m_text->setClearButtonEnabled(true);
    m_text->setMaxLength(200);
    m_text->setMinimumWidth(160);
    m_text->setMaximumWidth(360);
    m_state->setAccessibleName(tr("查找结果"));
    QToolButton* end = button(tr("关闭"), tr("关闭查找栏（Esc）"));

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    for (QWidget* part : std::initializer_list<QWidget*>{label, m_text, m_previous, m_next, m_state})
        row->addWidget(part, part == m_text ? 1 : 0);
    row->addStretch();
    row->addWidget(end);
    setTabOrder(m_text, m_previous);
    setTabOrder(m_previous, m_next);
    setTabOrder(m_next, end);

    constexpr int pauseMs = 250;
    m_pause.setSingleShot(true);
    m_pause.setInterval(pauseMs);
    connect(&m_pause, &QTimer::timeout, this, &SearchBar::typed);
    connect(m_text, &QLineEdit::textChanged, &m_pause, QOverload<>::of(&QTimer::start));
    connect(m_previous, &QToolButton::clicked, this, [this] { step(false); });
    connect(m_next, &QToolButton::clicked, this, [this] { step(true); });
    connect(end, &QToolButton::clicked, this, &SearchBar::close);
    setState(0, 0, 0, 0, true);
}

QToolButton* SearchBar::button(const QString& text, const QString& tip)
{
    auto* made = new QToolButton(this);
    made->setText(text);
    made->setToolTip(tip);
    made->setAutoRaise(true);
    made->setFocusPolicy(Qt::TabFocus);
    return made;
}

void SearchBar::open()
{
    const bool wasHidden = isHidden();
    show();
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
    if (wasHidden && !wanted().isEmpty())
        emit wantedChanged(wanted());
}

void SearchBar::close()
{
    if (isHidden())
        return;
    m_pause.stop();
    hide();
    emit wantedChanged({});
    emit closed();
}

void SearchBar::typed()
{
    m_pause.stop();
    emit wantedChanged(wanted());
}

// The first Enter after the typing starts the search, the others go on from place to place.
void SearchBar::step(bool forward)
{
    if (m_pause.isActive())
        typed();
    else
        emit stepped(forward);
}

void SearchBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        step(!(event->modifiers() & Qt::ShiftModifier));
    else
        QWidget::keyPressEvent(event);
}

void SearchBar::setState(int number, int count, int pagesDone, int pages, bool complete)
{
    QString text;
    if (count > 0)
        text = tr("第 %1 处，共 %2 处").arg(number).arg(count);
    if (!wanted().isEmpty() && pagesDone < pages)
        text = (text.isEmpty() ? tr("正在查找") : text) + tr("（%1 / %2 页）").arg(pagesDone).arg(pages);
    else if (!wanted().isEmpty() && count == 0)
        text = tr("没有找到");
    if (!complete)
        text += tr("（太多，已停止）");
    m_state->setText(text);
    m_previous->setEnabled(count > 0);
    m_next->setEnabled(count > 0);
}

} // namespace reader
