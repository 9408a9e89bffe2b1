// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/settingsdialog.h"

class QCheckBox;
class QComboBox;
class QLabel;

// Which images a scan gives: the format of each colour mode, further copies of less colour and their
// resolutions, and how the back of a sheet lies.
class OutputSet : public SettingsDialog
{
    Q_OBJECT
public:
    // What the function's own controls hold.
    struct Output
    {
        bool images = false; // else the function makes documents
        QStringList formats; // the items; empty: one list serves all colour modes
        int colorFormat = 0;
        int greyFormat = 0;
        int bwFormat = 0;
        bool copies = false; // further copies of less colour
    };
    explicit OutputSet(const Output& output, QWidget* parent = nullptr);

    Output output() const;

protected:
    void valuesChanged() override;
    void setOwnDefaults() override;

private:
    void addImageControls();
    QComboBox* resolutionCombo();

    Output m_given;
    QComboBox* m_color;
    QComboBox* m_grey;
    QComboBox* m_bw;
    QCheckBox* m_copies;
    QComboBox* m_greyDpi;
    QComboBox* m_bwDpi;
    QComboBox* m_backs;
    QLabel* m_result = nullptr;
};
