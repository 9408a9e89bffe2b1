// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/scanpagelogic.h"
#include "forms/settingbinding.h"

// All keys that the panels of the functions share: those of the groups "Scan_PDF", "Scan_OCR" and their
// counterparts of the file page, as far as a control shows them. A panel binds its own keys to binding()
// beside them. GUI thread; the logic and its controls must outlive the object.
//
// Unlike in the groups of the window's pages "pageSetFront" and "pageSetBack" hold the turns and
// "frontRotateState" and "backRotateState" which of them is used, gamma is stored in hundredths, and
// "handAdjust" is the box for merging by hand.
class FunctionSettings
{
public:
    explicit FunctionSettings(ScanPageLogic& logic);

    SettingBinding& binding() { return m_binding; }

    void read(const QSettings& settings); // the group is begun in `settings`
    void write(QSettings& settings) const;
    bool matches(const QSettings& settings) const
    {
        return m_binding.matches(settings);
    } // the group is begun
    // Puts the factory values of a group ("Scan_PDF") into the controls; the application list stays.
    void setDefaults(const QString& group);

private:
    void applyRead();
    void bindPages();
    void bindTurn(const char* codeKey, const char* textKey, const char* usedKey, QLabel* label,
                  ScanPageLogic::Side side);

    ScanPageLogic& m_logic;
    SettingBinding m_binding;
};
