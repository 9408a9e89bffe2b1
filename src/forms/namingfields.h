// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "output/naming.h"

#include <QObject>

class QCheckBox;
class QLabel;
class QLineEdit;
class QSpinBox;

// The naming settings of a group of the main settings file as the dialogs offer them: as stored, and the
// factory values for what is not stored yet.
NamingRules offeredNamingRules(const QString& group);
NamingRules factoryNamingRules(const QString& group);

// Writes the naming settings into the group that is begun in `group`, with the flags (keys ending in "State")
// that tell which of the dialog's controls can be used under these rules. The reverse of readNamingRules().
void storeNamingRules(QSettings& group, const NamingRules& rules);

// The fields that the save dialog and the file-name dialog have in common: prefix, counter, digits,
// overwriting, and the name that the next file will get. Lives as long as the dialog whose controls it is
// given.
class NamingFields : public QObject
{
    Q_OBJECT
public:
    struct Controls
    {
        QLineEdit* prefix;
        QLineEdit* start;
        QSpinBox* digits;
        QCheckBox* cover;
        QLabel* nextName;
    };
    NamingFields(const Controls& controls, QObject* parent);

    void show(const NamingRules& rules);
    void take(NamingRules& rules) const; // changes only what the fields show
    void setUsable(bool userDefined);    // prefix and counter

    // The base name that the next file gets now, before it is made unique in its folder.
    static QString nextName(const NamingRules& rules);
    void showNextName(const NamingRules& rules);

    // Checks what was typed; on a fault shows it in `message`, focuses the field and returns false.
    bool check(bool userDefined, QLabel* message) const;

signals:
    void edited();

private:
    Controls m_controls;
};
