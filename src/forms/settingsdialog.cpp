// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/settingsdialog.h"

#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/dialogparts.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr int kLeastCharacters = 30; // Chinese ones in a row of the help line

} // namespace

SettingsDialog::SettingsDialog(const QString& title, const QString& help, const QString& group,
                               QWidget* parent)
    : QDialog(parent), m_group(group), m_body(new QVBoxLayout)
{
    setWindowTitle(title);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto* all = new QVBoxLayout(this);
    auto* line = new QLabel(help, this);
    line->setObjectName(QStringLiteral("helpLabel"));
    dialogparts::styleHelp(line);
    line->setMinimumWidth(line->fontInfo().pixelSize() * kLeastCharacters);
    all->addWidget(line);
    all->addLayout(m_body, 1);
}

// After the controls, so that the Tab key comes to the buttons last.
void SettingsDialog::addButtons()
{
    m_message = new QLabel(this);
    m_message->setObjectName(QStringLiteral("messageLabel"));
    dialogparts::showMessage(m_message, QString());
    auto* buttons = new QDialogButtonBox(
        QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::RestoreDefaults, this);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    dialogparts::useChineseButtons(buttons);
    layout()->addWidget(m_message);
    layout()->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            &SettingsDialog::setDefaults);
}

void SettingsDialog::addRow(QFormLayout* form, const QString& label, QWidget* control, const char* key,
                            const QString& tip)
{
    control->setObjectName(QLatin1String(key));
    control->setToolTip(tip);
    if (label.isEmpty()) { // the control names itself
        form->addRow(QString(), control);
        return;
    }
    auto* caption = new QLabel(label, this);
    caption->setBuddy(control);
    caption->setToolTip(tip);
    form->addRow(caption, control);
}

QSlider* SettingsDialog::addSlider(QFormLayout* form, const QString& label, const char* key, int least,
                                   int most, const QString& tip)
{
    auto* slider = new QSlider(Qt::Horizontal, this);
    auto* value = new QLabel(this);
    slider->setObjectName(QLatin1String(key));
    slider->setRange(least, most);
    slider->setPageStep(qMax(1, (most - least) / 10));
    slider->setMinimumWidth(220);
    slider->setToolTip(tip);
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(QStringLiteral("0000")));
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    connect(slider, &QSlider::valueChanged, value, QOverload<int>::of(&QLabel::setNum));
    m_numbers.emplace_back(slider, value);
    auto* row = new QHBoxLayout;
    row->addWidget(slider, 1);
    row->addWidget(value);
    auto* caption = new QLabel(label, this);
    caption->setBuddy(slider);
    caption->setToolTip(tip);
    form->addRow(caption, row);
    return slider;
}

QLabel* SettingsDialog::addHelp(const QString& text)
{
    auto* label = new QLabel(text, this);
    dialogparts::styleHelp(label);
    m_body->addWidget(label);
    return label;
}

void SettingsDialog::showStored()
{
    addButtons();
    {
        const auto settings = openMainSettings();
        const GroupScope scope(*settings, m_group);
        m_binding.read(*settings);
    }
    for (QAbstractButton* button : findChildren<QAbstractButton*>())
        connect(button, &QAbstractButton::toggled, this, &SettingsDialog::valuesChanged);
    for (QComboBox* combo : findChildren<QComboBox*>())
        connect(combo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &SettingsDialog::valuesChanged);
    for (QSlider* slider : findChildren<QSlider*>())
        connect(slider, &QSlider::valueChanged, this, &SettingsDialog::valuesChanged);
    for (QDoubleSpinBox* box : findChildren<QDoubleSpinBox*>())
        connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                &SettingsDialog::valuesChanged);
    for (QSpinBox* box : findChildren<QSpinBox*>())
        connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this, &SettingsDialog::valuesChanged);
    showNumbers();
    valuesChanged();
}

// The toolkit gives a first window at most two thirds of the screen, whatever wrapped texts need.
void SettingsDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous())
        resize(width(), qMax(height(), layout()->totalHeightForWidth(width())));
}

void SettingsDialog::showNumbers()
{
    for (const auto& [slider, number] : m_numbers)
        number->setNum(slider->value());
}

void SettingsDialog::setDefaults()
{
    m_binding.readFactoryValues(m_group);
    setOwnDefaults();
    showNumbers();
    valuesChanged();
}

bool SettingsDialog::store()
{
    const auto settings = openMainSettings();
    {
        const GroupScope scope(*settings, m_group);
        m_binding.write(*settings);
    }
    return saveSettings(*settings);
}

void SettingsDialog::accept()
{
    if (store())
        QDialog::accept();
    else
        dialogparts::showMessage(m_message, dialogparts::cannotStore());
}
