// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/settingbinding.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QSettings>
#include <QSignalBlocker>
#include <QSlider>
#include <utility>

#include "config/settingtable.h"

void SettingBinding::bind(const char* key, QComboBox* combo)
{
    m_entries.push_back({key, combo,
                         [key, combo](const QSettings& settings) {
                             combo->setCurrentIndex(qMin(readInt(settings, key), combo->count() - 1));
                         },
                         // an empty combo has no index to remember
                         [combo] { return qMax(0, combo->currentIndex()); }});
}

void SettingBinding::bind(const char* key, QAbstractButton* button)
{
    m_entries.push_back(
        {key, button,
         [key, button](const QSettings& settings) { button->setChecked(readBool(settings, key)); },
         [button] { return button->isChecked(); }});
}

void SettingBinding::bind(const char* key, QSlider* slider)
{
    m_entries.push_back(
        {key, slider, [key, slider](const QSettings& settings) { slider->setValue(readInt(settings, key)); },
         [slider] { return slider->value(); }});
}

void SettingBinding::bindHundredths(const char* key, QSlider* slider)
{
    m_entries.push_back({key, slider,
                         [key, slider](const QSettings& settings) {
                             slider->setValue(qRound(readDouble(settings, key) * 100));
                         },
                         [slider] { return slider->value() / 100.0; }});
}

void SettingBinding::bind(const char* key, QLineEdit* field)
{
    m_entries.push_back({key, field,
                         [key, field](const QSettings& settings) { field->setText(readText(settings, key)); },
                         [field] { return field->text(); }});
}

void SettingBinding::bind(const char* key, Read read, Write write)
{
    m_entries.push_back({key, nullptr, std::move(read), std::move(write)});
}

void SettingBinding::read(const QSettings& settings) const
{
    for (const Entry& entry : m_entries) {
        if (!entry.read)
            continue;
        const QSignalBlocker blocker(entry.control); // accepts null
        entry.read(settings);
    }
}

void SettingBinding::write(QSettings& settings) const
{
    for (const Entry& entry : m_entries)
        settings.setValue(QLatin1String(entry.key), entry.write());
}
