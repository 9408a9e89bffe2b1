// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>

class QApplication;

// The language of a program's texts. Chinese is the source of all texts and the default; English is for named
// locales of another language. GUI thread.
namespace language {

// Whether texts are shown in English. `locale` as in LC_ALL ("en_US.UTF-8"); "", "C" and "POSIX" name no
// language. `preferred`: a list as in LANGUAGE ("zh_CN:en"), whose first entry counts when the locale is
// named.
bool isEnglish(const QByteArray& locale, const QByteArray& preferred = {});

// The same for this process, from LC_ALL, else LC_MESSAGES, else LANG, and LANGUAGE.
bool isEnglish();

// Sets font and texts of the program before its first window: for English our own translation, which is in
// the program itself; for Chinese the first of `toolkitFiles` that can be loaded ("....qm"). None is no
// error.
void set(QApplication& application, const QStringList& toolkitFiles);

} // namespace language
