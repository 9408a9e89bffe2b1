// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/settingsdialog.h"

#include <optional>

class BeforeAfter;
class QComboBox;
class QSlider;

// How black-and-white pages are made: the threshold between black and white and the specks that are removed
// (a "..._DeNoise" group), with a preview on the last scanned page.
class NoiseSet : public SettingsDialog
{
    Q_OBJECT
public:
    // What the function's own controls hold: combo indices.
    struct Modes
    {
        int threshold = 0;        // 0 automatic, 1 custom
        std::optional<int> noise; // 0 none, 1 custom, 2 automatic; no control: the group holds it
    };
    NoiseSet(const QString& group, const Modes& modes, QWidget* parent = nullptr);

    Modes modes() const;

protected:
    void valuesChanged() override;
    void setOwnDefaults() override;

private:
    void addControls();
    void bindControls();

    bool m_ownNoiseMode; // of the group
    QComboBox* m_thresholdMode;
    QSlider* m_threshold = nullptr;
    QComboBox* m_noiseMode;
    QComboBox* m_noiseLevel;
    BeforeAfter* m_preview;
};
