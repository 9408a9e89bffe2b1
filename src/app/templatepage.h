// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/functions.h"
#include "forms/scanpagecontrols.h"

#include <QString>
#include <memory>
#include <vector>

class FolderPanel;
class QComboBox;
class QLabel;
class QSettings;
class QStackedWidget;
class QWidget;
class ScanPageLogic;
class ScanPageSettings;
class ocrpanel;
class pdfpanel;
struct AppEntry;
struct PageOptions;

// One of the window's two pages with everything that it does not share with the other: its controls, its set
// of function panels and the names of its settings groups. GUI thread; the widgets belong to the window.
class TemplatePage
{
public:
    // `prefix` begins the settings groups: "Scan" or "File". `logic` and `settings` work on `controls`.
    TemplatePage(const QString& prefix, const ScanPageControls& controls, ScanPageLogic* logic);
    ~TemplatePage();

    ScanPageControls controls;
    ScanPageLogic* logic;
    std::unique_ptr<ScanPageSettings> settings;

    QString scanGroup;        // "Scan_Scan": settings of the page's own function
    QString pathGroup;        // "Scan_Scan_FilePath"
    QString applicationGroup; // "Scan_app"
    QString deNoiseGroup;     // "Scan_DeNoise"
    QString paperSizeGroup;   // "Scan_Scan_PaperSize"
    bool isScanPage;

    QComboBox* functionCombo = nullptr;
    QLabel* describeLabel = nullptr;
    QWidget* body = nullptr; // the page's own controls in the stack
    pdfpanel* pdf = nullptr;
    ocrpanel* ocr = nullptr;
    FolderPanel* copy = nullptr;
    FolderPanel* email = nullptr;
    FolderPanel* file = nullptr;
    FolderPanel* ftp = nullptr;

    Function function() const;
    // The widget that the stack shows for a function.
    QWidget* panelFor(Function function) const;

    // The list of applications with their command lines.
    std::vector<AppEntry> applications;
    void showApplications(int selected);
    QString selectedCommand() const; // of the selected application

    // Reads and writes the page's own function and its application list.
    void readIni();
    bool writeIni();

    // The pipeline's options from the controls and, read afresh, from the settings files. `preview`: results
    // go to the temporary folder.
    PageOptions pageOptions(bool preview) const;

    // The panels that list the saved files follow the save folder.
    void showSaveFolder();
    QString saveFolder() const; // as stored, without a trailing "/"
};
