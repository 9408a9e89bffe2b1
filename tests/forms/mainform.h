// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <QToolButton>
#include <memory>

#include "app/pagecontrols.h"
#include "forms/scanpagelogic.h"
#include "forms/scanpagesettings.h"
#include "ui_widget.h"

// One template page with the connections that the main window makes for it.
struct PageUnderTest
{
    PageUnderTest(const ScanPageControls& controls, QWidget* shown) : c(controls), page(shown)
    {
        using L = ScanPageLogic;
        const auto combo = [this](QComboBox* box, void (L::*slot)()) {
            QObject::connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), &logic, slot);
        };
        const auto click = [this](QAbstractButton* button, void (L::*slot)()) {
            QObject::connect(button, &QAbstractButton::clicked, &logic, slot);
        };
        combo(c.source, &L::sourceChanged);
        combo(c.resolution, &L::resolutionChanged);
        combo(c.colorMode, &L::colorModeChanged);
        combo(c.fileType, &L::fileTypeChanged);
        click(c.front, &L::frontClicked);
        click(c.back, &L::backClicked);
        click(c.duplex, &L::doubleClicked);
        click(c.split, &L::splitClicked);
        click(c.combine, &L::combineClicked);
        click(c.redFile, &L::redFileClicked);
        QObject::connect(c.lightness, &QSlider::valueChanged, &logic, &L::lightnessChanged);
        QObject::connect(c.contrast, &QSlider::valueChanged, &logic, &L::contrastChanged);
        QObject::connect(c.gamma, &QSlider::valueChanged, &logic, &L::gammaChanged);
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
    }

    QWidget window;
    Ui::Widget ui;
    std::unique_ptr<PageUnderTest> scan;
    std::unique_ptr<PageUnderTest> file;
};
