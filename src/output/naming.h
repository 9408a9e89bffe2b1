// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QSettings>
#include <QString>

// How output files are named: the settings of one function's group.
struct NamingRules
{
    bool stamp = false;       // "dateAndtime"
    bool systemStamp = false; // "system": fixed format, else order and separator below
    int order[3] = {0, 0, 0}; // what stands first, second, third: 0 year, 1 month, 2 day
    int separator = 0;        // 0 none, 1 "-", 2 "."
    bool hours24 = true;      // "timeType"; a missing key means 24 hours
    bool userDefined = false; // "usrDefine": prefix and counter
    QString prefix;           // "name"
    QString start;            // next counter value as text; what is no number counts as 0
    int digits = 0;           // "length": the counter is padded with zeros to this width
    bool cover = false;       // replace a file of the same name
    bool askBefore = false;   // "messgBox": ask for the prefix before a batch
    bool askAfter = false;    // "showConfirmBox": ask for it after a batch
    bool finishStartApp = false;
    QString appName;
};

// The rules in the group that is begun in `group`.
NamingRules readNamingRules(const QSettings& group);

// Base name (no folder, no extension) for the moment `now`; may be empty. Pure.
QString imageName(const NamingRules& rules, const QDateTime& now, bool preview);

// The value of "start" after `names` more names; a `start` that is no number counts as 0.
QString counterAfter(const QString& start, int names);
QString nextCounter(const QString& start); // after one more

// Base name of the next output file by the rules of the main settings file's group ("Scan_Scan", ...). With
// user-defined names and no preview the advanced counter is written at once: call it once per file written.
QString takeImageName(const QString& group, bool preview,
                      const QDateTime& now = QDateTime::currentDateTime());

// A base name that can be a file name: "/" and control characters become "_", an empty one "image"; at most
// `maxBytes` bytes of UTF-8, cut between characters.
QString safeBaseName(const QString& base, int maxBytes = 240);

// The base name to save under: safeBaseName(), and unless `cover`, with the first suffix "-1", "-2", ... for
// which FOLDER/NAME.TYPEWORD does not exist. The suffix is within the 240 bytes.
QString freeBaseName(const QString& folder, const QString& base, const QString& typeWord, bool cover);
