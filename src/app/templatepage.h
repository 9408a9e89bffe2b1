// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/functions.h"
#include "forms/functioncontrols.h"

#include <memory>

class FolderPanel;
class QComboBox;
class QLabel;
class QSettings;
class QWidget;
class ScanPageSettings;
class ocrpanel;
class pdfpanel;

// One of the window's two pages with everything that it does not share with the other: the controls of its
// own function, its set of function panels and the names of its settings groups. GUI thread; the widgets
// belong to the window.
class TemplatePage : public FunctionControls
{
public:
    // `prefix` begins the settings groups: "Scan" or "File". `logic` works on the page's own controls.
    TemplatePage(const QString& prefix, ScanPageLogic* logic);
    ~TemplatePage();

    std::unique_ptr<ScanPageSettings> settings;
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
    // The controls that scan for a function: a panel's own ones or the page's.
    FunctionControls& controlsOf(Function function);

    // The panel of a function that scans to pictures with its own settings; null for the others.
    FolderPanel* folderPanel(Function function) const;

    // Reads and writes the page's own function and its application list.
    void readIni();
    bool writeIni();
    void readFolderPanels();
    // Writes the settings of one function, or of all that the page has.
    bool writeFunction(Function function);
    bool writeAll();
    // Whether reading the page and its panels from these two files would leave all controls as they are.
    bool matches(QSettings& main, const QSettings& path);
};
