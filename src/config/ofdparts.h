// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The loose parts of an OFD package, as they lie in the save folder until `zip-ofd` packs them.
namespace ofdparts {

inline constexpr char kEntry[] = "OFD.xml";
inline constexpr char kTree[] = "Doc_0";
// An empty file beside them: these parts are the program's own, left-overs of them may be removed. The
// packer never packs it and removes it last, so that parts which a crash leaves behind stay marked.
inline constexpr char kMark[] = ".zarn-ofd-parts";

// Exit statuses of `zip-ofd` that mean more than a failure.
inline constexpr int kPartsRemain = 3; // the package is complete
inline constexpr int kDiskFull = 4;    // nothing was packed

} // namespace ofdparts
