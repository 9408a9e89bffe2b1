// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/installroot.h"

QString installRoot()
{
    return QStringLiteral("/opt/zarn/Scanner/QWD200/");
}

QString defaultSaveFolder()
{
    return QStringLiteral("/home/ScanDoc");
}
