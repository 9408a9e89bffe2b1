// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/documentinfo.h"
#include "imageconvert/documentoptions.h"
#include "imageconvert/pagefile.h"

#include <QStringList>
#include <string>
#include <vector>

namespace imageconvert {

// One document that is to be written.
struct DocumentJob
{
    std::string path;
    std::vector<PageFile> pages;
    DocumentInfo info;
    DocumentOptions options;

    // Tells how many pages are done; throws PictureError when the caller cancels.
    void report(size_t done) const;
};

// Looks at all page files and the name. Throws PageError for a bad page, PictureError for the rest.
DocumentJob documentJob(const QStringList& pages, const QString& folder, const QString& baseName,
                        const QString& type, const DocumentOptions& options);

void writePdf(const DocumentJob& job);                // throw PictureError, PageError, and what
void writeOfd(const DocumentJob& job, int paperCode); // the PDF library throws (std::exception)

} // namespace imageconvert
