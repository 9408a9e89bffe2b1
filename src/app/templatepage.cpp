// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/templatepage.h"

#include "config/keys.h"
#include "config/settingsfile.h"
#include "config/settingtable.h"
#include "forms/panels.h"
#include "forms/scanpagesettings.h"
#include "ocr/ocrpanel.h"
#include "pdf/pdfpanel.h"

#include <QComboBox>

namespace {

FunctionGroups pageGroups(const QString& page)
{
    return {page + QStringLiteral("_Scan"), page + QStringLiteral("_Scan_FilePath"),
            page + QStringLiteral("_app"), page + QStringLiteral("_DeNoise"),
            page + QStringLiteral("_Scan_PaperSize")};
}

} // namespace

TemplatePage::TemplatePage(const QString& prefix, ScanPageLogic* pageLogic)
    : FunctionControls(pageLogic, pageGroups(prefix)),
      settings(std::make_unique<ScanPageSettings>(*pageLogic)), isScanPage(prefix == QLatin1String("Scan"))
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

FunctionControls& TemplatePage::controlsOf(Function function)
{
    if (FolderPanel* panel = folderPanel(function))
        return panel->functionControls();
    if (function == Function::Pdf && pdf)
        return pdf->functionControls();
    return function == Function::Ocr && ocr ? ocr->functionControls() : *this;
}

void TemplatePage::readIni()
{
    readApplicationList();
    const auto file = openMainSettings();
    GroupScope scope(*file, groups.scan);
    showApplications(readInt(*file, keys::App));
    settings->read(*file);
}

bool TemplatePage::writeIni()
{
    const auto file = openMainSettings();
    writeApplications(*file, groups.application, applications);
    {
        GroupScope scope(*file, groups.scan);
        settings->write(*file);
    }
    return saveSettings(*file);
}

FolderPanel* TemplatePage::folderPanel(Function function) const
{
    return qobject_cast<FolderPanel*>(panelFor(function));
}

void TemplatePage::readFolderPanels()
{
    for (FolderPanel* panel : {copy, email, file, ftp})
        panel->readIni();
}

bool TemplatePage::writeFunction(Function function)
{
    if (function == Function::Pdf)
        return isScanPage ? pdf->scanWriteIni() : pdf->fileWriteIni();
    if (function == Function::Ocr)
        return isScanPage ? ocr->scanWriteIni() : ocr->fileWriteIni();
    FolderPanel* panel = folderPanel(function);
    return panel ? panel->writeIni() : writeIni();
}

bool TemplatePage::writeAll()
{
    bool saved = true;
    for (const Function function : scanPageFunctions())
        saved = writeFunction(function) && saved;
    return saved;
}

bool TemplatePage::matches(QSettings& main, const QSettings& path)
{
    for (const FolderPanel* panel : {copy, email, file, ftp}) {
        if (!panel->matches(main, path))
            return false;
    }
    if (!pdf->matches(main, path) || !ocr->matches(main, path) || !applicationsMatch(main))
        return false;
    const GroupScope scope(main, groups.scan);
    return settings->matches(main);
}
