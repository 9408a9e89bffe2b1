// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageconvert/imageconvertfunction.h"
#include "imaging/pageoptions.h"

#include <QCoreApplication>
#include <QStringList>
#include <fstream>
#include <functional>

// What became of one page file or one sheet.
struct PageResult
{
    QStringList files;    // complete paths, in the order written
    QStringList problems; // for the user, each naming the file and the reason
    bool blank = false;   // dropped as blank, nothing written
    // The page files have served and may be removed; false keeps them for a second try.
    bool sourceDone = false;
};

// Runs scanned page files through the correction chain and saves the results. Serves every function: they
// differ in how they fill PageOptions and where the names come from.
//
// Used from one thread at a time (the page worker); the library object belongs to the caller.
class PagePipeline
{
    Q_DECLARE_TR_FUNCTIONS(PagePipeline)
public:
    // Gives the next base name; called exactly once for every file that is written.
    using NameSource = std::function<QString()>;

    // Reads the text in a picture and streams it to the open file.
    using TextProbe = std::function<void(const QString& picture, std::ofstream& out)>;

    PagePipeline(ImageConvertFunction& library, NameSource nextName);

    // Called whenever an application is started, with the logo and the scratch file.
    void setTextProbe(TextProbe probe) { m_textProbe = std::move(probe); }

    // The correction chain: takes the handle over and returns the one to use from then on; null: the page was
    // dropped as blank. `oddPage` picks the front or back rotation when both are set.
    MagickWand* basicProcess(MagickWand* image, const PageOptions& options, bool oddPage);

    // One page file to one or more output files.
    PageResult processPage(const QString& pageFile, const PageOptions& options);

    // Front and back of a sheet joined into one output file.
    PageResult processSheet(const QString& frontFile, const QString& backFile, const PageOptions& options);

    // Single steps; the last two take the handle over and return the one to use from then on.
    bool isBlank(MagickWand* image, const PageOptions& options);
    MagickWand* convertColorMode(MagickWand* image, const PageOptions& options);
    MagickWand* removeNoise(MagickWand* image, const PageOptions& options);

private:
    ImageHandle load(const QString& file, const PageOptions& options);
    bool sheetIsBlank(const QString& frontFile, const QString& backFile, const PageOptions& options);
    void turn(ImageHandle& image, const PageOptions& options, bool oddPage);
    void turnUpright(ImageHandle& image, const PageOptions& options);
    void fitResolution(ImageHandle& image, const PageOptions& options);
    void cutCustomPaper(ImageHandle& image, const PageOptions& options);
    void fillBorder(ImageHandle& image, const PageOptions& options);
    void finishAndSave(ImageHandle& image, const PageOptions& options, PageResult& result);
    void startApplication(const QString& name, const PageOptions& options, PageResult& result);
    bool saveAs(ImageHandle& image, const PageOptions& options, double dpi, PageResult& result);
    void processWhole(const QString& pageFile, const PageOptions& options, PageResult& result);
    void processPieces(const QString& pageFile, const PageOptions& options, PageResult& result);
    void saveExtraCopies(const QString& pageFile, const PageOptions& options, PageResult& result);
    void saveExtraCopy(const QString& pageFile, const PageOptions& options, bool grey, PageResult& result);
    QString unreadable(const QString& file) const;

    ImageConvertFunction& m_library;
    NameSource m_nextName;
    TextProbe m_textProbe;
};

// The page number in a page file's name ("...-0012.pnm"); odd numbers are fronts. 0 without a number.
int pageNumber(const QString& pageFile);
