// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/templatepage.h"

#include "config/applicationlist.h"
#include "config/keys.h"
#include "config/paths.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/controloptions.h"
#include "forms/panels.h"
#include "forms/scanpagelogic.h"
#include "forms/scanpagesettings.h"
#include "imaging/pageoptions.h"
#include "ocr/ocrpanel.h"
#include "output/compression.h"
#include "output/naming.h"
#include "output/savefolder.h"
#include "pdf/pdfpanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSlider>
#include <QToolButton>

TemplatePage::TemplatePage(const QString& prefix, const ScanPageControls& pageControls,
                           ScanPageLogic* pageLogic)
    : controls(pageControls), logic(pageLogic), settings(std::make_unique<ScanPageSettings>(*pageLogic)),
      scanGroup(prefix + QStringLiteral("_Scan")), pathGroup(prefix + QStringLiteral("_Scan_FilePath")),
      applicationGroup(prefix + QStringLiteral("_app")), deNoiseGroup(prefix + QStringLiteral("_DeNoise")),
      paperSizeGroup(prefix + QStringLiteral("_Scan_PaperSize")), isScanPage(prefix == QLatin1String("Scan"))
{
}

TemplatePage::~TemplatePage() = default;

Function TemplatePage::function() const
{
    return static_cast<Function>(functionCombo->currentData().toInt());
}

QWidget* TemplatePage::panelFor(Function function) const
{
    switch (function) {
    case Function::Scan:
        return body;
    case Function::Ocr:
        return ocr;
    case Function::Pdf:
        return pdf;
    case Function::Copy:
        return copy;
    case Function::Email:
        return email;
    case Function::File:
        return file;
    case Function::Ftp:
        return ftp;
    }
    return body;
}

void TemplatePage::showApplications(int selected)
{
    controls.application->clear();
    for (const AppEntry& entry : applications)
        controls.application->addItem(entry.text);
    controls.application->setCurrentIndex(qBound(-1, selected, controls.application->count() - 1));
}

QString TemplatePage::selectedCommand() const
{
    const int index = controls.application->currentIndex();
    return index >= 0 && index < static_cast<int>(applications.size())
               ? applications[static_cast<std::size_t>(index)].command
               : QString();
}

void TemplatePage::readIni()
{
    const auto file = openMainSettings();
    applications = readApplications(*file, applicationGroup);
    if (applications.empty())
        applications = {{QStringLiteral("MS Paint"), QString()}};
    GroupScope scope(*file, scanGroup);
    showApplications(readInt(*file, keys::App));
    settings->read(*file);
    showSaveFolder();
}

bool TemplatePage::writeIni()
{
    const auto file = openMainSettings();
    writeApplications(*file, applicationGroup, applications);
    {
        GroupScope scope(*file, scanGroup);
        settings->write(*file);
    }
    return saveSettings(*file);
}

QString TemplatePage::saveFolder() const
{
    return storedSaveFolder(pathGroup);
}

void TemplatePage::showSaveFolder()
{
    for (FolderPanel* panel : {copy, email, file, ftp}) {
        if (panel)
            panel->setFolder(saveFolder());
    }
}

PageOptions TemplatePage::pageOptions(bool preview) const
{
    constexpr int kCustomThreshold = 1;
    const auto file = openMainSettings();
    PageOptions options = optionsFromControls(*logic);
    options.preview = preview;
    options.split = options.split && !preview;
    options.extraCopies = options.extraCopies && !preview;
    options.startApplication = options.startApplication && !preview;
    options.applicationCommand = selectedCommand();
    options.folder = preview ? paths::tempFolder() : saveFolder() + QLatin1Char('/');
    options.compression = compressionValue(*file, options.colorMode, logic->fileFormat());
    readPipelineSettings(options, *file, {paperSizeGroup, deNoiseGroup},
                         controls.threshold->currentIndex() == kCustomThreshold);
    GroupScope scope(*file, scanGroup);
    options.replaceExisting = readNamingRules(*file).cover;
    return options;
}
