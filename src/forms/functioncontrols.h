// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "config/applicationlist.h"
#include "forms/scanpagecontrols.h"
#include "imaging/pageoptions.h"
#include "output/naming.h"

#include <QString>
#include <vector>

class ScanPageLogic;

// The names of the settings groups of one function on one page of the window.
struct FunctionGroups
{
    QString scan;        // "Scan_PDF": the settings
    QString path;        // "Scan_PDF_FilePath", in the path file
    QString application; // "Scan_PDF_app"
    QString deNoise;     // "Scan_DeNoise"
    QString paperSize;   // "Scan_PDF_PaperSize"
};

// The groups of the panel of a function ("PDF", "OCR", "Copy", ...) on a page ("Scan", "File"). Those that
// save pictures share paper size and noise with the page's own function.
FunctionGroups panelGroups(const QString& page, const QString& function);

// The controls of one function on one page of the window with what belongs to them: rules, settings groups,
// the list of applications. GUI thread; the controls belong to the window.
class FunctionControls
{
public:
    // `logic` works on the controls.
    FunctionControls(ScanPageLogic* logic, const FunctionGroups& groups);

    ScanPageControls controls;
    ScanPageLogic* logic;
    FunctionGroups groups;

    // The list of applications with their command lines.
    std::vector<AppEntry> applications;
    void readApplicationList();                        // never empty afterwards
    bool applicationsMatch(QSettings& settings) const; // whether reading from there would give the same
    void showApplications(int selected);
    QString selectedCommand() const; // of the selected application

    // The pipeline's options from the controls and, read afresh, from the settings files. `preview`: results
    // go to the temporary folder.
    PageOptions pageOptions(bool preview) const;

    NamingRules namingRules() const; // read afresh
    QString saveFolder() const;      // as stored, without a trailing "/"
};
