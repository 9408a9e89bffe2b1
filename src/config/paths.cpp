// SPDX-License-Identifier: GPL-3.0-or-later
#include "config/paths.h"

#include "config/installroot.h"

#include <QDebug>
#include <QDir>

namespace paths {

namespace {

QString below(const char* name)
{
    return installRoot() + QLatin1String(name);
}

} // namespace

// clang-format off
QString mainSettings() { return below("QWD200.conf"); }
QString pathSettings() { return below("QWD200_path.conf"); }
QString templateFolder() { return below("scanModeFile/"); }
QString tempFolder() { return below("tempfiles/"); }
QString keptFolder() { return below("tempfiles/kept/"); }
QString tempTextFolder() { return below("tempTxtFiles/"); }
QString pagePrefix() { return below("tempfiles/zarnqwd200"); }
QString stateFile() { return below("StateInfo"); }
QString translation() { return below("qt_zh_CN.qm"); }
QString pdfReader() { return below("pdfReader"); }
QString ofdPacker() { return below("zip-ofd"); }
QString manual() { return below("help_qwd200.pdf"); }
QString scratchText() { return below("test.txt"); }
QString logoImage() { return below("zarn.png"); }
// clang-format on

bool ensureFolders()
{
    bool good = true;
    for (const QString& folder : {templateFolder(), tempFolder(), tempTextFolder()}) {
        if (!QDir().mkpath(folder)) {
            qWarning().noquote() << "cannot create the folder" << folder;
            good = false;
        }
    }
    return good;
}

} // namespace paths
