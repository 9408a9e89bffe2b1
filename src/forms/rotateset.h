// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/scanpagelogic.h"
#include "forms/settingsdialog.h"

class QBoxLayout;
class QButtonGroup;
class QGroupBox;
class QRadioButton;

// How pages are turned. Turn codes: 0 none, 1 left 90°, 2 180°, 3 right 90°.
struct RotationChoice
{
    bool automatic = true; // by the page's text; the codes are kept but not used
    int front = 0;
    int back = 0;
};

enum class ScanSides
{
    Front,
    Back,
    Both
};

// The dialog behind the page-rotation button. It stores nothing: the caller takes choice() when it was
// accepted. Only the scanned side's turns are shown.
class RotateSet : public SettingsDialog
{
    Q_OBJECT
public:
    RotateSet(const RotationChoice& choice, ScanSides sides, QWidget* parent = nullptr);

    RotationChoice choice() const;

protected:
    void valuesChanged() override;
    void setOwnDefaults() override;

private:
    struct Turns
    {
        QGroupBox* box;
        QButtonGroup* buttons;
    };
    Turns addTurns(QBoxLayout* row, ScanPageLogic::Side side);
    void show(const RotationChoice& choice);

    QRadioButton* m_automatic;
    QRadioButton* m_fixed;
    Turns m_front;
    Turns m_back;
};
