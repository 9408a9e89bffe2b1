// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pdf/pagereader.h"

#include <QMap>
#include <QStringList>

// A page of given lines, A4 upright unless told otherwise, and a reader that knows such pages by file name.

inline BoxText scriptedLine(int number, const cv::Rect& box, const QString& text, int confidence = 90)
{
    BoxText line;
    line.number = number;
    line.box = box;
    line.text = text.toStdString();
    line.confidence = confidence;
    return line;
}

inline PageText scriptedPage(const QStringList& texts, const QSize& size = {2480, 3508})
{
    PageText page;
    page.readable = true;
    page.size = size;
    for (int i = 0; i < texts.size(); ++i)
        page.lines.push_back(scriptedLine(i, {200, 300 + 60 * i, 1500, 45}, texts[i]));
    return page;
}

class ScriptedPages : public PageReader
{
public:
    PageText read(const QString& picture, bool, const std::function<bool()>&) override
    {
        asked.append(picture);
        return pages.value(picture); // unknown: unreadable
    }

    QMap<QString, PageText> pages;
    QStringList asked;
};
