// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recognition/boxreading.h"

#include <string>

// What a child writes into its pipe for one box:
//   number,x,y,w,h,confidence,text 0x1E
// and, when the characters' places were asked for, directly after it
//   S,number,left right,left right,... 0x1E
// Numbers are decimal, the text is UTF-8 and may hold commas and line feeds, but no 0x1E.
std::string encodeRecord(const BoxText& box);

// Adds the records in `bytes` (all that one child wrote) to `boxes`; a record that is cut off or malformed is
// passed over. Places that do not match the text's code points are dropped.
void decodeRecords(const std::string& bytes, std::vector<BoxText>& boxes);

// Code points of UTF-8 text.
std::size_t codePoints(const std::string& text);
