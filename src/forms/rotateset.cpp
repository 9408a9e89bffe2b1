// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/rotateset.h"

#include "forms/dialogparts.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QPainter>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

using Side = ScanPageLogic::Side;

constexpr int kTurns = 4;

// A sheet with a letter on it, turned as the choice says.
QIcon turnedSheet(const QWidget* widget, double degrees)
{
    constexpr int side = 28;
    QPixmap pixmap(QSize(side, side) * widget->devicePixelRatioF());
    pixmap.setDevicePixelRatio(widget->devicePixelRatioF());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(side / 2.0, side / 2.0);
    painter.rotate(degrees);
    const QRectF sheet(-9, -12, 18, 24);
    painter.setPen(widget->palette().color(QPalette::Text));
    painter.setBrush(widget->palette().base());
    painter.drawRect(sheet);
    QFont font = widget->font();
    font.setPixelSize(14);
    painter.setFont(font);
    painter.drawText(sheet, Qt::AlignCenter,
                     RotateSet::tr("文", "the letter on a sheet that shows its turn"));
    return QIcon(pixmap);
}

} // namespace

RotateSet::RotateSet(const RotationChoice& choice, ScanSides sides, QWidget* parent)
    : SettingsDialog(tr("页面旋转"),
                     tr("扫描后的页面可以按文字方向自动转正，也可以每页都固定旋转同样的角度。"), QString(),
                     parent),
      m_automatic(new QRadioButton(tr("自动判断方向(&A)"), this)),
      m_fixed(new QRadioButton(tr("固定旋转(&F)"), this))
{
    m_automatic->setObjectName(QStringLiteral("automaticButton"));
    m_automatic->setToolTip(tr("识别页面上的少量文字，把页面转正；没有文字的页面保持不变"));
    m_fixed->setObjectName(QStringLiteral("fixedButton"));
    m_fixed->setToolTip(tr("每一页都按下面选择的角度旋转"));
    body()->addWidget(m_automatic);
    body()->addWidget(m_fixed);
    auto* row = new QHBoxLayout;
    m_front = addTurns(row, Side::Front);
    m_back = addTurns(row, Side::Back);
    m_front.box->setVisible(sides != ScanSides::Back);
    m_back.box->setVisible(sides != ScanSides::Front);
    body()->addLayout(row);
    body()->addStretch(1);
    show(choice);
    showStored();
}

RotateSet::Turns RotateSet::addTurns(QBoxLayout* row, Side side)
{
    const bool front = side == Side::Front;
    const Turns turns{new QGroupBox(front ? tr("正面") : tr("反面"), this), new QButtonGroup(this)};
    turns.box->setObjectName(front ? QStringLiteral("frontGroup") : QStringLiteral("backGroup"));
    const QString tips[kTurns] = {tr("不旋转页面"), tr("把页面向左（逆时针）转 90 度"),
                                  tr("把页面倒转 180 度"), tr("把页面向右（顺时针）转 90 度")};
    auto* column = new QVBoxLayout(turns.box);
    for (int code = 0; code < kTurns; ++code) {
        auto* button = new QRadioButton(ScanPageLogic::rotationText(side, code), turns.box);
        button->setObjectName(
            (front ? QStringLiteral("frontTurn%1") : QStringLiteral("backTurn%1")).arg(code));
        button->setToolTip(tips[code]);
        button->setIcon(turnedSheet(this, ScanPageLogic::clockwiseDegrees(code)));
        button->setIconSize(QSize(28, 28));
        dialogparts::addAccessKey(button, Qt::ALT | (Qt::Key_1 + code + (front ? 0 : kTurns)));
        turns.buttons->addButton(button, code);
        column->addWidget(button);
    }
    row->addWidget(turns.box);
    return turns;
}

void RotateSet::show(const RotationChoice& choice)
{
    (choice.automatic ? m_automatic : m_fixed)->setChecked(true);
    m_front.buttons->button(qBound(0, choice.front, kTurns - 1))->setChecked(true);
    m_back.buttons->button(qBound(0, choice.back, kTurns - 1))->setChecked(true);
}

RotationChoice RotateSet::choice() const
{
    return {m_automatic->isChecked(), m_front.buttons->checkedId(), m_back.buttons->checkedId()};
}

void RotateSet::setOwnDefaults()
{
    show({});
}

void RotateSet::valuesChanged()
{
    m_front.box->setEnabled(m_fixed->isChecked());
    m_back.box->setEnabled(m_fixed->isChecked());
}
