// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/scanpagelogic.h"
#include "forms/settingbinding.h"

// All keys of the groups "Scan_Scan" and "File_Scan" that one template page shows. GUI thread; the logic and
// its controls must outlive the object.
//
// Reading puts every value into its control and then lets the page's rules decide what is enabled. Of the
// stored enabled states only those that no rule decides are taken over: the rotation labels ("pageSetFront",
// "pageSetBack": which one is used) and the blank-page box ("delBlankState", enabled when the key is
// missing). Bad values become the key's factory value (settingtable.h). The application list must be filled
// before.
class ScanPageSettings
{
public:
    explicit ScanPageSettings(ScanPageLogic& logic);

    void read(const QSettings& settings); // the group is begun in `settings`
    void write(QSettings& settings) const;
    bool matches(const QSettings& settings) const
    {
        return m_binding.matches(settings);
    } // the group is begun

private:
    void bindLabel(const char* usedKey, const char* turnKey, QLabel* label, ScanPageLogic::Side side);

    ScanPageLogic& m_logic;
    SettingBinding m_binding;
};
