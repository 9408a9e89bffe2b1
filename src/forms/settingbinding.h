// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVariant>
#include <functional>
#include <vector>

class QAbstractButton;
class QComboBox;
class QLineEdit;
class QSettings;
class QSlider;
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
    void bind(const char* key, QSlider* slider);
    void bindHundredths(const char* key, QSlider* slider); // value / 100.0
    void bind(const char* key, QLineEdit* field);          // text
    // A value that takes more than one control. Without `read` the key is only written.
    void bind(const char* key, Read read, Write write);

    // The group is begun in `settings`. The controls' signals are blocked meanwhile: the caller applies the
    // form's rules once afterwards, to a form that is complete.
    void read(const QSettings& settings) const;
    void write(QSettings& settings) const;

private:
    struct Entry
    {
        const char* key;
        QWidget* control; // null: none to block
        Read read;
        Write write;
    };
    std::vector<Entry> m_entries;
};
