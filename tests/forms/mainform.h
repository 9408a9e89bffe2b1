// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <memory>

#include "app/pagecontrols.h"
#include "forms/functioncontrols.h"
#include "forms/scanpagelogic.h"
#include "forms/scanpagesettings.h"
#include "ui_widget.h"

// One page of the main window, following its controls as the window's slots make it.
struct PageUnderTest
{
    PageUnderTest(const ScanPageControls& controls, QWidget* shown) : c(controls), page(shown)
    {
        logic.followControls();
    }

    ScanPageControls c;
    QWidget* page; // all of them are on it
    ScanPageLogic logic{c};
    ScanPageSettings settings{logic};
};

// The main window's form without the window.
struct MainForm
{
    MainForm()
    {
        ui.setupUi(&window);
        scan = std::make_unique<PageUnderTest>(scanPageControls(ui), ui.scanPage);
        file = std::make_unique<PageUnderTest>(filePageControls(ui), ui.filePage);
        function = std::make_unique<FunctionControls>(
            &scan->logic, FunctionGroups{"Scan_Scan", "Scan_Scan_FilePath", "Scan_app", "Scan_DeNoise",
                                         "Scan_Scan_PaperSize"});
    }

    QWidget window;
    Ui::Widget ui;
    std::unique_ptr<PageUnderTest> scan;
    std::unique_ptr<PageUnderTest> file;
    std::unique_ptr<FunctionControls> function; // of the scan page
};
