// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QVariant>
#include <functional>
#include <vector>

class QAbstractButton;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QSettings;
class QSlider;
class QSpinBox;
class QWidget;

// Binds the controls of a form to the keys of one settings group, once for reading and writing. Types, ranges
// and the treatment of bad values come from the group's table (settingtable.h). GUI thread; the controls must
// outlive the binding. Keys are written and read in the order in which they were bound.
class SettingBinding
{
public:
    using Read = std::function<void(const QSettings&)>;
    using Write = std::function<QVariant()>;

    void bind(const char* key, QComboBox* combo);        // index; an index beyond the items: the last item
    void bind(const char* key, QAbstractButton* button); // checked
    // A number beyond what the control can show reads as the key's factory value, and is logged.
    void bind(const char* key, QSlider* slider);
    void bind(const char* key, QSpinBox* box);
    void bind(const char* key, QDoubleSpinBox* box);
    // A number that is stored as text.
    void bindText(const char* key, QSlider* slider);
    void bindHundredths(const char* key, QSlider* slider); // value / 100.0
    void bind(const char* key, QLineEdit* field);          // text
    // A value that takes more than one control. Without `read` the key is only written.
    void bind(const char* key, Read read, Write write);

    // The group is begun in `settings`. The controls' signals are blocked meanwhile: the caller applies the
    // form's rules once afterwards, to a form that is complete.
    void read(const QSettings& settings) const;
    void write(QSettings& settings) const;
    // Whether read() would leave the controls as they are; keys that are missing do not count.
    bool matches(const QSettings& settings) const;
    // Puts the factory values of a group into the controls.
    void readFactoryValues(const QString& group) const;

private:
    using Stored = std::function<QVariant(const QSettings&)>; // what the control would show
    using Show = std::function<void(const QVariant&)>;
    struct Entry
    {
        const char* key;
        QWidget* control; // null: none to block
        Stored stored;    // empty: as it stands in the file
        Read read;
        Write write;
    };
    void add(const char* key, QWidget* control, const Stored& stored, const Show& show, Write write);
    template <typename Control, typename Number>
    void bindNumber(const char* key, Control* control, Number number);

    std::vector<Entry> m_entries;
};
