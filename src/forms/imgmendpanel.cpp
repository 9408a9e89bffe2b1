// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/imgmendpanel.h"

#include "config/settingtable.h"
#include "forms/bordersketch.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>

namespace {

QDoubleSpinBox* widthBox(QWidget* parent)
{
    auto* box = new QDoubleSpinBox(parent);
    box->setRange(0, table(groups::wholeSet).find(keys::imgMendUp)->max);
    box->setDecimals(1);
    box->setSingleStep(0.5);
    box->setSuffix(imgmendpanel::tr(" 毫米"));
    return box;
}

} // namespace

imgmendpanel::imgmendpanel(QWidget* parent)
    : SettingsDialog(tr("影像补边设定"),
                     tr("勾选“影像补边”后，页面四周涂成一种颜色，用来盖住扫描时留下的黑边和阴影。"),
                     QLatin1String(groups::wholeSet), parent),
      m_inside(new QRadioButton(tr("涂在页面以内(&I)"), this)),
      m_outside(new QRadioButton(tr("加在页面以外(&X)"), this)), m_up(widthBox(this)), m_left(widthBox(this)),
      m_ownLeft(new QCheckBox(tr("左右宽度与上下不同(&S)"), this)), m_colorButton(new QPushButton(this)),
      m_sketch(new BorderSketch(this))
{
    addControls();
    bindControls();
    connect(m_colorButton, &QPushButton::clicked, this, &imgmendpanel::chooseColor);
    showStored();
}

void imgmendpanel::addControls()
{
    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_inside->setObjectName(QLatin1String(keys::imgMendIn));
    m_inside->setToolTip(tr("页面大小不变，靠边的内容会被盖住"));
    m_outside->setObjectName(QLatin1String(keys::imgMendOut));
    m_outside->setToolTip(tr("页面变大，内容全部保留"));
    form->addRow(m_inside);
    form->addRow(m_outside);
    addRow(form, tr("上下宽度(&U):"), m_up, keys::imgMendUp, tr("上边和下边各补这么宽"));
    m_ownLeft->setObjectName(QLatin1String(keys::imgMendLeftState));
    m_ownLeft->setToolTip(tr("不勾选时，左右和上下一样宽"));
    form->addRow(m_ownLeft);
    addRow(form, tr("左右宽度(&L):"), m_left, keys::imgMendLeft, tr("左边和右边各补这么宽"));
    addRow(form, tr("颜色(&K):"), m_colorButton, "imgMendcolor", tr("点击后选择补边的颜色"));
    auto* columns = new QHBoxLayout;
    columns->addLayout(form);
    columns->addSpacing(12);
    columns->addWidget(m_sketch, 1);
    body()->addLayout(columns);
}

void imgmendpanel::bindControls()
{
    binding().bind(keys::imgMendUp, m_up);
    binding().bind(keys::imgMendLeft, m_left);
    // Of two exclusive radio buttons one is always checked; "in" decides.
    binding().bind(
        keys::imgMendIn,
        [this](const QSettings& settings) {
            (readBool(settings, keys::imgMendIn) ? m_inside : m_outside)->setChecked(true);
        },
        [this] { return m_inside->isChecked(); });
    binding().bind(keys::imgMendOut, {}, [this] { return m_outside->isChecked(); });
    binding().bind(keys::imgMendLeftState, m_ownLeft);
    bindLevel(keys::imgMendcolorRed, &QColor::red, &QColor::setRed);
    bindLevel(keys::imgMendcolorGreen, &QColor::green, &QColor::setGreen);
    bindLevel(keys::imgMendcolorBlue, &QColor::blue, &QColor::setBlue);
}

void imgmendpanel::bindLevel(const char* key, int (QColor::*level)() const, void (QColor::*setLevel)(int))
{
    binding().bind(
        key, [=](const QSettings& settings) { (m_color.*setLevel)(readInt(settings, key)); },
        [=] { return (m_color.*level)(); });
}

void imgmendpanel::chooseColor()
{
    const QColor chosen =
        QColorDialog::getColor(m_color, this, tr("补边颜色"), QColorDialog::DontUseNativeDialog);
    if (!chosen.isValid())
        return;
    m_color = chosen;
    valuesChanged();
}

void imgmendpanel::showColor()
{
    QPixmap swatch(QSize(32, 16));
    swatch.fill(m_color);
    m_colorButton->setIconSize(swatch.size());
    m_colorButton->setIcon(swatch);
    const QString name = m_color == Qt::white   ? tr("白色")
                         : m_color == Qt::black ? tr("黑色")
                                                : m_color.name().toUpper();
    m_colorButton->setText(name);
    m_colorButton->setAccessibleName(tr("补边颜色：%1").arg(name));
}

void imgmendpanel::valuesChanged()
{
    m_left->setEnabled(m_ownLeft->isChecked());
    showColor();
    m_sketch->setBorder({m_inside->isChecked(), m_up->value(),
                         m_ownLeft->isChecked() ? m_left->value() : m_up->value(), m_color});
}
