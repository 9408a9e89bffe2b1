// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ocr/textline.h"

#include <QMap>

// Joins the lines of one paragraph: each record of the result stands under the number of its first line.
// Lines join with the line below when they overlap in most of their width, start at the same left edge (the
// first line may be indented by two characters), have the same height within a quarter and a pitch of at
// most 1.4 line heights. Boxes that hold several lines already and doubtful ones stay by themselves.
QMap<int, zarnTXTLINERET> joinParagraphs(const QMap<int, zarnTXTLINERET>& lines);
