// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/functioncontrols.h"

#include "config/paths.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/applicationicon.h"
#include "forms/controloptions.h"
#include "forms/scanpagelogic.h"
#include "output/compression.h"
#include "output/savefolder.h"

#include <QComboBox>

FunctionGroups panelGroups(const QString& page, const QString& function)
{
    const QString group = page + QLatin1Char('_') + function;
    const bool ocr = function == QLatin1String("OCR");
    const bool pdf = function == QLatin1String("PDF");
    return {group, group + QStringLiteral("_FilePath"), (pdf ? group : page) + QStringLiteral("_app"),
            (ocr ? group : page) + QStringLiteral("_DeNoise"),
            (ocr || pdf ? group : page + QStringLiteral("_Scan")) + QStringLiteral("_PaperSize")};
}

namespace {

std::vector<AppEntry> storedApplications(QSettings& settings, const QString& group)
{
    const std::vector<AppEntry> list = readApplications(settings, group);
    return list.empty() ? std::vector<AppEntry>{{QStringLiteral("MS Paint"), QString()}} : list;
}

} // namespace

FunctionControls::FunctionControls(ScanPageLogic* pageLogic, const FunctionGroups& names)
    : controls(pageLogic->controls()), logic(pageLogic), groups(names)
{
}

void FunctionControls::readApplicationList()
{
    applications = storedApplications(*openMainSettings(), groups.application);
}

bool FunctionControls::applicationsMatch(QSettings& settings) const
{
    return applications == storedApplications(settings, groups.application);
}

void FunctionControls::showApplications(int selected)
{
    controls.application->clear();
    for (const AppEntry& entry : applications)
        controls.application->addItem(applicationIcon(entry.icon), entry.text);
    controls.application->setCurrentIndex(qBound(-1, selected, controls.application->count() - 1));
}

QString FunctionControls::selectedCommand() const
{
    const int index = controls.application->currentIndex();
    return index >= 0 && index < static_cast<int>(applications.size())
               ? applications[static_cast<std::size_t>(index)].command
               : QString();
}

PageOptions FunctionControls::pageOptions(bool preview) const
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
    PageSettingsGroups names{groups.paperSize, groups.deNoise, std::nullopt};
    if (controls.noise)
        names.noiseMode = controls.noise->currentIndex();
    readPipelineSettings(options, *file, names, controls.threshold->currentIndex() == kCustomThreshold);
    GroupScope scope(*file, groups.scan);
    options.replaceExisting = readNamingRules(*file).cover;
    return options;
}

NamingRules FunctionControls::namingRules() const
{
    const auto file = openMainSettings();
    const GroupScope scope(*file, groups.scan);
    return readNamingRules(*file);
}

QString FunctionControls::saveFolder() const
{
    return storedSaveFolder(groups.path);
}
