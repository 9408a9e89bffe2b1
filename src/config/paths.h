// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Every file and folder below the install root, by purpose. Folders end in "/".
namespace paths {

QString mainSettings();   // "QWD200.conf"
QString pathSettings();   // "QWD200_path.conf"
QString templateFolder(); // "scanModeFile/"
QString tempFolder();     // "tempfiles/"
QString keptFolder();     // "tempfiles/kept/": page files rescued from a crash or a fault
QString tempTextFolder(); // "tempTxtFiles/"
QString pagePrefix();     // "tempfiles/zarnqwd200": page files are PREFIX-0001.pnm, ...
QString stateFile();      // "StateInfo"
QString translation();    // "qt_zh_CN.qm"
QString pdfReader();      // "pdfReader"
QString ofdPacker();      // "zip-ofd"
QString manual();         // "help_qwd200.pdf"
QString scratchText();    // "test.txt"
QString logoImage();      // "zarn.png"

// Makes the folders above. Returns false (and logs which) when one cannot be made.
bool ensureFolders();

} // namespace paths
