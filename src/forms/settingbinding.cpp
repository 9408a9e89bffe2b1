// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/settingbinding.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDebug>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSettings>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QTemporaryDir>
#include <algorithm>
#include <utility>

#include "config/settingtable.h"

namespace {

// What the control can show: the stored number or, when it is missing or beyond the control, the key's
// factory value. `scale`: control values per unit of the file.
template <typename Control, typename Number>
Number shownNumber(const QSettings& settings, const char* key, const Control& control, Number stored,
                   int scale = 1)
{
    const Setting* setting = table(settings.group()).find(key);
    if ((stored >= control.minimum() && stored <= control.maximum()) || !setting)
        return stored;
    if (settings.contains(QLatin1String(key)))
        qWarning() << "setting" << settings.group() << key << stored << "is beyond the control - using"
                   << setting->factory.toString();
    return static_cast<Number>(setting->factory.toDouble() * scale);
}

} // namespace

void SettingBinding::add(const char* key, QWidget* control, const Stored& stored, const Show& show,
                         Write write)
{
    m_entries.push_back({key, control, stored,
                         [stored, show](const QSettings& settings) { show(stored(settings)); },
                         std::move(write)});
}

void SettingBinding::bind(const char* key, QComboBox* combo)
{
    add(
        key, combo,
        [key, combo](const QSettings& settings) {
            const int last = combo->count() - 1;
            const int index = readInt(settings, key);
            // The factory's own index may stand for the last item of whatever list.
            const Setting* setting = table(settings.group()).find(key);
            if (index > last && last >= 0 && !(setting && setting->factory == index))
                qWarning() << "setting" << settings.group() << key << index << "has no item - using the last,"
                           << last;
            return qMin(index, last);
        },
        [combo](const QVariant& index) { combo->setCurrentIndex(index.toInt()); },
        // an empty combo has no index to remember
        [combo] { return qMax(0, combo->currentIndex()); });
}

void SettingBinding::bind(const char* key, QAbstractButton* button)
{
    add(
        key, button, [key](const QSettings& settings) { return readBool(settings, key); },
        [button](const QVariant& on) { button->setChecked(on.toBool()); },
        [button] { return button->isChecked(); });
}

template <typename Control, typename Number>
void SettingBinding::bindNumber(const char* key, Control* control, Number number)
{
    using Value = decltype(control->value());
    add(
        key, control,
        [key, control, number](const QSettings& settings) {
            return shownNumber<Control, Value>(settings, key, *control, number(settings));
        },
        [control](const QVariant& value) { control->setValue(value.value<Value>()); },
        [control] { return control->value(); });
}

void SettingBinding::bind(const char* key, QSlider* slider)
{
    bindNumber(key, slider, [key](const QSettings& settings) { return readInt(settings, key); });
}

void SettingBinding::bind(const char* key, QSpinBox* box)
{
    bindNumber(key, box, [key](const QSettings& settings) { return readInt(settings, key); });
}

void SettingBinding::bind(const char* key, QDoubleSpinBox* box)
{
    bindNumber(key, box, [key](const QSettings& settings) { return readDouble(settings, key); });
}

void SettingBinding::bindText(const char* key, QSlider* slider)
{
    bindNumber(key, slider, [key, slider](const QSettings& settings) {
        bool good = false;
        const int value = readText(settings, key).trimmed().toInt(&good);
        return good ? value : slider->minimum() - 1;
    });
    m_entries.back().write = [slider] { return QString::number(slider->value()); };
}

void SettingBinding::bindHundredths(const char* key, QSlider* slider)
{
    add(
        key, slider,
        [key, slider](const QSettings& settings) {
            const int stored = qRound(readDouble(settings, key) * 100);
            return shownNumber(settings, key, *slider, stored, 100) / 100.0;
        },
        [slider](const QVariant& value) { slider->setValue(qRound(value.toDouble() * 100)); },
        [slider] { return slider->value() / 100.0; });
}

void SettingBinding::bind(const char* key, QLineEdit* field)
{
    add(
        key, field, [key](const QSettings& settings) { return readText(settings, key); },
        [field](const QVariant& text) { field->setText(text.toString()); },
        [field] { return field->text(); });
}

void SettingBinding::bind(const char* key, Read read, Write write)
{
    m_entries.push_back({key, nullptr, {}, std::move(read), std::move(write)});
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

void SettingBinding::readFactoryValues(const QString& group) const
{
    const QTemporaryDir folder;
    QSettings values(folder.filePath(QStringLiteral("factory.conf")), QSettings::IniFormat);
    values.setIniCodec("UTF-8");
    writeFactoryValues(values, table(group));
    const GroupScope scope(values, group);
    read(values);
}

bool SettingBinding::matches(const QSettings& settings) const
{
    return std::all_of(m_entries.begin(), m_entries.end(), [&settings](const Entry& entry) {
        const QString key = QLatin1String(entry.key);
        if (!entry.read || !settings.contains(key))
            return true;
        const QVariant stored = entry.stored ? entry.stored(settings) : settings.value(key);
        return stored.toString() == entry.write().toString();
    });
}
