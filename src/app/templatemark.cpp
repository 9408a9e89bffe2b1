// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/templatemark.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPainter>
#include <QSlider>

namespace {

constexpr int kSoonMs = 250;
constexpr int kIconSide = 16;

// A dot in the colour of the text; an empty picture of the same size for the others, so that all names stand
// in one line.
QIcon dot(const QWidget* list, bool visible)
{
    const qreal ratio = list->devicePixelRatioF();
    QPixmap picture(QSize(kIconSide, kIconSide) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    if (visible) {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(list->palette().text());
        painter.drawEllipse(QRectF(4, 4, 8, 8));
    }
    return picture;
}

} // namespace

TemplateMark::TemplateMark(QWidget* window, QComboBox* list, std::function<bool(const QString&)> differs)
    : QObject(window), m_window(window), m_list(list), m_differs(std::move(differs))
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(kSoonMs);
    connect(&m_soon, &QTimer::timeout, this, &TemplateMark::look);
    window->installEventFilter(this);
    for (QWidget* control : window->findChildren<QWidget*>())
        follow(control);
}

void TemplateMark::follow(QWidget* control)
{
    if (auto* button = qobject_cast<QAbstractButton*>(control))
        connect(button, &QAbstractButton::toggled, this, &TemplateMark::lookSoon);
    else if (auto* combo = qobject_cast<QComboBox*>(control))
        connect(combo, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TemplateMark::lookSoon);
    else if (auto* slider = qobject_cast<QSlider*>(control))
        connect(slider, &QSlider::valueChanged, this, &TemplateMark::lookSoon);
    else if (auto* edit = qobject_cast<QLineEdit*>(control))
        connect(edit, &QLineEdit::textChanged, this, &TemplateMark::lookSoon);
}

bool TemplateMark::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_window &&
        (event->type() == QEvent::WindowActivate || event->type() == QEvent::PaletteChange))
        lookSoon();
    return QObject::eventFilter(watched, event);
}

void TemplateMark::look()
{
    const QString name = m_list->currentText();
    m_marked = !name.isEmpty() && m_differs(name);
    const QIcon none = dot(m_list, false);
    for (int i = 0; i < m_list->count(); ++i)
        m_list->setItemIcon(i, none);
    if (m_marked)
        m_list->setItemIcon(m_list->currentIndex(), dot(m_list, true));
    const QString tip = m_marked ? tr("当前设置与模板“%1”不同。点“载入”恢复，点“保存”另存。").arg(name)
                                 : tr("选择模板后点“载入”，用它的设置替换当前设置");
    m_list->setToolTip(tip);
    m_list->setAccessibleDescription(m_marked ? tip : QString());
}
