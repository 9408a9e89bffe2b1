// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

// Keeps a reduced copy of a scanned page as "lastPage.ppm" among the page files, for the live previews of the
// settings dialogs. Any thread; false (logged) when the page cannot be read or the copy not written.
bool keepLastPage(const QString& pageFile);
