// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "device/functionalapp.h"
#include "forms-dialogs/driving.h"

// The three counters as the page shows them; "off" stands before one that is greyed out.
inline QStringList fields(const FunctionalApp& page)
{
    QStringList texts;
    for (const char* name : {"current_plat", "target_incom", "target_ruandian"}) {
        const auto* edit = control<QLineEdit>(page, name);
        texts << (edit->isEnabled() ? QString() : "off ") + edit->text();
    }
    return texts;
}

inline QString status(const FunctionalApp& page)
{
    return control<QLabel>(page, "statusLabel")->text();
}
