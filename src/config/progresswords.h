// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Control words among the progress texts: they enable and disable the controls that start a scan.
namespace progress {

inline const QString kFinished = QStringLiteral("1234");   // processing finished: scan and preview
inline const QString kEnableAll = QStringLiteral("2222");  // and apply
inline const QString kDisableAll = QStringLiteral("3333"); //
inline const QString kPreview = QStringLiteral("4444");    // preview starting: disable scan

inline bool isControlWord(const QString& text)
{
    return text == kFinished || text == kEnableAll || text == kDisableAll || text == kPreview;
}

// Shown texts that receivers must know again: each stands once, so that they are one text in every language.
QString preparing(); // "正在准备扫描"
QString cancelled(); // "取消扫描"

} // namespace progress
