// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/settingsdialog.h"

#include <QColor>

class BorderSketch;
class QCheckBox;
class QDoubleSpinBox;
class QPushButton;
class QRadioButton;

// How 影像补边 paints the rim of a page (the imgMend... keys of "wholeSet"), with a sketch that follows.
class imgmendpanel : public SettingsDialog
{
    Q_OBJECT
public:
    explicit imgmendpanel(QWidget* parent = nullptr);

protected:
    void valuesChanged() override;

private:
    void addControls();
    void bindControls();
    void bindLevel(const char* key, int (QColor::*level)() const, void (QColor::*setLevel)(int));
    void chooseColor();
    void showColor();

    QRadioButton* m_inside;
    QRadioButton* m_outside;
    QDoubleSpinBox* m_up;
    QDoubleSpinBox* m_left;
    QCheckBox* m_ownLeft;
    QPushButton* m_colorButton;
    BorderSketch* m_sketch;
    QColor m_color = Qt::white;
};
