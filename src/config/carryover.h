// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Keeps the pages of a cancelled batch for the next one: renames the page files so that they stand before the
// pages to come ("zarnqwd200-0000-0001.pnm", ...) and cannot be overwritten by them, fronts on odd numbers as
// before; unfinished ".part" files are removed. Returns the number of pages kept. A file that cannot be
// renamed is logged and stays.
int carryOverPages();
