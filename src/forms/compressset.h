// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/settingsdialog.h"

#include <QVector>

#include "output/savetype.h"

class BeforeAfter;
class QCheckBox;

// How much images are compressed when they are saved (the group "File_Compress"), with the last scanned page
// at the quality that was changed last and the size of its file.
class CompressSet : public SettingsDialog
{
    Q_OBJECT
public:
    explicit CompressSet(QWidget* parent = nullptr);

protected:
    void valuesChanged() override;

private:
    struct Quality
    {
        QSlider* slider;
        ColorMode mode;
        const char* type; // "jpg" or "png"
        QString name;
    };
    void add(QFormLayout* form, const QString& label, const char* key, ColorMode mode, const char* type,
             const QString& name);
    void showQuality();

    QCheckBox* m_same;
    QVector<Quality> m_qualities;
    int m_shown = 0;
    BeforeAfter* m_preview;
};
