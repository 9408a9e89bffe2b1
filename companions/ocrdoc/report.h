// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QString>

namespace companion {

// What the report says of one page.
struct PageLine
{
    QString file;
    int boxes = 0;
    double confidence = 0; // mean, 0 to 100
    double seconds = 0;
    QString problem; // empty: the page is in the document, whole
};

// The report: a line of JSON for each page, in the order of the pages.
class Report
{
public:
    // Empty `path`: no report; "-": standard output. False when the file cannot be written.
    bool open(const QString& path);
    void add(const PageLine& line);
    bool close(); // false when anything could not be written

private:
    QFile m_file;
    int m_page = 0;
    bool m_good = true;
};

} // namespace companion
