// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/documentjob.h"

#include "imageconvert/pageerror.h"

#include <QFile>

namespace imageconvert {

namespace {

std::string documentPath(const QString& folder, const QString& baseName, const QString& type)
{
    if (folder.isEmpty() || baseName.isEmpty() || type.isEmpty())
        throw PictureError("no folder or name for the document");
    const QByteArray name = QFile::encodeName(baseName + QLatin1Char('.') + type);
    if (name.contains('/') || name.contains('\0'))
        throw PictureError("\"" + name.toStdString() + "\" is not the name of a file");
    if (name.size() > 255)
        throw PictureError("the name of the document is too long");
    const QByteArray path = QFile::encodeName(folder);
    return (path.endsWith('/') ? path : path + '/').toStdString() + name.toStdString();
}

} // namespace

void DocumentJob::report(size_t done) const
{
    if (options.progress && !options.progress(static_cast<int>(done), static_cast<int>(pages.size())))
        throw PictureError("cancelled");
}

DocumentJob documentJob(const QStringList& pages, const QString& folder, const QString& baseName,
                        const QString& type, const DocumentOptions& options)
{
    DocumentJob job;
    job.options = options;
    job.info.title = options.title.isEmpty() ? baseName : options.title;
    job.path = documentPath(folder, baseName, type);
    if (pages.isEmpty())
        throw PictureError("a document without pages");
    for (const QString& page : pages) {
        const std::string path = QFile::encodeName(page).toStdString();
        job.pages.push_back(aboutPage(path, [&] { return inspectPage(path); }));
        if (options.progress && !options.progress(0, pages.size()))
            throw PictureError("cancelled");
    }
    return job;
}

} // namespace imageconvert
