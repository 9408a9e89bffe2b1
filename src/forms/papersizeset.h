// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/settingsdialog.h"

class PaperSketch;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QRadioButton;

// The custom paper size of one function (a "..._PaperSize" group): the piece that is cut out of an A4 scan.
class PaperSizeSet : public SettingsDialog
{
    Q_OBJECT
public:
    explicit PaperSizeSet(const QString& group, QWidget* parent = nullptr);

protected:
    void valuesChanged() override;

private:
    void addControls();
    void bindMillimetres(const char* key, QDoubleSpinBox* box);
    void bindPlace();
    void takeUsualSize(int item);

    QComboBox* m_usual;
    QDoubleSpinBox* m_width;
    QDoubleSpinBox* m_height;
    QRadioButton* m_topLeft;
    QRadioButton* m_middle;
    QLabel* m_result = nullptr;
    PaperSketch* m_sketch;
};
