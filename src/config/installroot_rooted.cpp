// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/installroot.h"

#include <QtGlobal>

namespace {

QString requiredFolder(const char* variable)
{
    const QString folder = qEnvironmentVariable(variable);
    if (folder.isEmpty())
        qFatal("%s is not set: this program keeps its files below the folder named there", variable);
    return folder;
}

} // namespace

QString installRoot()
{
    static const QString root = requiredFolder("QWD200_ROOT");
    return root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/');
}

QString defaultSaveFolder()
{
    static const QString folder = requiredFolder("QWD200_SAVE_FOLDER");
    return folder;
}
