// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/settingsdialog.h"

class QCheckBox;
class QComboBox;
class QSpinBox;

// How copies are meant to be printed. The values are stored with the page's settings and travel with the
// templates; nothing here prints, and the dialog says so.
class copyfaxproperty : public SettingsDialog
{
    Q_OBJECT
public:
    // `group`: "Scan_Copy_Print" or "File_Copy_Print".
    explicit copyfaxproperty(const QString& group, QWidget* parent = nullptr);

protected:
    void valuesChanged() override;

private:
    QSpinBox* m_copies;
    QComboBox* m_paper;
    QComboBox* m_color;
    QComboBox* m_sides;
    QCheckBox* m_fit;
    QSpinBox* m_zoom;
    QCheckBox* m_collate;
};
