// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/copyfaxproperty.h"

#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/dialogparts.h"
#include "forms/settingbinding.h"
#include "ui_copyfaxproperty.h"

#include <QPushButton>

copyfaxproperty::copyfaxproperty(const QString& group, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::copyfaxproperty>()),
      m_binding(std::make_unique<SettingBinding>()), m_group(group)
{
    m_ui->setupUi(this);
    dialogparts::styleHelp(m_ui->helpLabel);
    dialogparts::useChineseButtons(m_ui->buttonBox);
    bindControls();
    const auto enableZoom = [this] { m_ui->zoomSpinBox->setEnabled(!m_ui->fitCheckBox->isChecked()); };
    const auto enableCollate = [this] {
        m_ui->collateCheckBox->setEnabled(m_ui->copiesSpinBox->value() > 1);
    };
    connect(m_ui->fitCheckBox, &QCheckBox::toggled, this, enableZoom);
    connect(m_ui->copiesSpinBox, QOverload<int>::of(&QSpinBox::valueChanged), this, enableCollate);
    const auto file = openMainSettings();
    const GroupScope scope(*file, m_group);
    m_binding->read(*file);
    enableZoom();
    enableCollate();
}

copyfaxproperty::~copyfaxproperty() = default;

void copyfaxproperty::bindControls()
{
    m_binding->bind(keys::copies, m_ui->copiesSpinBox);
    m_binding->bind(keys::zoom, m_ui->zoomSpinBox);
    m_binding->bind(keys::fitPaper, m_ui->fitCheckBox);
    m_binding->bind(keys::printPaper, m_ui->paperComboBox);
    m_binding->bind(keys::printColor, m_ui->colorComboBox);
    m_binding->bind(keys::printDuplex, m_ui->duplexComboBox);
    m_binding->bind(keys::collate, m_ui->collateCheckBox);
}

void copyfaxproperty::accept()
{
    const auto file = openMainSettings();
    {
        const GroupScope scope(*file, m_group);
        m_binding->write(*file);
    }
    if (saveSettings(*file))
        QDialog::accept();
    else
        dialogparts::showMessage(m_ui->messageLabel, dialogparts::cannotStore());
}
