// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/rotateset.h"

#include "forms/dialogparts.h"
#include "forms/scanpagelogic.h"
#include "ui_rotateset.h"

#include <QButtonGroup>
#include <QPainter>

namespace {

using Side = ScanPageLogic::Side;

constexpr int turnCount = 4;
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
    : QDialog(parent), m_ui(std::make_unique<Ui::RotateSet>()), m_front(new QButtonGroup(this)),
      m_back(new QButtonGroup(this))
{
    m_ui->setupUi(this);
    dialogparts::styleHelp(m_ui->helpLabel);
    dialogparts::useChineseButtons(m_ui->buttonBox);
    fill(m_front, {m_ui->frontTurn0, m_ui->frontTurn1, m_ui->frontTurn2, m_ui->frontTurn3}, false,
         choice.front);
    fill(m_back, {m_ui->backTurn0, m_ui->backTurn1, m_ui->backTurn2, m_ui->backTurn3}, true, choice.back);
    m_ui->frontGroup->setVisible(sides != ScanSides::Back);
    m_ui->backGroup->setVisible(sides != ScanSides::Front);

    const auto enableTurns = [this](bool fixed) {
        m_ui->frontGroup->setEnabled(fixed);
        m_ui->backGroup->setEnabled(fixed);
    };
    connect(m_ui->fixedButton, &QRadioButton::toggled, this, enableTurns);
    m_ui->automaticButton->setChecked(choice.automatic);
    m_ui->fixedButton->setChecked(!choice.automatic);
    enableTurns(!choice.automatic);
    connect(m_ui->buttonBox, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

RotateSet::~RotateSet() = default;

void RotateSet::fill(QButtonGroup* group, const QList<QAbstractButton*>& buttons, bool back, int checked)
{
    for (int code = 0; code < turnCount; ++code) {
        QAbstractButton* button = buttons.at(code);
        button->setText(ScanPageLogic::rotationText(back ? Side::Back : Side::Front, code));
        button->setIcon(turnedSheet(this, ScanPageLogic::clockwiseDegrees(code)));
        button->setIconSize(QSize(28, 28));
        dialogparts::addAccessKey(button, Qt::ALT | (Qt::Key_1 + code + (back ? turnCount : 0)));
        group->addButton(button, code);
    }
    buttons.at(qBound(0, checked, turnCount - 1))->setChecked(true);
}

RotationChoice RotateSet::choice() const
{
    RotationChoice choice;
    choice.automatic = m_ui->automaticButton->isChecked();
    choice.front = m_front->checkedId();
    choice.back = m_back->checkedId();
    return choice;
}
